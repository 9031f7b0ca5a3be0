// A test of the built library whose program reads Cocoa objects as host values.
#pragma once

#import <Foundation/Foundation.h>

#include "family/wrapper_classes.h"
#include "tests/support/plugin_test.h"

class ProgramReadingTest : public PluginTest {
protected:
    /// The value that the program reads for this object of a notification.
    qzlhost::Value Read(id object)
    {
        return host().Get(NewNotification([NSNotification notificationWithName:@"name" object:object]),
                          "objectVariant");
    }

    /// The Dictionary that it reads for this user info of a notification.
    qzlhost::Value ReadUserInfo(NSDictionary *entries)
    {
        return host().Get(NewNotification([NSNotification notificationWithName:@"name"
                                                                        object:nil
                                                                      userInfo:entries]),
                          "userInfo");
    }

private:
    qzlhost::Value NewNotification(NSNotification *notification)
    {
        return host().New("NSNotificationQZL", {reinterpret_cast<int64_t>(notification)});
    }
};
