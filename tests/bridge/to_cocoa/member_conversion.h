// A test of what the built library makes of a program's values, by way of a member that converts them.
#pragma once

#import <Foundation/Foundation.h>

#include "family/wrapper_classes.h"
#include "tests/support/plugin_test.h"
#include "tests/support/trace.h"

/// The host exception that `member` ends with; Nil where it ends well.
qzlhost::Value ExceptionOutOf(const std::function<void()> &member);

/// A new notification takes any object and any Dictionary, and converts both at once. It has no name, which
/// takes no call of the host.
class MemberConversion : public PluginTest {
protected:
    /// The notification that the library makes of these; nil where a Cocoa exception ended the constructor
    /// and nobody raised it in the program.
    NSNotification *NotificationOf(const qzlhost::Value &object, const qzlhost::Value &userInfo = {})
    {
        const qzlhost::Value wrapper =
            host().New("NSNotificationQZL", {qzlhost::Value::EmptyString(), object, userInfo});
        return [[HandleOf<NSNotification *>(host(), wrapper) retain] autorelease];
    }

    id Convert(const qzlhost::Value &object) { return [NotificationOf(object) object]; }

    /// Of a Dictionary only: nothing asks what it is.
    NSDictionary *ConvertDictionary(const qzlhost::Value &dictionary)
    {
        return [NotificationOf({}, dictionary) userInfo];
    }

    /// The Cocoa exception that converting the object ends with, in a program where the family raises them.
    NSException *ExceptionOf(const qzlhost::Value &object)
    {
        const qzlhost::Value raised = ExceptionOutOf([&] { NotificationOf(object); });
        return raised.IsNil() ? nil : [[HandleOf<NSException *>(host(), raised) retain] autorelease];
    }
};
