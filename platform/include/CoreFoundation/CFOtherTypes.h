/// The Core Foundation types of which only the name and the type ID are used here.
#ifndef QZL_CFOTHERTYPES_H
#define QZL_CFOTHERTYPES_H

#include <CoreFoundation/CFBase.h>

typedef const struct __CFArray *CFArrayRef;
typedef const struct __CFAttributedString *CFAttributedStringRef;
typedef const struct __CFBag *CFBagRef;
typedef struct __CFBundle *CFBundleRef;
typedef const struct __CFCharacterSet *CFCharacterSetRef;
typedef const struct __CFData *CFDataRef;
typedef const struct __CFDate *CFDateRef;
typedef struct __CFError *CFErrorRef;
typedef const struct __CFSet *CFSetRef;
typedef const struct __CFTimeZone *CFTimeZoneRef;
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

CF_EXTERN_C_END

#endif
