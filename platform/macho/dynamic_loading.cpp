// The functions dlopen, dlsym, dladdr and dlerror for code of an image.
#include "platform/macho/dynamic_loading.h"

#include <mutex>
#include <set>

#include "platform/macho/messages.h"

namespace macho {

namespace {

LoadingFunctions gFunctions;

/// Guards the loading of images and the handles. Initialisers of a dylib may load others.
std::recursive_mutex gMutex;

std::set<const void *> &Handles()
{
    static auto &handles = *new std::set<const void *>;
    return handles;
}

/// What went wrong in the thread's last call, and whether nobody has asked for it yet.
thread_local std::string gError;
thread_local bool gHasError = false;

std::nullptr_t Fail(const std::string &error)
{
    gError = error;
    gHasError = true;
    return nullptr;
}

} // namespace

void LetImagesLoad(const LoadingFunctions &functions)
{
    gFunctions = functions;
}

} // namespace macho

using namespace macho;

void *machoDlopen(const char *path, int mode)
{
    gHasError = false;
    if (path == nullptr)
        return Fail("dlopen(NULL, " + Hex(static_cast<unsigned>(mode)) +
                    "): there is no handle of the program");
    const std::lock_guard lock(gMutex);
    try {
        const void *const handle = gFunctions.load(path);
        Handles().insert(handle);
        return const_cast<void *>(handle);
    } catch (const LoadError &error) {
        return Fail("dlopen(" + Printable(path) + ", " + Hex(static_cast<unsigned>(mode)) +
                    "): " + error.what());
    }
}

void *machoDlsym(void *handle, const char *name)
{
    gHasError = false;
    const std::string call =
        "dlsym(" + Hex(reinterpret_cast<uintptr_t>(handle)) + ", " + Printable(name) + "): ";
    const std::lock_guard lock(gMutex);
    if (Handles().count(handle) == 0)
        return Fail(call + "the handle is none of a dylib");
    void *const symbol = gFunctions.find(handle, name);
    return symbol != nullptr ? symbol : Fail(call + "symbol not found");
}

int machoDladdr(const void *address, Dl_info *image)
{
    const std::lock_guard lock(gMutex);
    *image = {};
    image->dli_fbase = const_cast<void *>(gFunctions.findHeader(address));
    return image->dli_fbase != nullptr ? 1 : 0;
}

char *machoDlerror()
{
    const bool hasError = gHasError;
    gHasError = false;
    return hasError ? gError.data() : nullptr;
}
