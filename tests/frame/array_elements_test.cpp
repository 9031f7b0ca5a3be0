// Elements of host arrays are read and inserted through the procedure that the host returns for the array.
#include <gtest/gtest.h>

#include "frame/host_entry_points.h"
#include "frame/loaded_host.h"
#include "tests/frame/sample_host.h"

namespace {

/// An element reader that records its arguments, and host functions that return it, or none, for an array.
template <typename Element>
struct ElementReader {
    /// The array that the host function was called for.
    static inline REALarray readerOf;
    static inline REALarray array;
    static inline int64_t index;

    static Element Read(REALarray givenArray, int64_t givenIndex)
    {
        array = givenArray;
        index = givenIndex;
        return Sample<Element>();
    }
    static void *ReaderOf(REALarray given)
    {
        readerOf = given;
        return reinterpret_cast<void *>(&Read);
    }
    static void *NoReader(REALarray given)
    {
        readerOf = given;
        return nullptr;
    }
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
    EXPECT_EQ(Reader::readerOf, array);
    EXPECT_EQ(Reader::array, array);
    EXPECT_EQ(Reader::index, 3);
    constexpr int64_t kFar = int64_t{1} << 40;
    EXPECT_EQ(wrapper(array, kFar), Sample<Element>());
    EXPECT_EQ(Reader::index, kFar);
    EXPECT_EQ(wrapper(array, -1), Sample<Element>());
    EXPECT_EQ(Reader::index, -1);
    EXPECT_EQ(gAsks[name], 2) << "kept once found";
}

/// Without a reader for the array its elements are empty.
template <typename Element>
void CheckElementWithoutReader(const std::string &name, Element (*wrapper)(REALarray, int64_t))
{
    SCOPED_TRACE(name);
    gResolver = Resolve;
    gAsks.clear();
    gAnswers[name] = reinterpret_cast<void *>(&ElementReader<Element>::NoReader);
    ElementReader<Element>::readerOf = nullptr;
    EXPECT_EQ(wrapper(Sample<REALarray>(), 3), Element());
    EXPECT_EQ(ElementReader<Element>::readerOf, Sample<REALarray>()) << "asked for a reader";
}

/// The array for which the host was asked for a procedure.
REALarray gInsertedInto;

} // namespace

TEST(ArrayElements, AreReadThroughTheReaderOfTheArray)
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

TEST(ArrayElements, WithoutAReaderAreEmpty)
{
    CheckElementWithoutReader("PluginIntegerArrayGetProc", REALGetArrayValueInteger);
    CheckElementWithoutReader("PluginInt64ArrayGetProc", REALGetArrayValueInt64);
    CheckElementWithoutReader("PluginBooleanArrayGetProc", REALGetArrayValueBoolean);
    CheckElementWithoutReader("PluginSingleArrayGetProc", REALGetArrayValueSingle);
    CheckElementWithoutReader("PluginDoubleArrayGetProc", REALGetArrayValueDouble);
    CheckElementWithoutReader("PluginStringArrayGetProc", REALGetArrayValueString);
    CheckElementWithoutReader("PluginTextArrayGetProc", REALGetArrayValueText);
    CheckElementWithoutReader("PluginObjectArrayGetProc", REALGetArrayValueObject);
}

TEST(ArrayElements, ThatAreBooleanAreZeroOrOne)
{
    gResolver = Resolve;
    gAnswers["PluginBooleanArrayGetProc"] = reinterpret_cast<void *>(&ElementReader<uint8_t>::ReaderOf);
    ASSERT_GT(Sample<uint8_t>(), 1);
    const bool element = REALGetArrayValueBoolean(Sample<REALarray>(), 0);
    EXPECT_EQ(static_cast<int>(element), 1);
}

TEST(ArrayElements, AreInsertedThroughTheProcedureOfTheArray)
{
    using Insert = HostFunction<void, REALarray, int64_t, REALobject>;
    using ProcOf = void *(*)(REALarray);
    static constexpr ProcOf kProcOf = [](REALarray given) {
        gInsertedInto = given;
        return reinterpret_cast<void *>(&Insert::Call);
    };
    const std::string name = "PluginObjectArrayInsertProc";
    gResolver = Resolve;
    const auto array = Sample<REALarray>();
    const auto value = Sample<REALobject>();
    constexpr int64_t kFar = int64_t{1} << 40;
    EXPECT_FALSE(REALInsertArrayValueObject(array, kFar, value));
    EXPECT_EQ(gAsks[name], 1);

    gAnswers[name] = reinterpret_cast<void *>(kProcOf);
    EXPECT_TRUE(REALInsertArrayValueObject(array, kFar, value));
    EXPECT_EQ(gInsertedInto, array);
    EXPECT_EQ(Insert::arguments, std::make_tuple(array, kFar, value));
    EXPECT_TRUE(REALInsertArrayValueObject(array, 0, nullptr));
    EXPECT_EQ(Insert::arguments, std::make_tuple(array, int64_t{0}, REALobject{nullptr}));
    EXPECT_EQ(Insert::calls, 2);
    EXPECT_EQ(gAsks[name], 2) << "kept once found";
}

TEST(ArrayElements, AreNotInsertedWithoutAProcedure)
{
    using ProcOf = void *(*)(REALarray);
    static constexpr ProcOf kNone = [](REALarray given) -> void * {
        gInsertedInto = given;
        return nullptr;
    };
    gResolver = Resolve;
    gAnswers["PluginObjectArrayInsertProc"] = reinterpret_cast<void *>(kNone);
    EXPECT_FALSE(REALInsertArrayValueObject(Sample<REALarray>(), 0, Sample<REALobject>()));
    EXPECT_EQ(gInsertedInto, Sample<REALarray>()) << "asked for a procedure";
}
