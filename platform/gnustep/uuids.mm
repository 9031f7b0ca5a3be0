// Makes UUIDs, which are NSUUIDs.
#include "platform/gnustep/objects.h"

CFUUIDRef CFUUIDCreate(CFAllocatorRef)
{
    return cocoaport::ReferenceOf<CFUUIDRef>([[NSUUID alloc] init]);
}
