// Replaces the runtime's look-ups of classes by name.
#include "tests/support/class_look_ups.h"

#include <dlfcn.h>

#include <cstring>

namespace {

using LookUp = void *(const char *name);

void *Find(const char *function, const char *name)
{
    if (ClassLookUps::hidden != nullptr && std::strcmp(name, ClassLookUps::hidden) == 0)
        return nullptr;
    return reinterpret_cast<LookUp *>(dlsym(RTLD_NEXT, function))(name);
}

} // namespace

extern "C" {

void *objc_lookup_class(const char *name)
{
    return Find("objc_lookup_class", name);
}

void *objc_getClass(const char *name)
{
    return Find("objc_getClass", name);
}

void *__wrap_objc_getClass(const char *name)
{
    ++ClassLookUps::count;
    return objc_getClass(name);
}
}
