// Core Foundation strings, which are NSStrings, and their encodings.
#ifndef QZL_CFSTRING_H
#define QZL_CFSTRING_H

#include <CoreFoundation/CFBase.h>

typedef const struct __CFString *CFStringRef;
typedef struct __CFString *CFMutableStringRef;
typedef UInt32 CFStringEncoding;

enum {
    kCFStringEncodingMacRoman = 0,
    kCFStringEncodingWindowsLatin1 = 0x0500,
    kCFStringEncodingISOLatin1 = 0x0201,
    kCFStringEncodingNextStepLatin = 0x0B01,
    kCFStringEncodingASCII = 0x0600,
    kCFStringEncodingUTF8 = 0x08000100,
    kCFStringEncodingNonLossyASCII = 0x0BFF,
    kCFStringEncodingUTF16 = 0x0100,
    kCFStringEncodingUTF16BE = 0x10000100,
    kCFStringEncodingUTF16LE = 0x14000100,
    kCFStringEncodingUTF32 = 0x0C000100,
    kCFStringEncodingUTF32BE = 0x18000100,
    kCFStringEncodingUTF32LE = 0x1C000100
};
#define kCFStringEncodingInvalidId (0xFFFFFFFFU)

typedef enum CFStringNormalizationForm : CFIndex {
    kCFStringNormalizationFormD = 0,
    kCFStringNormalizationFormKD = 1,
    kCFStringNormalizationFormC = 2,
    kCFStringNormalizationFormKC = 3
} CFStringNormalizationForm;

#ifdef __OBJC__
/// A constant Core Foundation string of a literal.
#define CFSTR(literal) ((CFStringRef) @literal)
#endif

CF_EXTERN_C_BEGIN

CF_EXPORT CFTypeID CFStringGetTypeID(void);

/// The text of the bytes, owned by the caller; null if they are not valid in the encoding, the encoding is
/// unknown, numBytes is negative, or bytes is null and numBytes is not 0.
///
/// With the external-representation flag, a byte-order mark of UTF-8, UTF-16 or UTF-32 decides the order and
/// is dropped, and UTF-16 and UTF-32 without one are read as big-endian. Without the flag, they are in host
/// order. The encodings that name their order (BE, LE) keep a mark as text. Bytes after the last whole unit
/// of UTF-16 or UTF-32 are ignored.
CF_EXPORT CFStringRef CFStringCreateWithBytes(CFAllocatorRef allocator, const UInt8 *bytes, CFIndex numBytes,
                                              CFStringEncoding encoding, Boolean isExternalRepresentation);

/// CFStringCreateWithBytes of a NUL-terminated string, which is not an external representation; null for a
/// null string.
CF_EXPORT CFStringRef CFStringCreateWithCString(CFAllocatorRef allocator, const char *cString,
                                                CFStringEncoding encoding);

/// The text of the UTF-16 units, taken as they are, owned by the caller; null if numChars is negative, or
/// chars is null and numChars is not 0.
CF_EXPORT CFStringRef CFStringCreateWithCharacters(CFAllocatorRef allocator, const UniChar *chars,
                                                   CFIndex numChars);

/// A mutable copy, owned by the caller; null for a null string. The length limit is not enforced.
CF_EXPORT CFMutableStringRef CFStringCreateMutableCopy(CFAllocatorRef allocator, CFIndex maxLength,
                                                       CFStringRef string);

/// Normalises the string to the form; null is ignored.
CF_EXPORT void CFStringNormalize(CFMutableStringRef string, CFStringNormalizationForm form);

/// The number of UTF-16 units; 0 for null.
CF_EXPORT CFIndex CFStringGetLength(CFStringRef string);

/// Copies those units of the range that the string has.
CF_EXPORT void CFStringGetCharacters(CFStringRef string, CFRange range, UniChar *buffer);

/// Writes the text in the encoding and a NUL byte. False if that does not fit into bufferSize bytes, a
/// character has no counterpart in the encoding or the encoding is unknown; the buffer then holds an empty C
/// string, if anything fits. UTF-16 and UTF-32 are written in host order.
CF_EXPORT Boolean CFStringGetCString(CFStringRef string, char *buffer, CFIndex bufferSize,
                                     CFStringEncoding encoding);

CF_EXTERN_C_END

#endif
