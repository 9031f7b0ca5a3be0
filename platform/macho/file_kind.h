// Kinds of Mach-O files: which of them can be loaded, and what the others are.
#pragma once

#include <vector>

#include "platform/macho/bytes.h"
#include "platform/macho/processor.h"

namespace macho {

/// What an image is loaded as: dylibs and bundles are libraries, main executables are programs.
enum class ImageKind { Library, Program };

/// Whether Mach-O files of any kind begin with this word, universal ones among them.
bool IsMachOMagic(uint32_t word);

/// The image of this kind for the processor in a file: the file itself, or a slice of a universal file.
/// Throws LoadError for other files, whose text says what they are and what is needed, and for a malformed
/// table of slices.
Bytes FindImage(Bytes file, Processor processor, ImageKind kind);

/// Throws LoadError if an image that names these platforms is not for macOS.
void RequireMacos(const std::vector<uint32_t> &platforms);

} // namespace macho
