// How the functions of an image are unwound.
#pragma once

#include <vector>

#include "platform/macho/dwarf_frames.h"

namespace macho {

/// The entries of all functions that the compact table has rules for; where it refers to a DWARF entry, that
/// entry. Throws LoadError.
std::vector<UnwindEntry> ReadUnwindInfo(const Image &image);

} // namespace macho
