// The pointers of an image that have to be set when it is loaded.
#pragma once

#include "platform/macho/image.h"

namespace macho {

enum class BindTable { Ordinary, Lazy };

// Each adds the fixups of a table in the file to the image, whose segments and dylibs are already known. The
// symbols' names borrow from the table. Throws LoadError for a malformed table.

void ReadRebases(Bytes table, Image &image);
void ReadBinds(Bytes table, BindTable kind, Image &image);
void ReadChainedFixups(Bytes table, Image &image);

} // namespace macho
