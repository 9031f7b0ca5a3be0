// Exceptions: the library's own, those that Cocoa raises, and those that leave a program's handler.
#include "check/groups.h"
#include "check/programs.h"

namespace {

NSString *const kTooOften =
    @"UnsupportedOperationException: Constructor called too often. Object is already initialized.";

void RaiseInHandler(Instance, Instance)
{
    [[NSException exceptionWithName:@"InHandler" reason:@"raised by the check" userInfo:nil] raise];
}

} // namespace

void CheckExceptions()
{
    for (NSString *name in @[ @"NSNotificationObserverQZL", kCenter, kRecording ]) {
        // Without the framework there is nothing that was initialised.
        const bool raises = ![name isEqual:kRecording] || HasRecording();
        Check(Text({@"Twice: ", name}), raises ? kTooOften : @"nothing", [&] {
            const Instance instance = Constructed(name);
            Call(name, "Constructor", instance);
            return TakeException();
        });
    }
    Check(@"Twice: NSDistributedNotificationCenterQZL", @"nothing", [] {
        Call(kDistributed, "Constructor", Constructed(kDistributed));
        return TakeException();
    });
    Check(@"A notification of the handle 0", @"NilObjectException: Handle is zero", [] {
        Call(@"NSNotificationQZL", "Constructor(handle as integer)", NewInstance(@"NSNotificationQZL"),
             int64_t{0});
        return TakeException();
    });
    Check(@"addObserver without an observer", @"NilObjectException: Observer is nil.", [] {
        AddObserver(DefaultCenter(kCenter), nil, @"Check");
        return TakeException();
    });
    Check(@"What Cocoa raises reaches the program", @"NSExceptionQZL: NSInvalidArgumentException", [] {
        NewNotification(Variant(code::Array + code::Object, @[ [NSNull null] ]));
        NSArray *const parts = [TakeException() componentsSeparatedByString:@": "];
        return [parts count] < 2 ? [parts lastObject]
                                 : Text({[parts objectAtIndex:0], @": ", [parts objectAtIndex:1]});
    });
    Check(@"An exception in a handler ends there", @"Check", [] {
        const Instance center = DefaultCenter(kCenter), raising = NewObserver(), other = NewObserver();
        raising->gotNotification = RaiseInHandler;
        AddObserver(center, raising, @"Check");
        AddObserver(center, other, @"Check");
        Post(center, @"Check");
        return Text({Await(0), [TakeException() isEqual:@"nothing"] ? @"" : @", and an exception"});
    });
}
