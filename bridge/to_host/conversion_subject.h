// What a conversion step receives.
#pragma once

#include <objc/objc.h>

#include "bridge/enclosing_containers.h"

struct ConversionSubject {
    id object;
    /// The name of the step's class, which the object is an instance of.
    const char *className;
    const EnclosingContainers *enclosing;
};
