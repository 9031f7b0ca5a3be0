// Reads a Mach-O file: the header, the load commands, and the tables that they name.
#pragma once

#include "platform/macho/file_kind.h"
#include "platform/macho/image.h"

namespace macho {

/// Reads an image of this kind for the processor, or such a slice of a universal file. Throws LoadError for
/// other files, for a malformed file, and for what this loader does not support, such as thread-local
/// variables, re-exports and encrypted code.
Image ParseImage(Bytes wholeFile, Processor processor, ImageKind kind);

} // namespace macho
