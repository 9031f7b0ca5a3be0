// How the functions of an image are unwound.
#pragma once

#include <vector>

#include "platform/macho/dwarf_frames.h"

namespace macho {

/// Of each function that the compact table has rules for; where that refers to a DWARF entry, its. Throws
/// LoadError.
std::vector<UnwindEntry> ReadUnwindInfo(const Image &image);

} // namespace macho
