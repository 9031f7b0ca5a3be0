// Reads a Mach-O file: the header, the load commands, and the tables that they name.
#pragma once

#include "platform/macho/image.h"

namespace macho {

/// Reads a file for x86-64. Throws LoadError for a malformed file, and for what this loader does not support,
/// such as thread-local variables, re-exports and encrypted code.
Image ParseImage(Bytes file);

} // namespace macho
