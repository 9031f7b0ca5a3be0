// Messages with a variable number of arguments.
#pragma once

#include "platform/macho/image.h"

namespace macho {

/// Throws LoadError, which names the selector, if the image sends such a message to objects of this platform,
/// and the platform's methods look for the arguments elsewhere than the image puts them. The image's pointers
/// are known.
void RequireNoVariadicMessages(const Image &image);

} // namespace macho
