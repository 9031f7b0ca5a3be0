// Names in the host's language: the case of ASCII letters does not count.
#pragma once

#include <string>
#include <string_view>

namespace qzlhost {

/// The name in lower case, which is the same for all its spellings.
std::string Folded(std::string_view name);

bool SameName(std::string_view a, std::string_view b);

} // namespace qzlhost
