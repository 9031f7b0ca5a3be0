/// Core Foundation over GNUstep: toll-free, so that every object here is a Cocoa object.
#ifndef COCOAPORT_COREFOUNDATION_H
#define COCOAPORT_COREFOUNDATION_H

#include <CoreFoundation/CFBase.h>
#include <CoreFoundation/CFDictionary.h>
#include <CoreFoundation/CFNumber.h>
#include <CoreFoundation/CFOtherTypes.h>
#include <CoreFoundation/CFString.h>
#include <CoreFoundation/CFURL.h>
#include <CoreFoundation/FileTypes.h>

#endif
