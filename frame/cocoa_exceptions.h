// Cocoa exceptions become host exceptions here, so that none of them leaves a function that the host called.
#pragma once

#import <Foundation/Foundation.h>

/// Logs the exception and raises the host exception that wraps it. Nothing is thrown. Called on the thread
/// that the host called in on.
void RaiseNSExceptionQZL(NSException *exception);

/// Runs Cocoa calls whose exceptions nobody wants: an `NSException` ends them. Exceptions of other kinds
/// pass.
template <typename Body>
void DropCocoaExceptions(Body body)
{
    @try {
        body();
    } @catch (NSException *) {
    }
}

/// Fetches the instance registry and prepares the exception class, as far as the family offers them by now.
/// Called first by whatever makes or destroys instances.
void PrepareCocoaExceptionBridge();

/// Runs Cocoa calls for the host and returns their result; after an `NSException` the host exception is
/// raised and the result is empty: 0, null, false or nothing. Exceptions of other kinds pass.
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
