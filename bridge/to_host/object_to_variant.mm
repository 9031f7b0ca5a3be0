// Turns a Cocoa object into a host variant: strings so far, everything else gives null.
#include "bridge/to_host/object_to_variant.h"

#import <Foundation/Foundation.h>

#include "frame/host_ref.h"
#include "frame/host_strings.h"

REALobject NewVariantFromNSObject(id object)
{
    if (![object isKindOfClass:[NSString class]])
        return nullptr;
    const HostRef<REALstring> string(CFString2RBString((CFStringRef)object));
    return REALNewVariantString(string.Get());
}
