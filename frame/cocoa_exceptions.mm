// Raises Cocoa exceptions in host code, through the class that the family has for them.
#include "frame/cocoa_exceptions.h"

#include <atomic>

#include "bridge/to_host/instance_registry.h"
#include "frame/host_ref.h"

/// Class methods that another library of the family adds.
@interface NSException (QZLFamily)
/// A host instance that wraps the exception, with one reference for the caller, or null.
+ (REALobject)NewNSExceptionQZL:(NSException *)exception;
+ (CFMutableDictionaryRef)GetInstancesDictionaryQZL;
+ (void)PrepareNSExceptionQZL;
@end

namespace {

std::atomic<bool> ExceptionsInitialized{false};

/// An exception that raises another while it is described must not let that one out.
void LogException(NSException *exception)
{
    @try {
        NSLog(@"A %@: %@, Info: %@\n", [exception name], [exception reason], [exception userInfo]);
    } @catch (NSException *) {
    }
}

/// Null where there is no wrapper, also when the family does not answer: its exception must not get out
/// either.
REALobject NewHostException(NSException *exception)
{
    @try {
        return [NSException NewNSExceptionQZL:exception];
    } @catch (NSException *) {
        return nullptr;
    }
}

} // namespace

void RaiseNSExceptionQZL(NSException *exception)
{
    LogException(exception);
    const HostRef<REALobject> wrapper(NewHostException(exception));
    if (wrapper)
        REALRaiseException(wrapper.Get());
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
