// Registers the functions of an image with the unwinder of this platform.
#pragma once

#include <vector>

#include "platform/macho/mapped_image.h"
#include "platform/macho/unwind_info.h"

namespace macho {

/// Registers the entries for good. The image's pointers are already set.
void RegisterFrames(const std::vector<UnwindEntry> &entries, const MappedImage &memory);

} // namespace macho
