// What the steps of the conversion to the host convert.
#pragma once

#include <objc/objc.h>

#include "bridge/enclosing_containers.h"

struct ConversionSubject {
    id object;
    /// The step's: the name of the Cocoa class that the object is of.
    const char *className;
    const EnclosingContainers *enclosing;
};
