// The functions that a library finds by name through the resolver.
#include "host/interface/entry_points.h"

#include <unordered_map>

#include "host/interface/entry_functions.h"
#include "host/values/arrays.h"
#include "host/values/folder_item.h"
#include "host/values/memory_block.h"

namespace qzlhost {

namespace {

template <auto Function, int Alias = 0>
EntryPoint Row(const char *name)
{
    return {name, Native<Function, Alias>(name), &gNativeFunction<Function, Alias>};
}

} // namespace

const std::vector<EntryPoint> &EntryPoints()
{
    static const std::vector<EntryPoint> rows = {
        Row<&Version>("REALGetRBVersion"),
        Row<&RegisterVersion>("RegisterPluginVersion"),
        Row<&RegisterClass>("PluginRegisterClass"),

        Row<&PluginNewInstance>("PluginNewInstance"),
        Row<&LockObject>("REALLockObject"),
        Row<&UnlockObject>("REALUnlockObject"),
        Row<&ObjectIsA>("RuntimeObjectIsa"),
        Row<&ObjectType>("pluginObjectType"),
        Row<&EventInstance>("GetEventInstance"),
        Row<&RaiseException>("RuntimeRaiseException"),
        Row<&CallWithExceptionHandler>("PluginCallFunctionWithExceptionHandler"),
        Row<&LoadGlobalMethod>("REALLoadGlobalMethod"),
        Row<&LoadObjectMethod>("REALLoadObjectMethod"),

        Row<&GetPropertyInteger>("REALGetPropValueInteger"),
        Row<&GetPropertyInteger, 1>("REALGetPropValueInt64"),
        Row<&GetPropertyDouble>("REALGetPropValueDouble"),
        Row<&GetPropertySingle>("REALGetPropValueSingle"),
        Row<&GetPropertyString>("REALGetPropValueString"),
        Row<&GetPropertyObject>("REALGetPropValueObject"),
        Row<&SetPropertyInteger>("REALSetPropValueInteger"),
        Row<&SetPropertyString>("REALSetPropValueString"),

        Row<&StringToVariant>("StringToVariant"),
        Row<&IntegerToVariant>("IntegerToVariant"),
        Row<&UInt32ToVariant>("UInt32ToVariant"),
        Row<&DoubleToVariant>("DoubleToVariant"),
        Row<&SingleToVariant>("SingleToVariant"),
        Row<&BooleanToVariant>("BooleanToVariant"),
        Row<&TextToVariant>("PluginNewVariantText"),
        Row<&VariantToString>("VariantToString"),
        Row<&VariantToInt64>("VariantToInt64"),
        Row<&VariantToDouble>("VariantToDouble"),
        Row<&VariantToSingle>("VariantToSingle"),

        Row<&LockString>("REALLockString"),
        Row<&UnlockString>("REALUnlockString"),
        Row<&BuildString>("REALBuildString"),
        Row<&BuildStringWithEncoding>("REALBuildStringWithEncoding"),
        Row<&GetStringEncoding>("REALGetStringEncoding"),
        Row<&SetStringEncoding>("REALSetStringEncoding"),
        Row<&ConvertString>("REALConvertString"),
        Row<&StringGetCString>("StringGetCString"),
        Row<&GetStringCFString>("REALGetStringCFString"),
        Row<&GetStringData>("PluginGetStringData"),
        Row<&DisposeStringData>("PluginDisposeStringData"),
        Row<&LockText>("PluginLockText"),
        Row<&UnlockText>("PluginUnlockText"),
        Row<&CopyTextCFString>("PluginCopyTextCFString"),

        Row<&CreateArray>("RuntimeArrayCreateSingleDimBoundedArray"),
        Row<&UBound>("RuntimeUBound"),
        Row<&ObjectArrayInsertProc>("PluginObjectArrayInsertProc"),
        Row<&IntegerArrayGetProc>("PluginIntegerArrayGetProc"),
        Row<&Int64ArrayGetProc>("PluginInt64ArrayGetProc"),
        Row<&BooleanArrayGetProc>("PluginBooleanArrayGetProc"),
        Row<&SingleArrayGetProc>("PluginSingleArrayGetProc"),
        Row<&DoubleArrayGetProc>("PluginDoubleArrayGetProc"),
        Row<&StringArrayGetProc>("PluginStringArrayGetProc"),
        Row<&TextArrayGetProc>("PluginTextArrayGetProc"),
        Row<&ObjectArrayGetProc>("PluginObjectArrayGetProc"),

        Row<&NewMemoryBlock>("newMemoryBlock"),
        Row<&MemoryBlockPointer>("memoryBlockGetPtr"),
        Row<&MemoryBlockSize>("memoryBlockGetSize"),

        Row<&FSRefFromFolderItem>("REALFSRefFromFolderItem"),
        Row<&FolderItemFromParentFSRef>("REALFolderItemFromParentFSRef"),
    };
    return rows;
}

const EntryPoint *FindEntryPoint(std::string_view name)
{
    static const auto byName = [] {
        std::unordered_map<std::string_view, const EntryPoint *> map;
        for (const EntryPoint &row : EntryPoints())
            map.emplace(row.name, &row);
        return map;
    }();
    const auto found = byName.find(name);
    return found == byName.end() ? nullptr : found->second;
}

void *ResolveEntryPoint(const char *name)
{
    Session *const session = Current<Session>();
    if (!session)
        return nullptr;
    if (!name) {
        RecordMistake("the resolver was asked for null");
        return nullptr;
    }
    const EntryPoint *const entry = FindEntryPoint(name);
    return session->faults.Answer(name, entry ? entry->function : nullptr);
}

} // namespace qzlhost
