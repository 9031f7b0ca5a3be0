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

/// Why dlopen failed, without the path that it begins with.
std::string ReasonOfDlopen(const std::string &path)
{
    const std::string reason = dlerror();
    return reason.rfind(path + ": ", 0) == 0 ? reason.substr(path.size() + 2) : reason;
}

/// The entry point of a library of this platform; null without one.
void *FindNativeEntryPoint(const std::string &path)
{
    // A name without a slash would be searched for elsewhere.
    const std::string absolute = std::filesystem::absolute(path).string();
    void *const library = dlopen(absolute.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library)
        throw LoadError("cannot load " + path + ": " + ReasonOfDlopen(absolute));
    return dlsym(library, kEntryPoint);
}

/// The entry point of a library of this platform or for macOS; null without one.
EntryFunction FindEntryFunction(const std::string &path)
{
    try {
        return reinterpret_cast<EntryFunction>(macho::IsMachO(path)
                                                   ? macho::FindSymbol(macho::LoadDylib(path), kEntryPoint)
                                                   : FindNativeEntryPoint(path));
    } catch (const macho::LoadError &error) {
        throw LoadError(std::string("cannot load ") + error.what());
    }
}

} // namespace

void LoadLibrary(const std::string &path, void *(*resolver)(const char *))
{
    const CocoaScope cocoa;
    if (path.empty())
        throw LoadError("the name of the library is empty");
    std::error_code error;
    if (!std::filesystem::exists(path, error) && !error)
        throw LoadError("there is no file " + path);
    const EntryFunction main = FindEntryFunction(path);
    if (!main)
        throw LoadError("the library " + path + " has no function " + kEntryPoint);
    main(resolver);
}

} // namespace qzlhost
