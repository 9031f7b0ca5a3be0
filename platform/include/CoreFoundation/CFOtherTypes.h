// The type IDs of the Core Foundation types that nothing else here deals with.
#ifndef QZL_CFOTHERTYPES_H
#define QZL_CFOTHERTYPES_H

#include <CoreFoundation/CFBase.h>

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
