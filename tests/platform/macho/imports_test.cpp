// Imports: what the stubs export is bound to something, and nothing else is.
#include "platform/macho/imports.h"

#include <gmock/gmock.h>
#include <objc/runtime.h>

#include <set>

#include "platform/macho/call_adapters.h"
#include "tests/platform/macho/load_error.h"

using macho::Image;
using testing::HasSubstr;

namespace {

constexpr char kSystem[] = "/usr/lib/libSystem.B.dylib";
constexpr char kCocoa[] = "/System/Library/Frameworks/Cocoa.framework/Versions/A/Cocoa";

/// What the import of a symbol from a library is bound to.
uint64_t Resolve(const std::string &symbol, const std::string &library, bool isWeakImport = false)
{
    Image image;
    image.dylibs = {library};
    return macho::ResolveImport({0, symbol, 1, 0, isWeakImport}, image);
}

uint64_t ResolveFlat(const std::string &symbol, bool isWeakImport = false)
{
    return macho::ResolveImport({0, symbol, macho::kBindFlat, 0, isWeakImport}, Image());
}

bool IsOfAClass(std::string_view symbol)
{
    return symbol.rfind("_OBJC_", 0) == 0 && symbol != "_OBJC_EHTYPE_id";
}

} // namespace

TEST(Imports, EverythingThatAStubExportsIsBound)
{
    ASSERT_GT(macho::StubExports().size(), 200u);
    for (const macho::StubExport &row : macho::StubExports())
        EXPECT_NE(Resolve(std::string(row.symbol), std::string(row.library)), 0u) << row.symbol;
}

TEST(Imports, NothingIsBoundThatNoStubExports)
{
    std::set<std::string_view> exported;
    for (const macho::StubExport &row : macho::StubExports())
        exported.insert(row.symbol);
    std::set<std::string_view> bound;
    for (const std::string_view symbol : macho::BoundSymbols()) {
        EXPECT_EQ(exported.count(symbol), 1u) << symbol;
        EXPECT_TRUE(bound.insert(symbol).second) << symbol << " is listed twice";
    }
    for (const std::string_view symbol : exported)
        EXPECT_TRUE(IsOfAClass(symbol) || bound.count(symbol) == 1) << symbol;
}

TEST(Imports, ThatAreCalledInAnotherWayAreBoundToTheirAdapters)
{
    std::set<std::string_view> bound;
    for (const macho::StubExport &row : macho::StubExports()) {
        const auto adapter = macho::CallAdapters().find(row.symbol);
        if (adapter == macho::CallAdapters().end())
            continue;
        EXPECT_EQ(Resolve(std::string(row.symbol), std::string(row.library)),
                  reinterpret_cast<uint64_t>(adapter->second))
            << row.symbol;
        bound.insert(row.symbol);
    }
    EXPECT_EQ(bound.size(), macho::CallAdapters().size());
}

TEST(Imports, WhatTheLibraryDoesNotExportIsAnError)
{
    // The process has it; macOS lacks it.
    EXPECT_THAT(ErrorFrom([] { Resolve("_secure_getenv", kSystem); }),
                HasSubstr("import _secure_getenv: /usr/lib/libSystem.B.dylib does not export it"));
    EXPECT_THAT(ErrorFrom([] { Resolve("_CFRetain", kSystem); }), HasSubstr("does not export it"));
    EXPECT_THAT(ErrorFrom([] { Resolve("_memcpy", "/usr/lib/libunknown.dylib"); }),
                HasSubstr("/usr/lib/libunknown.dylib does not export it"));
}

TEST(Imports, NamesInErrorsArePrintable)
{
    EXPECT_THAT(ErrorFrom([] { Resolve("_a\x1B[2J", "/usr/lib/\xFF\n.dylib"); }),
                HasSubstr("import _a\\x1b[2J: /usr/lib/\\xff\\x0a.dylib does not export it"));
}

TEST(Imports, WeakOnesThatAreMissingAreNull)
{
    EXPECT_EQ(Resolve("_secure_getenv", kSystem, true), 0u);
    EXPECT_EQ(Resolve("_memcpy", "/usr/lib/libunknown.dylib", true), 0u);
}

TEST(Imports, ReexportsAreBound)
{
    EXPECT_EQ(Resolve("_OBJC_CLASS_$_NSObject", kCocoa),
              reinterpret_cast<uint64_t>(objc_getClass("NSObject")));
    EXPECT_EQ(Resolve("_OBJC_METACLASS_$_NSObject", kCocoa),
              reinterpret_cast<uint64_t>(object_getClass(reinterpret_cast<id>(objc_getClass("NSObject")))));
}

TEST(Imports, WithFlatLookupAreTheSanitizersAlone)
{
    EXPECT_THAT(ErrorFrom([] { ResolveFlat("_memcpy"); }),
                HasSubstr("import _memcpy: flat lookup is not supported"));
    EXPECT_EQ(ResolveFlat("_memcpy", true), 0u);
    EXPECT_THAT(ErrorFrom([] { ResolveFlat("___asan_nonsense"); }), HasSubstr("is not supported"));
}

TEST(Imports, FromTheMainProgramAreAnError)
{
    EXPECT_THAT(ErrorFrom([] {
                    macho::ResolveImport({0, "_main", macho::kBindToMainExecutable, 0, false}, Image());
                }),
                HasSubstr("import _main: library ordinal -1 is not supported"));
}
