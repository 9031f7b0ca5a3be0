// Core Foundation numbers and booleans, which are NSNumbers.
#ifndef QZL_CFNUMBER_H
#define QZL_CFNUMBER_H

#include <CoreFoundation/CFBase.h>

typedef const struct __CFBoolean *CFBooleanRef;

CF_EXTERN_C_BEGIN

/// The objects that `+[NSNumber numberWithBool:]` returns.
CF_EXPORT const CFBooleanRef kCFBooleanTrue;
CF_EXPORT const CFBooleanRef kCFBooleanFalse;

CF_EXPORT CFTypeID CFBooleanGetTypeID(void);
CF_EXPORT CFTypeID CFNumberGetTypeID(void);

CF_EXTERN_C_END

#endif
