// Which pointers of an image have to be set when it is loaded.
#pragma once

#include "platform/macho/image.h"

namespace macho {

enum class BindTable { Ordinary, Lazy };

// Each adds what a table in the file says to the image, whose segments and dylibs are known. The symbols'
// names borrow from the table. LoadError for what is wrong with it.

void ReadRebases(Bytes table, Image &image);
void ReadBinds(Bytes table, BindTable kind, Image &image);
void ReadChainedFixups(Bytes table, Image &image);

} // namespace macho
