// Kinds of Mach-O files: which of them can be loaded, and what the others are.
#pragma once

#include <vector>

#include "platform/macho/bytes.h"
#include "platform/macho/processor.h"

namespace macho {

/// Whether Mach-O files of any kind begin with this word, universal ones among them.
bool IsMachOMagic(uint32_t word);

/// The dylib or bundle for the processor in a file: the file itself, or a slice of a universal file. Throws
/// LoadError for other files, whose text says what they are and what is needed, and for a malformed table of
/// slices.
Bytes FindImage(Bytes file, Processor processor);

/// Throws LoadError if an image that names these platforms is not for macOS.
void RequireMacos(const std::vector<uint32_t> &platforms);

} // namespace macho
