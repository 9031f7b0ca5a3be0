// A test that converts a program's values with the built library, through a member.
#pragma once

#import <Foundation/Foundation.h>

#include "family/wrapper_classes.h"
#include "tests/support/plugin_test.h"

/// The host exception that `member` raises; Nil for none.
qzlhost::Value ExceptionOutOf(const std::function<void()> &member);

/// The constructor of a notification converts any object and any Dictionary. An empty name takes no call of
/// the host.
class MemberConversion : public PluginTest {
protected:
    /// The Cocoa notification of these; nil if a Cocoa exception ended the constructor that no library of the
    /// family could raise in the program.
    NSNotification *NotificationOf(const qzlhost::Value &object, const qzlhost::Value &userInfo = {})
    {
        const qzlhost::Value wrapper =
            host().New("NSNotificationQZL", {qzlhost::Value::EmptyString(), object, userInfo});
        return [[HandleOf<NSNotification *>(host(), wrapper) retain] autorelease];
    }

    id Convert(const qzlhost::Value &object) { return [NotificationOf(object) object]; }

    /// For a Dictionary, whose class is not tested here.
    NSDictionary *ConvertDictionary(const qzlhost::Value &dictionary)
    {
        return [NotificationOf({}, dictionary) userInfo];
    }

    /// The Cocoa exception that converting the object raises, in a program where the family raises them; nil
    /// for none.
    NSException *ExceptionOf(const qzlhost::Value &object)
    {
        const qzlhost::Value raised = ExceptionOutOf([&] { NotificationOf(object); });
        return raised.IsNil() ? nil : [[HandleOf<NSException *>(host(), raised) retain] autorelease];
    }
};
