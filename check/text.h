// Texts made of pieces.
#pragma once

#import <Foundation/Foundation.h>

#include <initializer_list>

/// A Core Foundation object as the Cocoa object that it is; borrowed.
inline id Bridged(const void *object)
{
    return reinterpret_cast<id>(const_cast<void *>(object));
}

/// The descriptions of the pieces, one after the other; "nil" for a nil piece. Autoreleased.
NSString *Text(std::initializer_list<id> pieces);

/// The text in quotation marks, a NUL character as \0, and cut if it is long. Autoreleased.
NSString *Quoted(NSString *text);

NSString *YesOrNo(bool value);

/// The text with "~" in place of the home folder's path. Autoreleased.
NSString *WithoutHome(NSString *text);

/// "name: reason". Autoreleased.
NSString *ExceptionText(NSException *exception);

/// What the body returns, or the text of the Cocoa exception that leaves it. What the body autoreleases is
/// released.
template <typename Body>
NSString *ResultOf(Body body)
{
    NSString *result = nil;
    @autoreleasepool {
        @try {
            result = [body() retain];
        } @catch (NSException *exception) {
            result = [ExceptionText(exception) retain];
        }
    }
    return [result autorelease];
}
