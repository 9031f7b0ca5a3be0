/// The frameworks that ApplicationServices brings along.
#ifndef COCOAPORT_APPLICATIONSERVICES_H
#define COCOAPORT_APPLICATIONSERVICES_H

#include <CoreFoundation/CoreFoundation.h>
#include <CoreServices/CoreServices.h>
#include <CoreText/CoreText.h>

#endif
