// The functions dlopen, dlsym, dladdr and dlerror for code of an image.
#pragma once

#include <dlfcn.h>

#include <string>

namespace macho {

/// The loader's functions. The loader sets them, because it lies above this file.
struct LoadingFunctions {
    /// Loads a dylib. Throws LoadError.
    const void *(*load)(const std::string &path);
    /// What a loaded dylib, or a library that it was linked with, exports under this C name; null if there is
    /// nothing.
    void *(*find)(const void *library, const std::string &name);
    /// The header of the image that an address lies in; null if it lies in none.
    const void *(*findHeader)(const void *address);
};

/// Called before any code of an image runs.
void LetImagesLoad(const LoadingFunctions &functions);

} // namespace macho

// What an image calls under the names of macOS.
extern "C" {

/// Loads a dylib for good: the same file gives the same handle. Null if it cannot be loaded. The mode makes
/// no difference, since all binds are made on loading and each names its library.
void *machoDlopen(const char *path, int mode);
/// What the dylib of a handle, or a library that it was linked with, exports; null if there is nothing of
/// this name, and for everything but handles.
void *machoDlsym(void *handle, const char *name);
/// Writes where the image of an address begins, and nothing else of it. 0 if the address is in no image.
int machoDladdr(const void *address, Dl_info *image);
/// What went wrong in the thread's last call of one of these; null if nothing did. The text holds until the
/// next call.
char *machoDlerror();
}
