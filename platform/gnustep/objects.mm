// What every Core Foundation object answers: retain and release.
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
