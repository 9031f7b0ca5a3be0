// Loading a plugin library.
#include "host/interface/library.h"

#include <filesystem>

#include <dlfcn.h>

#include "host/calls/cocoa.h"
#include "platform/macho/loader.h"

namespace qzlhost {

namespace {

constexpr const char *kEntryPoint = "REALPluginMain";

using EntryFunction = void (*)(void *(*resolver)(const char *));

/// The entry point of a library of this platform; null without one.
void *FindNativeEntryPoint(const std::string &path)
{
    // A name without a slash would be searched for elsewhere.
    const std::string absolute = std::filesystem::absolute(path).string();
    void *const library = dlopen(absolute.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library)
        throw LoadError("cannot load " + path + ": " + dlerror());
    return dlsym(library, kEntryPoint);
}

/// The entry point of a library for macOS; null without one.
void *FindMachOEntryPoint(const std::string &path)
{
    try {
        return macho::FindSymbol(macho::LoadDylib(path), kEntryPoint);
    } catch (const macho::LoadError &error) {
        throw LoadError(std::string("cannot load ") + error.what());
    }
}

} // namespace

void LoadLibrary(const std::string &path, void *(*resolver)(const char *))
{
    const CocoaScope cocoa;
    std::error_code error;
    if (!std::filesystem::exists(path, error))
        throw LoadError("there is no file " + path);
    const auto main = reinterpret_cast<EntryFunction>(macho::IsMachO(path) ? FindMachOEntryPoint(path)
                                                                           : FindNativeEntryPoint(path));
    if (!main)
        throw LoadError("the library " + path + " has no function " + kEntryPoint);
    main(resolver);
}

} // namespace qzlhost
