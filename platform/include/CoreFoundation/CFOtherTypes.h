// Core Foundation types that nothing else here deals with, and what types are called.
#ifndef QZL_CFOTHERTYPES_H
#define QZL_CFOTHERTYPES_H

#include <CoreFoundation/CFString.h>

typedef const struct __CFUUID *CFUUIDRef;

CF_EXTERN_C_BEGIN

CF_EXPORT CFTypeID CFArrayGetTypeID(void);
CF_EXPORT CFTypeID CFAttributedStringGetTypeID(void);
CF_EXPORT CFTypeID CFBagGetTypeID(void);
CF_EXPORT CFTypeID CFBundleGetTypeID(void);
CF_EXPORT CFTypeID CFCharacterSetGetTypeID(void);
CF_EXPORT CFTypeID CFDataGetTypeID(void);
CF_EXPORT CFTypeID CFDateGetTypeID(void);
CF_EXPORT CFTypeID CFErrorGetTypeID(void);
CF_EXPORT CFTypeID CFSetGetTypeID(void);
CF_EXPORT CFTypeID CFTimeZoneGetTypeID(void);
CF_EXPORT CFTypeID CFUUIDGetTypeID(void);

/// The name of a type, such as CFString, owned by the caller; null for a number that is no type's.
CF_EXPORT CFStringRef CFCopyTypeIDDescription(CFTypeID type);

/// A new UUID, owned by the caller.
CF_EXPORT CFUUIDRef CFUUIDCreate(CFAllocatorRef allocator);

CF_EXTERN_C_END

#endif
