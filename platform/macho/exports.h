// What an image exports.
#pragma once

#include "platform/macho/image.h"

namespace macho {

/// Adds what the trie holds to the image, in the trie's order. LoadError for what is wrong with it.
void ReadExports(Bytes trie, Image &image);

} // namespace macho
