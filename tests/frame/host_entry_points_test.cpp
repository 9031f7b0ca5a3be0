// Each wrapper of a host function: looked up by its exact name, kept once found, harmless while it is
// missing.
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <tuple>

#include "frame/host_entry_points.h"
#include "frame/plugin.h"

namespace {

/// What the resolver answers, and how often it was asked.
std::map<std::string, void *> gAnswers;
std::map<std::string, int> gAsks;

void *Resolve(const char *name)
{
    ++gAsks[name];
    const auto found = gAnswers.find(name);
    return found == gAnswers.end() ? nullptr : found->second;
}

/// A value of a type that is not the type's empty value.
template <typename T>
T Sample()
{
    if constexpr (std::is_same_v<T, bool>)
        return true;
    else if constexpr (std::is_pointer_v<T>)
        return reinterpret_cast<T>(uintptr_t{0x1230});
    else
        return static_cast<T>(-7);
}

/// A host function that keeps its arguments and answers the sample of its result.
template <typename Result, typename... Parameters>
struct HostFunction {
    static inline std::tuple<std::decay_t<Parameters>...> arguments;
    static inline int calls = 0;

    static Result Call(Parameters... given)
    {
        ++calls;
        arguments = std::make_tuple(given...);
        if constexpr (!std::is_void_v<Result>)
            return Sample<Result>();
    }
};

/// Whether the wrapper's answer is empty. A procedure has none.
template <typename Wrapper, typename... Arguments>
bool IsEmpty(Wrapper wrapper, Arguments... arguments)
{
    using Result = decltype(wrapper(arguments...));
    if constexpr (std::is_void_v<Result>) {
        wrapper(arguments...);
        return true;
    } else {
        return wrapper(arguments...) == Result();
    }
}

/// `HostResult` is the host function's own result where the wrapper answers something else.
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

    EXPECT_TRUE(IsEmpty(wrapper, Sample<Parameters>()...));
    EXPECT_TRUE(IsEmpty(wrapper, Sample<Parameters>()...));
    EXPECT_EQ(gAsks[name], 2) << "asked again as long as it is missing";
    EXPECT_EQ(gAsks.size(), 1u) << "asked for another name";

    gAnswers[name] = reinterpret_cast<void *>(&Function::Call);
    EXPECT_EQ(IsEmpty(wrapper, Sample<Parameters>()...), std::is_void_v<Result>);
    EXPECT_EQ(gAsks[name], 3);
    EXPECT_EQ(Function::calls, 1);
    EXPECT_EQ(Function::arguments, std::make_tuple(Sample<Parameters>()...));

    gAnswers.clear();
    IsEmpty(wrapper, Sample<Parameters>()...);
    EXPECT_EQ(gAsks[name], 3) << "kept once found";
    EXPECT_EQ(Function::calls, 2);
}

template <typename Result, typename... Parameters>
void CheckWrapper(const std::string &name, Result (*wrapper)(Parameters...))
{
    CheckWrapperOf<Result>(name, wrapper);
}

/// The property of a variant, as a host function gives it that reads properties by name.
template <typename Value>
struct PropertyFunction {
    static inline std::string name;

    static bool Call(REALobject, const char *given, Value *value)
    {
        name = given;
        *value = Sample<Value>();
        return true;
    }
};

/// A reader of variants: through its own host function or else through the variant's property.
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
    EXPECT_EQ(gAsks[name], 2) << "asked again as long as it is missing";

    PropertyFunction<Value>::name.clear();
    gAnswers[name] = reinterpret_cast<void *>(&HostFunction<Value, REALobject>::Call);
    EXPECT_EQ(wrapper(variant), Sample<Value>());
    EXPECT_EQ(wrapper(variant), Sample<Value>());
    EXPECT_EQ(PropertyFunction<Value>::name, "") << "the property counts only without the function";
    EXPECT_EQ(gAsks[name], 3) << "kept once found";
}

/// An element reader that keeps its arguments, behind a host function that gives it for an array.
template <typename Element>
struct ElementReader {
    static inline REALarray array;
    static inline int64_t index;

    static Element Read(REALarray givenArray, int64_t givenIndex)
    {
        array = givenArray;
        index = givenIndex;
        return Sample<Element>();
    }
    static void *ReaderOf(REALarray) { return reinterpret_cast<void *>(&Read); }
    static void *NoReader(REALarray) { return nullptr; }
};

template <typename Element>
void CheckElementReader(const std::string &name, Element (*wrapper)(REALarray, int64_t))
{
    SCOPED_TRACE(name);
    using Reader = ElementReader<Element>;
    gResolver = Resolve;
    gAnswers.clear();
    gAsks.clear();
    const auto array = Sample<REALarray>();

    EXPECT_EQ(wrapper(array, 3), Element());
    EXPECT_EQ(gAsks[name], 1);
    EXPECT_EQ(gAsks.size(), 1u);

    gAnswers[name] = reinterpret_cast<void *>(&Reader::ReaderOf);
    EXPECT_EQ(wrapper(array, 3), Sample<Element>());
    EXPECT_EQ(Reader::array, array);
    EXPECT_EQ(Reader::index, 3);
    EXPECT_EQ(wrapper(array, -1), Sample<Element>());
    EXPECT_EQ(Reader::index, -1);
    EXPECT_EQ(gAsks[name], 2);
}

REALobject gInserted;

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

TEST(HostEntryPoints, ReadElementsThroughTheReaderOfTheArray)
{
    CheckElementReader("PluginIntegerArrayGetProc", REALGetArrayValueInteger);
    CheckElementReader("PluginInt64ArrayGetProc", REALGetArrayValueInt64);
    CheckElementReader("PluginBooleanArrayGetProc", REALGetArrayValueBoolean);
    CheckElementReader("PluginSingleArrayGetProc", REALGetArrayValueSingle);
    CheckElementReader("PluginDoubleArrayGetProc", REALGetArrayValueDouble);
    CheckElementReader("PluginStringArrayGetProc", REALGetArrayValueString);
    CheckElementReader("PluginTextArrayGetProc", REALGetArrayValueText);
    CheckElementReader("PluginObjectArrayGetProc", REALGetArrayValueObject);
}

TEST(HostEntryPoints, ArrayWithoutAReaderReadsAsZero)
{
    gResolver = Resolve;
    gAnswers["PluginDoubleArrayGetProc"] = reinterpret_cast<void *>(&ElementReader<double>::NoReader);
    EXPECT_EQ(REALGetArrayValueDouble(Sample<REALarray>(), 0), 0.0);
}

TEST(HostEntryPoints, BooleanElementsAreZeroOrOne)
{
    gResolver = Resolve;
    gAnswers["PluginBooleanArrayGetProc"] = reinterpret_cast<void *>(&ElementReader<uint8_t>::ReaderOf);
    ASSERT_GT(Sample<uint8_t>(), 1);
    const bool element = REALGetArrayValueBoolean(Sample<REALarray>(), 0);
    EXPECT_EQ(static_cast<int>(element), 1);
}

TEST(HostEntryPoints, InsertAnElementThroughTheProcedureOfTheArray)
{
    gResolver = Resolve;
    const auto array = Sample<REALarray>();
    const auto value = Sample<REALobject>();
    EXPECT_FALSE(REALInsertArrayValueObject(array, 0, value));

    using InsertProc = void (*)(REALarray, int64_t, REALobject);
    static constexpr InsertProc kInsert = [](REALarray, int64_t, REALobject inserted) {
        gInserted = inserted;
    };
    using ProcOf = void *(*)(REALarray);
    static constexpr ProcOf kProcOf = [](REALarray) { return reinterpret_cast<void *>(kInsert); };
    gAnswers["PluginObjectArrayInsertProc"] = reinterpret_cast<void *>(kProcOf);
    EXPECT_TRUE(REALInsertArrayValueObject(array, 0, value));
    EXPECT_EQ(gInserted, value);
}

TEST(HostEntryPoints, ArrayWithoutAnInsertProcedureTakesNothing)
{
    gResolver = Resolve;
    using ProcOf = void *(*)(REALarray);
    static constexpr ProcOf kNone = [](REALarray) -> void * { return nullptr; };
    gAnswers["PluginObjectArrayInsertProc"] = reinterpret_cast<void *>(kNone);
    EXPECT_FALSE(REALInsertArrayValueObject(Sample<REALarray>(), 0, Sample<REALobject>()));
}

TEST(HostEntryPoints, LockingSaysWhetherTheHostCan)
{
    gResolver = Resolve;
    EXPECT_FALSE(REALLockObject(Sample<REALobject>()));
    gAnswers["REALLockObject"] = reinterpret_cast<void *>(&HostFunction<void, REALobject>::Call);
    EXPECT_TRUE(REALLockObject(Sample<REALobject>()));
}
