// Throws, catches and lets through Objective-C exceptions.
#import <Foundation/Foundation.h>

#include "tests/platform/macho/dylibs/exceptions.h"

@interface NSException (OfTheTest)
- (id)initWithName:(NSString *)name reason:(NSString *)reason userInfo:(NSDictionary *)userInfo;
@end

@interface MachOOwnException : NSException
@end
@implementation MachOOwnException
@end

#pragma GCC visibility push(default)
extern "C" {

void throwObject(id object)
{
    @throw object;
}

id newOwnException()
{
    return [[MachOOwnException alloc] initWithName:@"own" reason:@"reason" userInfo:nil];
}

Outcome catchByClass(const Callback &callback, id *caught)
{
    @try {
        callback();
    } @catch (MachOOwnException *exception) {
        *caught = exception;
        return Outcome::OwnClass;
    } @catch (NSException *exception) {
        *caught = exception;
        return Outcome::Exception;
    } @catch (id object) {
        *caught = object;
        return Outcome::AnyObject;
    } @catch (...) {
        return Outcome::Anything;
    }
    return Outcome::Nothing;
}

Outcome catchExceptionsOnly(const Callback &callback)
{
    @try {
        callback();
    } @catch (NSException *exception) {
        return Outcome::Exception;
    }
    return Outcome::Nothing;
}

Outcome catchAnything(const Callback &callback)
{
    @try {
        callback();
    } @catch (...) {
        return Outcome::Anything;
    }
    return Outcome::Nothing;
}

/// Adds 1 at the end of the block, however that ends, and 10 after it.
void finallyCounts(const Callback &callback, int *count)
{
    @try {
        callback();
    } @finally {
        *count += 1;
    }
    *count += 10;
}

void catchAndThrowOn(const Callback &callback, int *count)
{
    @try {
        callback();
    } @catch (NSException *exception) {
        ++*count;
        @throw;
    }
}

void catchAndThrowAnother(const Callback &callback, id other)
{
    @try {
        callback();
    } @catch (NSException *exception) {
        @throw other;
    }
}

/// Catches the second while it handles the first; returns the first.
id catchTwo(const Callback &first, const Callback &second, id *inner)
{
    @try {
        first();
    } @catch (NSException *exception) {
        @try {
            second();
        } @catch (NSException *other) {
            *inner = other;
        }
        return exception;
    }
    return nil;
}

void letThrough(const Callback &callback, int *living)
{
    const Counted counted(living);
    callback();
}

/// As above, `depth` frames deep, with a handler for another class in each.
void letThroughDeep(const Callback &callback, int *living, int depth)
{
    const Counted counted(living);
    @try {
        if (depth == 0)
            callback();
        else
            letThroughDeep(callback, living, depth - 1);
    } @catch (MachOOwnException *exception) {
        *living += 1000;
    }
}

/// Throws and catches the exception `times` times. Returns how often the caught one was the same.
long throwAndCatch(id exception, long times)
{
    long caught = 0;
    for (long i = 0; i < times; ++i) {
        @try {
            throwObject(exception);
        } @catch (NSException *one) {
            caught += one == exception;
        }
    }
    return caught;
}
}
#pragma GCC visibility pop
