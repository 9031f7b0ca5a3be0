// Loading a plugin library.
#include "host/library.h"

#include <filesystem>

#include <dlfcn.h>

#include "host/calls.h"
#include "host/host.h"

namespace qzlhost {

namespace {

constexpr const char *kEntryPoint = "REALPluginMain";

using EntryFunction = void (*)(void *(*resolver)(const char *));

void *OpenLibrary(const std::string &path)
{
    std::error_code error;
    if (!std::filesystem::exists(path, error))
        throw LoadError("there is no file " + path);
    // A name without a slash would be searched for elsewhere.
    const std::string absolute = std::filesystem::absolute(path).string();
    void *const library = dlopen(absolute.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library)
        throw LoadError("cannot load " + path + ": " + dlerror());
    return library;
}

} // namespace

void LoadLibrary(const std::string &path, void *(*resolver)(const char *))
{
    const CocoaScope cocoa;
    const auto main = reinterpret_cast<EntryFunction>(dlsym(OpenLibrary(path), kEntryPoint));
    if (!main)
        throw LoadError("the library " + path + " has no function " + kEntryPoint);
    main(resolver);
}

} // namespace qzlhost
