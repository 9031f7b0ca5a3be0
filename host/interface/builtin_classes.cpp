// The classes and global methods that every host has.
#include "host/calls/builtin.h"
#include "host/calls/exceptions.h"
#include "host/interface/thunk.h"
#include "host/values/arrays.h"
#include "host/values/boxes.h"
#include "host/values/date.h"
#include "host/values/dictionary.h"
#include "host/values/folder_item.h"
#include "host/values/memory_block.h"
#include "host/values/strings.h"

namespace qzlhost {

namespace {

int64_t LenB(String *string)
{
    return static_cast<int64_t>(BytesOf(string).size());
}

int64_t VarType(Instance *value)
{
    return CodeOf(value);
}

} // namespace

std::vector<BuiltInClass> BuiltInClasses()
{
    std::vector<BuiltInClass> classes = {
        VariantClass(), ArrayClass(), DictionaryClass(), DateClass(), MemoryBlockClass(), FolderItemClass(),
    };
    for (BuiltInClass &exception : ExceptionClasses())
        classes.push_back(std::move(exception));
    return classes;
}

std::vector<BuiltInMethod> GlobalMethods()
{
    std::vector<BuiltInMethod> methods = {
        {"LenB(s As String) As Integer", Native<&LenB>("LenB")},
        {"VarType(value As Variant) As Integer", Native<&VarType>("VarType")},
    };
    for (const BuiltInMethod &method : FolderItemMethods())
        methods.push_back(method);
    return methods;
}

} // namespace qzlhost
