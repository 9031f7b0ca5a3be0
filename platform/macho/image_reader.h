// Reads a Mach-O file: the header, the load commands, and the tables that they name.
#pragma once

#include "platform/macho/image.h"

namespace macho {

/// Reads a file for x86-64. Throws LoadError for everything that is not as it should be, or that this
/// loader does not do: thread-local variables, re-exports, and code that is encrypted among them.
Image ParseImage(Bytes file);

} // namespace macho
