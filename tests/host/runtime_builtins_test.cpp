// The host's own classes: Dictionary, Date, MemoryBlock, FolderItem.
#include <ctime>
#include <filesystem>
#include <fstream>

#include "tests/host/runtime_test.h"
#include "tests/support/wall_clock.h"

namespace qzlhost {

namespace {

/// A method of the instance, by its declaration; null where there is none.
template <typename F>
F *MethodOf(const Value &instance, const char *declaration)
{
    return reinterpret_cast<F *>(HostFunction<void *(Instance *, const char *)>("REALLoadObjectMethod")(
        instance.ObjectPointer(), declaration));
}

int64_t Integer(const Value &instance, const char *property)
{
    int64_t value = 0;
    EXPECT_TRUE(ReadProperty("REALGetPropValueInteger", instance, property, &value)) << property;
    return value;
}

Value NewByLibrary(const char *name)
{
    return Value::Adopt(HostFunction<Instance *(const char *)>("PluginNewInstance")(name));
}

} // namespace

using Dictionaries = RuntimeTest;

TEST_F(Dictionaries, KeepTheOrderOfTheirKeys)
{
    const Value dictionary = host.NewDictionary();
    host.DictionarySet(dictionary, "b", 1);
    host.DictionarySet(dictionary, "a", 2);
    host.DictionarySet(dictionary, "b", 3);
    EXPECT_EQ(host.DictionaryCount(dictionary), 2);
    EXPECT_EQ(host.DictionaryKey(dictionary, 0).AsString(), "b");
    EXPECT_EQ(host.DictionaryKey(dictionary, 1).AsString(), "a");
    EXPECT_EQ(host.DictionaryGet(dictionary, "b").AsInteger(), 3);
}

TEST_F(Dictionaries, CompareKeysByValue)
{
    const Value dictionary = host.NewDictionary();
    const Value object = host.NewDictionary();
    host.DictionarySet(dictionary, 1, "number");
    host.DictionarySet(dictionary, "1", "string");
    host.DictionarySet(dictionary, Value(), "nil");
    host.DictionarySet(dictionary, true, "boolean");
    host.DictionarySet(dictionary, object, "object");
    host.DictionarySet(dictionary, host.NewDate(2024, 1, 1, 0, 0, 0), "date");
    EXPECT_EQ(host.DictionaryCount(dictionary), 6);
    EXPECT_EQ(host.DictionaryGet(dictionary, 1.0).AsString(), "number");
    EXPECT_EQ(host.DictionaryGet(dictionary, Value::StringOfBytes("1", encoding::Latin1)).AsString(),
              "string");
    EXPECT_EQ(host.DictionaryGet(dictionary, Value()).AsString(), "nil");
    EXPECT_EQ(host.DictionaryGet(dictionary, object).AsString(), "object");
    EXPECT_EQ(host.DictionaryGet(dictionary, host.NewDate(2023, 12, 32, 0, 0, 0)).AsString(), "date");
    EXPECT_TRUE(host.DictionaryGet(dictionary, 1.5).IsNil());
    EXPECT_TRUE(host.DictionaryGet(dictionary, host.NewDictionary()).IsNil());
}

TEST_F(Dictionaries, AreFilledAndReadByTheirMethods)
{
    const Value dictionary = NewByLibrary("Dictionary");
    const auto set = MethodOf<void(Instance *, Instance *, Instance *)>(
        dictionary, "Value(key As Variant, Assigns _value As Variant)");
    const auto get =
        MethodOf<Instance *(Instance *, Instance *)>(dictionary, "Value(key As Variant) As Variant");
    const auto key =
        MethodOf<Instance *(Instance *, int64_t)>(dictionary, "Key(index As Integer) As Variant");
    ASSERT_TRUE(set && get && key);
    const Value a = Value("a").Boxed();
    const Value value = host.NewDictionary();
    set(dictionary.ObjectPointer(), a.ObjectPointer(), value.ObjectPointer());
    set(dictionary.ObjectPointer(), nullptr, nullptr);
    EXPECT_EQ(Integer(dictionary, "Count"), 2);
    EXPECT_EQ(host.References(value), 2);
    EXPECT_EQ(Value::Adopt(get(dictionary.ObjectPointer(), a.ObjectPointer())).ObjectPointer(),
              value.ObjectPointer());
    EXPECT_EQ(Value::Adopt(key(dictionary.ObjectPointer(), 0)).AsString(), "a");
    EXPECT_EQ(key(dictionary.ObjectPointer(), 1), nullptr);
    EXPECT_EQ(get(dictionary.ObjectPointer(), nullptr), nullptr);
}

TEST_F(Dictionaries, ServePrograms)
{
    const Value dictionary = host.New("Dictionary");
    host.Call(dictionary, "Value", {"a", 1});
    host.Call(dictionary, "Value", {"b", 2});
    host.Call(dictionary, "Value", {"c", 3});
    EXPECT_EQ(host.Get(dictionary, "Count").AsInteger(), 3);
    EXPECT_EQ(host.Call(dictionary, "Value", {"c"}).AsInteger(), 3);
    host.Call(dictionary, "Remove", {"a"});
    EXPECT_FALSE(host.Call(dictionary, "HasKey", {"a"}).AsBoolean());
    EXPECT_TRUE(host.Call(dictionary, "HasKey", {"c"}).AsBoolean());
    EXPECT_EQ(host.Call(dictionary, "Value", {"c"}).AsInteger(), 3);
    host.Call(dictionary, "Clear");
    EXPECT_EQ(host.Get(dictionary, "Count").AsInteger(), 0);
}

TEST_F(Dictionaries, AKeyOutsideRaises)
{
    const Value dictionary = host.NewDictionary();
    EXPECT_EQ(ExceptionClassOf([&] { host.Call(dictionary, "Key", {0}); }), "OutOfBoundsException");
}

using Dates = RuntimeTest;

TEST_F(Dates, AreConstructedByTheBareParameterList)
{
    const Value date = NewByLibrary("Date");
    const auto construct = MethodOf<void(Instance *, int64_t, int64_t, int64_t, int64_t, int64_t, int64_t)>(
        date, "Year as Integer, Month as Integer = 1, Day as Integer = 1, hour as Integer = 0, "
              "minute as Integer = 0, second as Integer = 0");
    ASSERT_TRUE(construct);
    construct(date.ObjectPointer(), 2024, 2, 29, 14, 5, 9);
    EXPECT_EQ(date.AsString(), "2024-02-29 14:05:09");
    EXPECT_EQ(Integer(date, "Year"), 2024);
    EXPECT_EQ(Integer(date, "Month"), 2);
    EXPECT_EQ(Integer(date, "Day"), 29);
    EXPECT_EQ(Integer(date, "Hour"), 14);
    EXPECT_EQ(Integer(date, "Minute"), 5);
    EXPECT_EQ(Integer(date, "Second"), 9);
}

TEST_F(Dates, FieldsOutOfTheirRangeAreNormalizedAsTheCLibraryDoes)
{
    const Fields cases[] = {
        {2024, 14, 1, 0, 0, 0},   {2023, 2, 29, 0, 0, 0},      {2024, 3, 0, 0, 0, 0},
        {2024, 1, 1, -1, 0, 0},   {1999, 12, 31, 23, 59, 60},  {2000, -11, -30, 25, 61, 3661},
        {1900, 2, 29, 0, 0, 0},   {2024, 1, 1000000, 0, 0, 0}, {1970, 1, 1, 0, 0, -1},
        {2100, 3, -400, 0, 0, 0}, {1601, 1, 1, 0, -100000, 7},
    };
    for (const Fields &fields : cases)
        EXPECT_EQ(host.NewDate(fields[0], fields[1], fields[2], fields[3], fields[4], fields[5]).AsString(),
                  TextOf(UniversalFields(UniversalInstant(fields))));
}

TEST_F(Dates, FieldsMayBeSetOneAfterTheOther)
{
    const Value date = host.NewDate(2024, 1, 31, 0, 0, 0);
    const auto set = HostFunction<bool(Instance *, const char *, int64_t)>("REALSetPropValueInteger");
    EXPECT_TRUE(set(date.ObjectPointer(), "Month", 2));
    EXPECT_TRUE(set(date.ObjectPointer(), "Day", 29));
    EXPECT_EQ(date.AsString(), "2024-02-29 00:00:00");
}

TEST_F(Dates, ANewDateIsNow)
{
    const std::time_t before = std::time(nullptr);
    const Value date = host.New("Date");
    const std::time_t made =
        LocalInstant({Integer(date, "Year"), Integer(date, "Month"), Integer(date, "Day"),
                      Integer(date, "Hour"), Integer(date, "Minute"), Integer(date, "Second")});
    EXPECT_GE(made, before);
    EXPECT_LE(made, std::time(nullptr));
}

TEST_F(Dates, ServePrograms)
{
    EXPECT_EQ(host.New("Date", {2024, 5}).AsString(), "2024-05-01 00:00:00");
}

using MemoryBlocks = RuntimeTest;

TEST_F(MemoryBlocks, HaveZeroedBytesAndASize)
{
    const Value block = Value::Adopt(HostFunction<Instance *(int32_t)>("newMemoryBlock")(4));
    EXPECT_EQ(host.MemoryBlockBytes(block), std::string(4, '\0'));
    EXPECT_EQ(Integer(block, "Size"), 4);
    EXPECT_EQ(HostFunction<int64_t(Instance *)>("memoryBlockGetSize")(block.ObjectPointer()), 4);
    const auto convert = MethodOf<void *(Instance *)>(block, "Operator_Convert() As Ptr");
    EXPECT_EQ(convert(block.ObjectPointer()),
              HostFunction<void *(Instance *)>("memoryBlockGetPtr")(block.ObjectPointer()));
    EXPECT_EQ(host.MemoryBlockBytes(host.NewMemoryBlock({"a\0b", 3})), std::string("a\0b", 3));
}

TEST_F(MemoryBlocks, TheConstructorMakesBlocksLargerThanMemory)
{
    const Value block = NewByLibrary("MemoryBlock");
    EXPECT_EQ(Integer(block, "Size"), 0);
    const auto construct = MethodOf<void(Instance *, int64_t)>(block, "Constructor(bytes as Integer)");
    const int64_t size = int64_t{200} << 30;
    construct(block.ObjectPointer(), size);
    EXPECT_EQ(Integer(block, "Size"), size);
    auto *const bytes =
        static_cast<char *>(HostFunction<void *(Instance *)>("memoryBlockGetPtr")(block.ObjectPointer()));
    bytes[size - 1] = 1;
    EXPECT_EQ(bytes[size - 1], 1);
    EXPECT_EQ(bytes[0], 0);
}

TEST_F(MemoryBlocks, AnImpossibleSizeRaises)
{
    for (const int64_t size : {int64_t{-1}, INT64_MAX})
        EXPECT_EQ(ExceptionClassOf([&] { host.New("MemoryBlock", {size}); }), "OutOfMemoryException") << size;
}

class FolderItems : public RuntimeTest {
protected:
    void SetUp() override
    {
        std::string path = (std::filesystem::temp_directory_path() / "folder_items_XXXXXX").string();
        ASSERT_NE(mkdtemp(path.data()), nullptr);
        folder = std::filesystem::canonical(path);
        std::ofstream(folder / "b.txt") << "b";
        std::ofstream(folder / "a.txt") << "a";
    }
    void TearDown() override
    {
        std::filesystem::remove_all(folder);
        RuntimeTest::TearDown();
    }

    struct Reference {
        unsigned char bytes[80];
    };
    struct Name {
        uint16_t length;
        uint16_t units[255];
    };
    using ToReference = bool(Instance *, Reference *, Name *);
    using FromParent = Instance *(const Reference *, const Name *);

    std::filesystem::path folder;
};

TEST_F(FolderItems, AnExistingItemHasAReference)
{
    Reference reference{};
    const Value item = host.NewFolderItem((folder / "a.txt").string());
    EXPECT_TRUE(
        HostFunction<ToReference>("REALFSRefFromFolderItem")(item.ObjectPointer(), &reference, nullptr));
    const Value missing = host.NewFolderItem((folder / "c.txt").string());
    EXPECT_FALSE(
        HostFunction<ToReference>("REALFSRefFromFolderItem")(missing.ObjectPointer(), &reference, nullptr));
}

TEST_F(FolderItems, AMissingItemHasItsParentsReferenceAndItsName)
{
    Reference parent{};
    Name name{};
    const Value missing = host.NewFolderItem((folder / "c.txt").string());
    ASSERT_TRUE(
        HostFunction<ToReference>("REALFSRefFromFolderItem")(missing.ObjectPointer(), &parent, &name));
    EXPECT_EQ(std::u16string(name.units, name.units + name.length), u"c.txt");
    const Value made =
        Value::Adopt(HostFunction<FromParent>("REALFolderItemFromParentFSRef")(&parent, &name));
    EXPECT_EQ(host.FolderItemPath(made), (folder / "c.txt").string());
}

TEST_F(FolderItems, AnEmptyReferenceIsOfNoItem)
{
    const Reference nothing{};
    const Name name{1, {'a'}};
    EXPECT_EQ(HostFunction<FromParent>("REALFolderItemFromParentFSRef")(&nothing, &name), nullptr);
}

TEST_F(FolderItems, AFolderReturnsItsItems)
{
    const Value item = host.NewFolderItem(folder.string());
    const auto trueItem =
        MethodOf<Instance *(Instance *, int64_t)>(item, "TrueItem(Index as integer) as Folderitem");
    ASSERT_TRUE(trueItem);
    EXPECT_EQ(host.FolderItemPath(Value::Adopt(trueItem(item.ObjectPointer(), 2))),
              (folder / "b.txt").string());
    EXPECT_THROW(host.Call(item, "TrueItem", {3}), ProgramException);
    EXPECT_EQ(MethodOf<void()>(host.NewDictionary(), "TrueItem(Index as integer) as Folderitem"), nullptr);
}

TEST_F(FolderItems, AreMadeFromPaths)
{
    void *const function = HostFunction<void *(void *, const char *)>("REALLoadGlobalMethod")(
        nullptr, "GetTrueFolderItem(path As String, pathMode As Integer) As FolderItem");
    ASSERT_NE(function, nullptr);
    const Value path = Value("/");
    const Value item =
        Value::Adopt(reinterpret_cast<Instance *(*)(String *, int64_t)>(function)(path.StringPointer(), 3));
    EXPECT_EQ(host.FolderItemPath(item), "/");
    EXPECT_TRUE(host.Get(item, "Exists").AsBoolean());
    EXPECT_EQ(host.Get(host.NewFolderItem((folder / "a.txt").string()), "Name").AsString(), "a.txt");
}

} // namespace qzlhost
