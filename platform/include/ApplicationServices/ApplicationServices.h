// The frameworks that ApplicationServices includes.
#ifndef QZL_APPLICATIONSERVICES_H
#define QZL_APPLICATIONSERVICES_H

#include <CoreFoundation/CoreFoundation.h>
#include <CoreServices/CoreServices.h>
#include <CoreText/CoreText.h>

#endif
