// What the imports of an image are bound to on this platform.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/macho/image.h"

namespace macho {

/// The address for a bind to a library, without its addend; 0 for a weak import that is missing. Throws
/// LoadError for a symbol that the stub of its library does not export, and for one without a counterpart
/// here.
uint64_t ResolveImport(const Bind &bind, const Image &image);

/// The address of what one of the image's libraries exports under this symbol; 0 if none does.
uint64_t FindInLibraries(const std::string &symbol, const Image &image);

/// The names of all symbols that have a counterpart here, except for classes and their exception types.
std::vector<std::string_view> BoundSymbols();

/// A library that has a stub, and a symbol that programs may import from it.
struct StubExport {
    std::string_view library, symbol;
};
const std::vector<StubExport> &StubExports();

} // namespace macho
