// The classes and global methods that every host has.
#include "host/interface/builtin_classes.h"

#include <algorithm>

#include "host/interface/exceptions.h"
#include "host/interface/thunk.h"

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

std::vector<BuiltInMethod> GlobalMethods()
{
    return {
        {"LenB(s As String) As Integer", Native<&LenB>("LenB")},
        {"VarType(value As Variant) As Integer", Native<&VarType>("VarType")},
        TrueFolderItemMethod(),
    };
}

} // namespace

std::vector<BuiltInClass> BuiltInClasses()
{
    std::vector<BuiltInClass> classes = ExceptionClasses();
    classes.insert(
        classes.end(),
        {VariantClass(), {"Array"}, DictionaryClass(), DateClass(), MemoryBlockClass(), FolderItemClass()});
    return classes;
}

void *FindGlobalMethod(const Declaration &declaration)
{
    struct Row {
        Declaration declaration;
        void *function;
    };
    static const std::vector<Row> rows = [] {
        std::vector<Row> parsed;
        for (const BuiltInMethod &method : GlobalMethods())
            parsed.push_back({ParseDeclaration(method.declaration), method.function});
        return parsed;
    }();
    const auto found = std::find_if(rows.begin(), rows.end(), [&](const Row &row) {
        return SameSignature(row.declaration, declaration);
    });
    return found == rows.end() ? nullptr : found->function;
}

} // namespace qzlhost
