// What the imports of an image are bound to on this platform.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/macho/image.h"

namespace macho {

/// The address for a bind, without its addend; 0 for a weak import that is missing. Throws LoadError for one
/// that the stub of its library does not export, and for one that nothing here stands for. `ownExport`
/// answers what the image itself exports, for binds to itself.
uint64_t ResolveImport(const Bind &bind, const Image &image);

/// The names of all symbols that are bound to something here, but for classes and their exception types.
std::vector<std::string_view> BoundSymbols();

/// A library that there is a stub of, and a symbol that programs may take from it.
struct StubExport {
    std::string_view library, symbol;
};
const std::vector<StubExport> &StubExports();

} // namespace macho
