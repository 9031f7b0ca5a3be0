// Raises Cocoa exceptions in the host, as instances of the family's exception class.
#include "frame/cocoa_exceptions.h"

#include <atomic>

#include "frame/host_references.h"
#include "frame/instance_registry.h"

/// Class methods that another library of the family adds.
@interface NSException (QZLFamily)
/// A host instance that wraps the exception, with one reference for the caller, or null.
+ (REALobject)NewNSExceptionQZL:(NSException *)exception;
+ (CFMutableDictionaryRef)GetInstancesDictionaryQZL;
+ (void)PrepareNSExceptionQZL;
@end

namespace {

std::atomic<bool> ExceptionsInitialized{false};

/// Raises the host exception that wraps the Cocoa exception, if the family makes one.
void RaiseWrapped(NSException *exception)
{
    HostRef<REALobject> wrapper([NSException NewNSExceptionQZL:exception]);
    if (!wrapper)
        return;
    REALRaiseException(wrapper.Get());
    wrapper.GiveBack();
}

} // namespace

void RaiseNSExceptionQZL(NSException *exception)
{
    // An exception raised while another is being reported has nowhere to go.
    DropCocoaExceptions(
        [&] { NSLog(@"A %@: %@, Info: %@\n", [exception name], [exception reason], [exception userInfo]); });
    DropCocoaExceptions([&] { RaiseWrapped(exception); });
}

void PrepareCocoaExceptionBridge()
{
    GuardCocoaCalls([] {
        if (instances == nullptr && [NSException respondsToSelector:@selector(GetInstancesDictionaryQZL)])
            instances = [NSException GetInstancesDictionaryQZL];
        if (!ExceptionsInitialized && [NSException respondsToSelector:@selector(PrepareNSExceptionQZL)]) {
            [NSException PrepareNSExceptionQZL];
            ExceptionsInitialized = true;
        }
    });
}
