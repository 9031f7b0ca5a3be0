// Each wrapper of a host function looks it up by its exact name, keeps it once found, and does nothing while
// it is missing.
#include <gtest/gtest.h>

#include "frame/host_entry_points.h"
#include "frame/loaded_host.h"
#include "tests/frame/sample_host.h"

namespace {

/// `HostResult` is the host function's own result where the wrapper returns something else.
template <typename HostResult, typename Result, typename... Parameters>
void CheckWrapperOf(const std::string &name, Result (*wrapper)(Parameters...))
{
    SCOPED_TRACE(name);
    using Function = HostFunction<HostResult, Parameters...>;
    gResolver = Resolve;
    gAnswers.clear();
    gAsks.clear();
    Function::calls = 0;
    Function::arguments = {};
    const auto callMissing = [&] {
        if constexpr (std::is_void_v<Result>)
            wrapper(Sample<Parameters>()...);
        else
            EXPECT_EQ(wrapper(Sample<Parameters>()...), Result());
    };
    const auto callFound = [&] {
        if constexpr (std::is_void_v<Result>)
            wrapper(Sample<Parameters>()...);
        else
            EXPECT_EQ(wrapper(Sample<Parameters>()...), Sample<Result>());
    };

    callMissing();
    callMissing();
    EXPECT_EQ(gAsks[name], 2) << "asked again as long as it is missing";
    EXPECT_EQ(gAsks.size(), 1u) << "asked for another name";

    gAnswers[name] = reinterpret_cast<void *>(&Function::Call);
    callFound();
    EXPECT_EQ(gAsks[name], 3);
    EXPECT_EQ(Function::calls, 1);
    EXPECT_EQ(Function::arguments, std::make_tuple(Sample<Parameters>()...));

    gAnswers.clear();
    callFound();
    EXPECT_EQ(gAsks[name], 3) << "kept once found";
    EXPECT_EQ(Function::calls, 2);
    EXPECT_EQ(gAsks.size(), 1u) << "asked for another name";
}

template <typename Result, typename... Parameters>
void CheckWrapper(const std::string &name, Result (*wrapper)(Parameters...))
{
    CheckWrapperOf<Result>(name, wrapper);
}

/// A host function that reads a property of a variant by name.
template <typename Value>
struct PropertyFunction {
    static inline std::string name;
    static inline REALobject variant;

    static bool Call(REALobject givenVariant, const char *given, Value *value)
    {
        name = given;
        variant = givenVariant;
        *value = Sample<Value>();
        return true;
    }
};

/// A wrapper that reads a variant through its own host function, or else through the variant's property.
template <typename Value>
void CheckVariantReader(const std::string &name, Value (*wrapper)(REALobject),
                        const std::string &propertyFunction, const std::string &property)
{
    SCOPED_TRACE(name);
    gResolver = Resolve;
    gAnswers.clear();
    gAsks.clear();
    const auto variant = Sample<REALobject>();

    EXPECT_EQ(wrapper(variant), Value());
    EXPECT_EQ(gAsks[name], 1);

    gAnswers[propertyFunction] = reinterpret_cast<void *>(&PropertyFunction<Value>::Call);
    EXPECT_EQ(wrapper(variant), Sample<Value>());
    EXPECT_EQ(PropertyFunction<Value>::name, property);
    EXPECT_EQ(PropertyFunction<Value>::variant, variant);
    EXPECT_EQ(gAsks[name], 2) << "asked again as long as it is missing";

    PropertyFunction<Value>::name.clear();
    gAnswers[name] = reinterpret_cast<void *>(&HostFunction<Value, REALobject>::Call);
    EXPECT_EQ(wrapper(variant), Sample<Value>());
    EXPECT_EQ((HostFunction<Value, REALobject>::arguments), std::make_tuple(variant));
    EXPECT_EQ(wrapper(variant), Sample<Value>());
    EXPECT_EQ(PropertyFunction<Value>::name, "") << "the property is read only without the function";
    EXPECT_EQ(gAsks[name], 3) << "kept once found";
}

} // namespace

TEST(HostEntryPoints, AreFoundByNameAndKept)
{
    CheckWrapper("PluginRegisterClass", REALRegisterClass);
    CheckWrapper("PluginNewInstance", REALnewInstance);
    CheckWrapperOf<void>("REALLockObject", REALLockObject);
    CheckWrapper("REALUnlockObject", REALUnlockObject);
    CheckWrapper("RuntimeObjectIsa", REALObjectIsA);
    CheckWrapper("pluginObjectType", REALGetClassRef);
    CheckWrapper("GetEventInstance", REALGetEventInstance);
    CheckWrapper("RuntimeRaiseException", REALRaiseException);
    CheckWrapper("PluginCallFunctionWithExceptionHandler", REALCallFunctionWithExceptionHandler);
    CheckWrapper("REALLoadGlobalMethod", REALLoadFrameworkMethod);
    CheckWrapper("REALLoadObjectMethod", REALLoadObjectMethod);

    CheckWrapper("REALGetPropValueInteger", REALGetPropValueInteger);
    CheckWrapper("REALGetPropValueInt64", REALGetPropValueInt64);
    CheckWrapper("REALGetPropValueDouble", REALGetPropValueDouble);
    CheckWrapper("REALGetPropValueSingle", REALGetPropValueSingle);
    CheckWrapper("REALGetPropValueString", REALGetPropValueString);
    CheckWrapper("REALGetPropValueObject", REALGetPropValueObject);
    CheckWrapper("REALSetPropValueInteger", REALSetPropValueInteger);
    CheckWrapper("REALSetPropValueString", REALSetPropValueString);

    CheckWrapper("StringToVariant", REALNewVariantString);
    CheckWrapper("IntegerToVariant", REALNewVariantInteger);
    CheckWrapper("UInt32ToVariant", REALNewVariantUInt32);
    CheckWrapper("DoubleToVariant", REALNewVariantDouble);
    CheckWrapper("SingleToVariant", REALNewVariantSingle);
    CheckWrapper("BooleanToVariant", REALNewVariantBoolean);
    CheckWrapper("PluginNewVariantText", REALNewVariantText);

    CheckWrapperOf<void>("REALLockString", REALLockString);
    CheckWrapper("REALUnlockString", REALUnlockString);
    CheckWrapper("REALBuildString", originalREALBuildString);
    CheckWrapper("REALBuildStringWithEncoding", REALBuildStringWithEncoding);
    CheckWrapper("REALGetStringEncoding", REALGetStringEncoding);
    CheckWrapper("REALSetStringEncoding", REALSetStringEncoding);
    CheckWrapper("REALConvertString", REALConvertString);
    CheckWrapper("StringGetCString", REALGetStringContents);
    CheckWrapper("REALGetStringCFString", REALGetStringCFString);
    CheckWrapper("REALGetStringCFString", REALCopyStringCFString);
    CheckWrapper("PluginGetStringData", REALGetStringData);
    CheckWrapper("PluginDisposeStringData", REALDisposeStringData);
    CheckWrapperOf<void>("PluginLockText", REALLockText);
    CheckWrapper("PluginUnlockText", REALUnlockText);
    CheckWrapper("PluginCopyTextCFString", REALCopyTextCFString);

    CheckWrapper("RuntimeArrayCreateSingleDimBoundedArray", REALCreateArray);
    CheckWrapper("RuntimeUBound", REALGetArrayUBound);
    CheckWrapper("newMemoryBlock", REALNewMemoryBlockOriginal);
    CheckWrapper("memoryBlockGetPtr", REALMemoryBlockGetPtr);
    CheckWrapper("memoryBlockGetSize", REALMemoryBlockGetSize);
    CheckWrapper("REALFSRefFromFolderItem", REALFSRefFromFolderItem);
    CheckWrapper("REALFolderItemFromParentFSRef", REALFolderItemFromParentFSRef);
}

TEST(HostEntryPoints, ReadVariantsThroughTheirPropertiesWhereTheFunctionIsMissing)
{
    CheckVariantReader("VariantToString", GetVariantString, "REALGetPropValueString", "StringValue");
    CheckVariantReader("VariantToInt64", GetVariantInt64, "REALGetPropValueInt64", "LongValue");
    CheckVariantReader("VariantToDouble", GetVariantDouble, "REALGetPropValueDouble", "DoubleValue");
    CheckVariantReader("VariantToSingle", GetVariantSingle, "REALGetPropValueSingle", "SingleValue");
}

TEST(HostEntryPoints, LockingSaysWhetherTheHostCan)
{
    gResolver = Resolve;
    EXPECT_FALSE(REALLockObject(Sample<REALobject>()));
    EXPECT_FALSE(REALLockString(Sample<REALstring>()));
    EXPECT_FALSE(REALLockText(Sample<REALtext>()));
    gAnswers["REALLockObject"] = reinterpret_cast<void *>(&HostFunction<void, REALobject>::Call);
    gAnswers["REALLockString"] = reinterpret_cast<void *>(&HostFunction<void, REALstring>::Call);
    gAnswers["PluginLockText"] = reinterpret_cast<void *>(&HostFunction<void, REALtext>::Call);
    EXPECT_TRUE(REALLockObject(Sample<REALobject>()));
    EXPECT_TRUE(REALLockString(Sample<REALstring>()));
    EXPECT_TRUE(REALLockText(Sample<REALtext>()));
}
