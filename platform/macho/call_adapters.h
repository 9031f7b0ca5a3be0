// Functions of this process that code of an image calls in another way than this platform's code does.
#pragma once

#include <map>
#include <string_view>

namespace macho {

/// What the imports of these names are bound to in place of the functions themselves. Depends on the
/// processor.
const std::map<std::string_view, const void *> &CallAdapters();

} // namespace macho
