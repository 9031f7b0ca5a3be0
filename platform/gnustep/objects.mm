// Retains and releases Core Foundation objects.
#include "platform/gnustep/objects.h"

extern "C" const CFAllocatorRef kCFAllocatorDefault = nullptr;

CFTypeRef CFRetain(CFTypeRef object)
{
    return [cocoaport::Object(object) retain];
}

void CFRelease(CFTypeRef object)
{
    [cocoaport::Object(object) release];
}
