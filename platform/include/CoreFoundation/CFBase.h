// Core Foundation's basic types, and the functions for every Core Foundation object.
#ifndef QZL_CFBASE_H
#define QZL_CFBASE_H

#include <assert.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
#define CF_EXTERN_C_BEGIN extern "C" {
#define CF_EXTERN_C_END }
#else
#define CF_EXTERN_C_BEGIN
#define CF_EXTERN_C_END
#endif
#define CF_EXPORT extern

typedef uint8_t UInt8;
typedef uint16_t UInt16;
typedef int16_t SInt16;
typedef uint32_t UInt32;
typedef int32_t SInt32;
typedef uint64_t UInt64;
typedef unsigned char Boolean;
typedef UInt16 UniChar;
typedef SInt16 OSErr;
typedef SInt32 OSStatus;

enum { noErr = 0 };

typedef signed long CFIndex;
typedef unsigned long CFTypeID;
typedef const void *CFTypeRef;
typedef const struct __CFAllocator *CFAllocatorRef;

typedef struct {
    CFIndex location;
    CFIndex length;
} CFRange;

static inline CFRange CFRangeMake(CFIndex location, CFIndex length)
{
    CFRange range;
    range.location = location;
    range.length = length;
    return range;
}

static_assert(sizeof(CFIndex) == 8, "CFIndex");
static_assert(sizeof(CFTypeID) == 8, "CFTypeID");
static_assert(sizeof(CFRange) == 16, "CFRange");
static_assert(sizeof(UniChar) == 2, "UniChar");
static_assert(sizeof(Boolean) == 1, "Boolean");

CF_EXTERN_C_BEGIN

/// Null, which stands for the only allocator there is.
CF_EXPORT const CFAllocatorRef kCFAllocatorDefault;

/// The type that the object's `_cfTypeID` returns; for an object without that method, the type of its class.
/// 1 for an object of no listed type, 0 for null.
CF_EXPORT CFTypeID CFGetTypeID(CFTypeRef object);

/// Retains the object and returns it; null for null.
CF_EXPORT CFTypeRef CFRetain(CFTypeRef object);

/// Releases one retain; null is ignored.
CF_EXPORT void CFRelease(CFTypeRef object);

CF_EXTERN_C_END

#endif
