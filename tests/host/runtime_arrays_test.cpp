// Arrays of every element type, through the functions that a library gets.
#include "tests/host/runtime_test.h"

namespace qzlhost {

namespace {

using Create = Instance *(int64_t, int64_t);
using GetProc = void *(Instance *);

template <typename T>
T Read(const char *getProc, const Value &array, int64_t index)
{
    void *const reader = HostFunction<GetProc>(getProc)(array.ObjectPointer());
    return reinterpret_cast<T (*)(Instance *, int64_t)>(reader)(array.ObjectPointer(), index);
}

int64_t UBound(const Value &array)
{
    return HostFunction<int64_t(Instance *)>("RuntimeUBound")(array.ObjectPointer());
}

} // namespace

using Arrays = RuntimeTest;

TEST_F(Arrays, NumbersAreReadByTheirReaders)
{
    EXPECT_EQ(Read<int64_t>("PluginIntegerArrayGetProc", host.NewArray(code::Int32, {1, -2}), 1), -2);
    EXPECT_EQ(Read<int64_t>("PluginInt64ArrayGetProc", host.NewArray(code::Int64, {int64_t{1} << 40}), 0),
              int64_t{1} << 40);
    EXPECT_EQ(Read<float>("PluginSingleArrayGetProc", host.NewArray(code::Single, {0.5f}), 0), 0.5f);
    EXPECT_EQ(Read<double>("PluginDoubleArrayGetProc", host.NewArray(code::Double, {0.1}), 0), 0.1);
    EXPECT_TRUE(Read<bool>("PluginBooleanArrayGetProc", host.NewArray(code::Boolean, {false, true}), 1));
}

TEST_F(Arrays, ReferencesAreReadWithAReference)
{
    const Value string = Value("text");
    const Value strings = host.NewArray(code::String, {string, Value::EmptyString()});
    EXPECT_EQ(host.References(string), 2);
    const Value read = Value::Adopt(Read<String *>("PluginStringArrayGetProc", strings, 0));
    EXPECT_EQ(host.References(string), 3);
    EXPECT_EQ(Read<String *>("PluginStringArrayGetProc", strings, 1), nullptr);

    const Value texts = host.NewArray(code::Text, {Value::TextOf("a"), "b"});
    EXPECT_EQ(Value::Adopt(Read<Text *>("PluginTextArrayGetProc", texts, 1)).AsString(), "b");

    const Value date = host.NewDate(2024, 1, 1, 0, 0, 0);
    const Value dates = host.NewArray(code::Date, {date, Value()});
    EXPECT_EQ(Value::Adopt(Read<Instance *>("PluginObjectArrayGetProc", dates, 0)).ObjectPointer(),
              date.ObjectPointer());
    EXPECT_EQ(Read<Instance *>("PluginObjectArrayGetProc", dates, 1), nullptr);

    const Value objects = host.NewArray(code::Object, {1, "two", date});
    EXPECT_EQ(Value::Adopt(Read<Instance *>("PluginObjectArrayGetProc", objects, 1)).AsString(), "two");
}

TEST_F(Arrays, UpperBoundIsOneLessThanTheCount)
{
    const Value array = host.NewArray(code::Int64, {1, 2, 3});
    EXPECT_EQ(UBound(array), 2);
    host.ArrayResize(array, 1);
    EXPECT_EQ(UBound(array), 0);
    host.ArrayResize(array, 0);
    EXPECT_EQ(UBound(array), -1);
}

TEST_F(Arrays, ElementType4MakesAnObjectArray)
{
    const Value array = Value::Adopt(HostFunction<Create>("RuntimeArrayCreateSingleDimBoundedArray")(4, -1));
    EXPECT_EQ(array.Code(), code::Array + code::Object);
    EXPECT_EQ(UBound(array), -1);
    const Value filled = Value::Adopt(HostFunction<Create>("RuntimeArrayCreateSingleDimBoundedArray")(4, 1));
    EXPECT_EQ(UBound(filled), 1);
    EXPECT_TRUE(host.ArrayElement(filled, 0).IsNil());
}

TEST_F(Arrays, InsertingTakesAReferenceOfItsOwn)
{
    const Value array = Value::Adopt(HostFunction<Create>("RuntimeArrayCreateSingleDimBoundedArray")(4, -1));
    void *const procedure = HostFunction<GetProc>("PluginObjectArrayInsertProc")(array.ObjectPointer());
    const auto insert = reinterpret_cast<void (*)(Instance *, int64_t, Instance *)>(procedure);
    const Value object = host.NewDictionary();
    insert(array.ObjectPointer(), 0, object.ObjectPointer());
    insert(array.ObjectPointer(), 1, nullptr);
    insert(array.ObjectPointer(), 0, Value("first").Boxed().ObjectPointer());
    EXPECT_EQ(host.References(object), 2);
    EXPECT_EQ(host.ArrayCount(array), 3);
    EXPECT_EQ(host.ArrayElement(array, 0).AsString(), "first");
    EXPECT_EQ(host.ArrayElement(array, 1).ObjectPointer(), object.ObjectPointer());
    EXPECT_TRUE(host.ArrayElement(array, 2).IsNil());
}

TEST_F(Arrays, ProgramsReadAndWriteElements)
{
    const Value array = host.NewArray(code::Currency, {1.5});
    EXPECT_EQ(host.ArrayElement(array, 0).Code(), code::Currency);
    host.ArraySet(array, 0, 2.5);
    EXPECT_EQ(host.ArrayElement(array, 0).AsDouble(), 2.5);
    EXPECT_THROW(host.ArrayElement(array, 1), UsageError);
    EXPECT_THROW(host.ArraySet(array, -1, 0), UsageError);
    EXPECT_THROW(host.NewArray(1000), UsageError);
}

TEST_F(Arrays, AnArrayIsAnInstanceThatIsUnlocked)
{
    Instance *const array = HostFunction<Create>("RuntimeArrayCreateSingleDimBoundedArray")(4, 3);
    HostFunction<void(Instance *)>("REALLockObject")(array);
    HostFunction<void(Instance *)>("REALUnlockObject")(array);
    HostFunction<void(Instance *)>("REALUnlockObject")(array);
}

TEST(ArrayMistakes, AreRecorded)
{
    Host host;
    const Value numbers = host.NewArray(code::Int64, {1});
    EXPECT_EQ(Read<int64_t>("PluginInt64ArrayGetProc", numbers, 1), 0);
    EXPECT_EQ(Read<int64_t>("PluginInt64ArrayGetProc", numbers, -1), 0);
    EXPECT_EQ(HostFunction<GetProc>("PluginStringArrayGetProc")(numbers.ObjectPointer()), nullptr);
    EXPECT_EQ(HostFunction<Create>("RuntimeArrayCreateSingleDimBoundedArray")(99, 0), nullptr);
    EXPECT_EQ(HostFunction<GetProc>("PluginStringArrayGetProc")(host.NewDictionary().ObjectPointer()),
              nullptr);
    const auto mistakes = host.Mistakes();
    ASSERT_EQ(mistakes.size(), 5u);
    EXPECT_EQ(mistakes[0], "read an int64: the index 1 is outside the array");
    EXPECT_EQ(mistakes[1], "read an int64: the index -1 is outside the array");
    EXPECT_EQ(mistakes[2], "PluginStringArrayGetProc: an array of code 4099 has other elements");
    EXPECT_THAT(mistakes[3], testing::HasSubstr("element type 99"));
    EXPECT_THAT(mistakes[4], testing::HasSubstr("Dictionary"));
}

} // namespace qzlhost
