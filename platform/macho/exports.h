// What an image exports.
#pragma once

#include "platform/macho/image.h"

namespace macho {

/// Adds the trie's exports to the image, in the trie's order. Throws LoadError for a malformed trie.
void ReadExports(Bytes trie, Image &image);

} // namespace macho
