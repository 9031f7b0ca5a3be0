// The classes and global methods that every host has.
#include "host/arrays.h"
#include "host/boxes.h"
#include "host/builtin.h"
#include "host/date.h"
#include "host/dictionary.h"
#include "host/exceptions.h"
#include "host/folder_item.h"
#include "host/memory_block.h"
#include "host/strings.h"
#include "host/thunk.h"

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
