// Host classes whose instances hold a Cocoa object, as the family's plugins bring them.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <string>

#include "host/host.h"

/// Defines the class unless the host has it. The data of its instances begin with the Cocoa object: at its
/// end an instance removes it from the registry and releases it.
void DefineWrapperClass(qzlhost::Host &host, const std::string &name, uint64_t dataSize = 16,
                        const std::string &super = "");

namespace family {

/// The instances by their Cocoa objects; null while there is no registry.
inline CFMutableDictionaryRef gRegistry = nullptr;

} // namespace family
