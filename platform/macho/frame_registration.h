// Makes the functions of an image known to the unwinder of this platform.
#pragma once

#include <vector>

#include "platform/macho/mapped_image.h"
#include "platform/macho/unwind_info.h"

namespace macho {

/// The image's pointers are set already. What is registered stays.
void RegisterFrames(const std::vector<UnwindEntry> &entries, const MappedImage &memory);

} // namespace macho
