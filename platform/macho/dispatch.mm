// Looks methods up for messages from code of an image.
#include "platform/macho/dispatch.h"

#include <objc/message.h>
#include <objc/runtime.h>

void *machoLookUp(void *receiver, void *selector)
{
    return reinterpret_cast<void *>(objc_msg_lookup(static_cast<id>(receiver), static_cast<SEL>(selector)));
}

void *machoLookUpSuper(const machoSuper *super, void *selector)
{
    struct objc_super platformSuper = {static_cast<id>(super->receiver),
                                       class_getSuperclass(static_cast<Class>(super->type))};
    return reinterpret_cast<void *>(objc_msg_lookup_super(&platformSuper, static_cast<SEL>(selector)));
}
