// Host classes whose instances hold a Cocoa object, as the family's plugins define them.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <string>

#include "host/host.h"

/// Defines the class unless the host has it. The data of an instance begins with the Cocoa object, which the
/// instance removes from the registry and releases when it is destroyed.
void DefineWrapperClass(qzlhost::Host &host, const std::string &name, uint64_t dataSize = 16,
                        const std::string &super = "");

namespace family {

/// The instances by their Cocoa objects; null while there is no registry.
inline CFMutableDictionaryRef gRegistry = nullptr;

} // namespace family
