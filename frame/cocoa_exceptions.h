// Turns Cocoa exceptions into host exceptions, so that none leaves a function that the host called.
#pragma once

#import <Foundation/Foundation.h>

/// Logs the exception and raises the host exception that wraps it. Throws nothing. Called on the host's
/// thread.
void RaiseNSExceptionQZL(NSException *exception);

/// Runs Cocoa calls and drops the `NSException` that ends them, if any. Exceptions of other kinds pass.
template <typename Body>
void DropCocoaExceptions(Body body)
{
    @try {
        body();
    } @catch (NSException *) {
    }
}

/// Fetches the family's instance registry and prepares its exception class, each as soon as the family
/// provides it. Whatever makes or destroys instances calls this first.
void PrepareCocoaExceptionBridge();

/// Runs Cocoa calls for the host and returns their result. After an `NSException`, raises the host exception
/// and returns an empty result: 0, null, false or nothing. Exceptions of other kinds pass.
template <typename Body>
auto GuardCocoaCalls(Body body) -> decltype(body())
{
    using Result = decltype(body());
    @try {
        return body();
    } @catch (NSException *exception) {
        RaiseNSExceptionQZL(exception);
    }
    return Result();
}
