// The host's functions as code written by hand calls them: through pointers that are found once.
#include "bench/host_functions.h"

#include <stdexcept>
#include <string>

HostFunctions gHost;

namespace {

template <typename Function>
void Set(Function *&slot, void *found, const std::string &name)
{
    if (found == nullptr)
        throw std::runtime_error("the host has no " + name);
    slot = reinterpret_cast<Function *>(found);
}

} // namespace

void FindHostFunctions(void *(*resolver)(const char *name))
{
    const auto find = [resolver](auto *&slot, const char *name) { Set(slot, resolver(name), name); };
    find(gHost.registerClass, "PluginRegisterClass");
    find(gHost.newInstance, "PluginNewInstance");
    find(gHost.lockObject, "REALLockObject");
    find(gHost.unlockObject, "REALUnlockObject");
    find(gHost.objectIsA, "RuntimeObjectIsa");
    find(gHost.objectType, "pluginObjectType");
    find(gHost.getEventInstance, "GetEventInstance");
    find(gHost.loadObjectMethod, "REALLoadObjectMethod");
    find(gHost.getInteger, "REALGetPropValueInteger");
    find(gHost.getObject, "REALGetPropValueObject");
    find(gHost.stringToVariant, "StringToVariant");
    find(gHost.integerToVariant, "IntegerToVariant");
    find(gHost.uint32ToVariant, "UInt32ToVariant");
    find(gHost.doubleToVariant, "DoubleToVariant");
    find(gHost.singleToVariant, "SingleToVariant");
    find(gHost.booleanToVariant, "BooleanToVariant");
    find(gHost.variantToString, "VariantToString");
    find(gHost.variantToInt64, "VariantToInt64");
    find(gHost.variantToDouble, "VariantToDouble");
    find(gHost.variantToSingle, "VariantToSingle");
    find(gHost.unlockString, "REALUnlockString");
    find(gHost.buildString, "REALBuildString");
    find(gHost.getStringEncoding, "REALGetStringEncoding");
    find(gHost.setStringEncoding, "REALSetStringEncoding");
    find(gHost.getStringCFString, "REALGetStringCFString");
    find(gHost.createArray, "RuntimeArrayCreateSingleDimBoundedArray");
    find(gHost.uBound, "RuntimeUBound");
    find(gHost.objectArrayInsertProc, "PluginObjectArrayInsertProc");
    find(gHost.int64ArrayGetProc, "PluginInt64ArrayGetProc");
    find(gHost.stringArrayGetProc, "PluginStringArrayGetProc");
    find(gHost.objectArrayGetProc, "PluginObjectArrayGetProc");
    find(gHost.newMemoryBlock, "newMemoryBlock");

    void *(*loadGlobalMethod)(void *module, const char *declaration) = nullptr;
    find(loadGlobalMethod, "REALLoadGlobalMethod");
    constexpr char kVarType[] = "VarType(value As Variant) As Integer";
    Set(gHost.varType, loadGlobalMethod(nullptr, kVarType), kVarType);
    constexpr char kPointer[] = "Operator_Convert() As Ptr";
    const REALobject block = AsInstance(gHost.newMemoryBlock(4));
    Set(gHost.memoryBlockPointer, gHost.loadObjectMethod(block, kPointer), kPointer);
    gHost.unlockObject(block);
}
