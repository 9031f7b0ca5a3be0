// Core Foundation dictionaries: NSDictionaries, and dictionaries keyed by address.
#ifndef QZL_CFDICTIONARY_H
#define QZL_CFDICTIONARY_H

#include <CoreFoundation/CFBase.h>

typedef const struct __CFDictionary *CFDictionaryRef;
typedef struct __CFDictionary *CFMutableDictionaryRef;
typedef struct CFDictionaryKeyCallBacks CFDictionaryKeyCallBacks;
typedef struct CFDictionaryValueCallBacks CFDictionaryValueCallBacks;

CF_EXTERN_C_BEGIN

CF_EXPORT CFTypeID CFDictionaryGetTypeID(void);

/// A dictionary that compares keys by address and retains neither keys nor values, owned by the caller. Null
/// unless both callbacks are null. Like every mutable dictionary, it is used by one thread at a time.
CF_EXPORT CFMutableDictionaryRef CFDictionaryCreateMutable(CFAllocatorRef allocator, CFIndex capacity,
                                                           const CFDictionaryKeyCallBacks *keyCallBacks,
                                                           const CFDictionaryValueCallBacks *valueCallBacks);

/// The number of entries; 0 for null.
CF_EXPORT CFIndex CFDictionaryGetCount(CFDictionaryRef dictionary);

/// The value of the key, borrowed; null if there is none or the dictionary is null.
CF_EXPORT const void *CFDictionaryGetValue(CFDictionaryRef dictionary, const void *key);

/// Whether the key has a value, which is then written to `value`, borrowed, unless `value` is null.
CF_EXPORT Boolean CFDictionaryGetValueIfPresent(CFDictionaryRef dictionary, const void *key,
                                                const void **value);

/// Sets the value of the key. A null dictionary is ignored, and so is a null key or value if the dictionary
/// holds objects.
CF_EXPORT void CFDictionarySetValue(CFMutableDictionaryRef dictionary, const void *key, const void *value);

/// Removes the key; a missing key and a null dictionary are ignored.
CF_EXPORT void CFDictionaryRemoveValue(CFMutableDictionaryRef dictionary, const void *key);

CF_EXTERN_C_END

#endif
