// Core Foundation, whose objects are Cocoa objects, too. The same on every platform.
#ifndef QZL_COREFOUNDATION_H
#define QZL_COREFOUNDATION_H

#include <CoreFoundation/CFBase.h>
#include <CoreFoundation/CFDictionary.h>
#include <CoreFoundation/CFNumber.h>
#include <CoreFoundation/CFOtherTypes.h>
#include <CoreFoundation/CFString.h>
#include <CoreFoundation/CFURL.h>
#include <CoreFoundation/FileTypes.h>

#endif
