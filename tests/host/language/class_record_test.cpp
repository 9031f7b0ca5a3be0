// Class records made byte by byte: what is read, and which faults are reported.
#include "host/language/class_record.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace qzlhost {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr size_t kClassSlots = 30;
constexpr size_t kPropertySlots = 12;
constexpr size_t kMethodSlots = 6;
constexpr size_t kEventSlots = 4;
constexpr size_t kConstantSlots = 5;

/// Memory that begins on a 16-byte boundary, written in slots of 8 bytes.
class Bytes {
public:
    explicit Bytes(size_t slots) : memory_(new Block[slots / 2 + 2]()) {}

    char *Address() { return reinterpret_cast<char *>(memory_.get()); }
    void Set(size_t slot, uint64_t number) { std::memcpy(Address() + slot * 8, &number, 8); }
    void Set(size_t slot, const void *pointer) { std::memcpy(Address() + slot * 8, &pointer, 8); }

private:
    struct alignas(16) Block {
        char bytes[16];
    };
    std::unique_ptr<Block[]> memory_;
};

int64_t Getter(void *, int64_t)
{
    return 0;
}

void *const kFunction = reinterpret_cast<void *>(Getter);

/// A class with two members of each sort, without a fault.
struct Sample {
    Bytes record{kClassSlots};
    Bytes properties{2 * kPropertySlots};
    Bytes methods{2 * kMethodSlots};
    Bytes events{2 * kEventSlots};
    Bytes constants{2 * kConstantSlots};
    Bytes sharedMethods{2 * kMethodSlots};

    Sample()
    {
        record.Set(0, 13);
        record.Set(1, "SampleQZL");
        record.Set(2, "BaseQZL");
        record.Set(3, 16);
        record.Set(5, kFunction);
        record.Set(6, kFunction);
        SetTable(7, properties.Address());
        SetTable(9, methods.Address());
        SetTable(11, events.Address());
        SetTable(18, constants.Address());
        record.Set(20, 4);
        SetTable(23, sharedMethods.Address());

        SetProperty(0, "Handle", "Integer", kFieldAccess, kFieldAccess);
        SetProperty(1, "Tags", "String()", kFunction, nullptr);
        properties.Set(kPropertySlots + 6, static_cast<uint64_t>(-3));
        SetMethod(methods, 0, "Run(times as integer = 1)", nullptr);
        SetMethod(methods, 1, "suspended as boolean", kFunction);
        events.Set(0, "Happened(what as string)");
        events.Set(kEventSlots, "Done");
        constants.Set(0, "One = 1");
        constants.Set(kConstantSlots, "Two = 2");
        SetMethod(sharedMethods, 0, "first as SampleQZL", nullptr);
        SetMethod(sharedMethods, 1, "find(name as string) as SampleQZL", nullptr);
    }

    void SetTable(size_t slot, const void *table)
    {
        record.Set(slot, table);
        record.Set(slot + 1, 2);
    }

    void SetProperty(size_t index, const char *name, const char *type, const void *getter, const void *setter)
    {
        const size_t first = index * kPropertySlots;
        properties.Set(first + 1, name);
        properties.Set(first + 2, type);
        properties.Set(first + 3, 6);
        properties.Set(first + 4, getter);
        properties.Set(first + 5, setter);
    }

    static void SetMethod(Bytes &table, size_t index, const char *text, const void *setter)
    {
        const size_t first = index * kMethodSlots;
        table.Set(first, kFunction);
        table.Set(first + 1, setter);
        table.Set(first + 2, text);
        table.Set(first + 3, 4);
    }

    ClassRecord Read() { return ReadClassRecord(record.Address()); }
};

TEST(ClassRecord, IsReadWhole)
{
    Sample sample;

    const ClassRecord record = sample.Read();

    EXPECT_THAT(record.faults, IsEmpty());
    EXPECT_EQ(record.version, 13u);
    EXPECT_EQ(record.name, "SampleQZL");
    EXPECT_EQ(record.superName, "BaseQZL");
    EXPECT_EQ(record.dataSize, 16u);
    EXPECT_EQ(record.constructor, kFunction);
    EXPECT_EQ(record.destructor, kFunction);
    EXPECT_EQ(record.flags, 4u);
}

TEST(ClassRecord, PropertiesAreRead)
{
    Sample sample;

    const std::vector<PropertyRecord> properties = sample.Read().properties;

    ASSERT_EQ(properties.size(), 2u);
    EXPECT_EQ(properties[0].name, "Handle");
    EXPECT_EQ(properties[0].type.native, NativeType::Int64);
    EXPECT_EQ(properties[0].flags, 6u);
    EXPECT_EQ(properties[0].getter, kFieldAccess);
    EXPECT_EQ(properties[0].setter, kFieldAccess);
    EXPECT_EQ(properties[0].parameter, 0);
    EXPECT_EQ(properties[1].name, "Tags");
    EXPECT_EQ(properties[1].type.kind, TypeKind::Array);
    EXPECT_EQ(properties[1].getter, kFunction);
    EXPECT_EQ(properties[1].setter, nullptr);
    EXPECT_EQ(properties[1].parameter, -3);
}

TEST(ClassRecord, MethodsAndSharedMethodsAreRead)
{
    Sample sample;

    const ClassRecord record = sample.Read();

    ASSERT_EQ(record.methods.size(), 2u);
    EXPECT_EQ(record.methods[0].text, "Run(times as integer = 1)");
    EXPECT_EQ(record.methods[0].declaration.ToString(), "Run(times As Integer = 1)");
    EXPECT_EQ(record.methods[0].function, kFunction);
    EXPECT_EQ(record.methods[0].setter, nullptr);
    EXPECT_EQ(record.methods[0].flags, 4u);
    EXPECT_TRUE(record.methods[1].declaration.computedProperty);
    EXPECT_EQ(record.methods[1].setter, kFunction);
    ASSERT_EQ(record.sharedMethods.size(), 2u);
    EXPECT_EQ(record.sharedMethods[0].text, "first as SampleQZL");
    EXPECT_EQ(record.sharedMethods[1].declaration.result.name, "SampleQZL");
}

TEST(ClassRecord, EventsAndConstantsAreRead)
{
    Sample sample;

    const ClassRecord record = sample.Read();

    ASSERT_EQ(record.events.size(), 2u);
    EXPECT_EQ(record.events[0].text, "Happened(what as string)");
    EXPECT_EQ(record.events[1].declaration.name, "Done");
    ASSERT_EQ(record.constants.size(), 2u);
    EXPECT_EQ(record.constants[0].text, "One = 1");
    EXPECT_EQ(record.constants[1].declaration.name, "Two");
    EXPECT_EQ(record.constants[1].declaration.value.integer, 2);
}

TEST(ClassRecord, TheKeySlotOfAnEventIsInTheLibrarysRecord)
{
    Sample sample;

    *sample.Read().events[1].keySlot = 0x1234;

    uint64_t slot = 0;
    std::memcpy(&slot, sample.events.Address() + (kEventSlots + 1) * 8, 8);
    EXPECT_EQ(slot, 0x1234u);
}

TEST(ClassRecord, OfAVersionANameAndZerosIsEmptyAndSound)
{
    Bytes bytes(kClassSlots);
    bytes.Set(0, 0xFFFFFFFF00000009);
    bytes.Set(1, "PlainQZL");

    const ClassRecord record = ReadClassRecord(bytes.Address());

    EXPECT_THAT(record.faults, IsEmpty());
    EXPECT_EQ(record.version, 9u) << "the low half of the slot";
    EXPECT_EQ(record.superName, "");
    EXPECT_EQ(record.constructor, nullptr);
    EXPECT_EQ(record.properties.size() + record.methods.size() + record.events.size() +
                  record.constants.size() + record.sharedMethods.size(),
              0u);
}

TEST(ClassRecord, LargeNumbersAreReadWhole)
{
    Sample sample;
    sample.record.Set(3, UINT64_MAX);
    sample.record.Set(20, uint64_t{1} << 63);
    sample.methods.Set(3, UINT64_MAX);

    const ClassRecord record = sample.Read();

    EXPECT_EQ(record.dataSize, UINT64_MAX);
    EXPECT_EQ(record.flags, uint64_t{1} << 63);
    EXPECT_EQ(record.methods[0].flags, UINT64_MAX);
    EXPECT_THAT(record.faults, IsEmpty()) << "flags and sizes are not judged";
}

TEST(ClassRecord, MayHaveTenThousandMembersButNotOneMore)
{
    Bytes constants(10001 * kConstantSlots);
    for (size_t i = 0; i < 10001; ++i)
        constants.Set(i * kConstantSlots, "X = 1");
    Bytes bytes(kClassSlots);
    bytes.Set(1, "ManyQZL");
    bytes.Set(18, constants.Address());

    bytes.Set(19, 10000);
    const ClassRecord most = ReadClassRecord(bytes.Address());
    bytes.Set(19, 10001);
    const ClassRecord tooMany = ReadClassRecord(bytes.Address());

    EXPECT_EQ(most.constants.size(), 10000u);
    EXPECT_THAT(most.faults, IsEmpty());
    EXPECT_EQ(tooMany.constants.size(), 0u);
    EXPECT_THAT(tooMany.faults, ElementsAre("ManyQZL: constants slot 19: a count of 10001 members"));
}

TEST(ClassRecord, AtANullAddressIsEmptyAndReported)
{
    const ClassRecord record = ReadClassRecord(nullptr);

    EXPECT_EQ(record.name, "");
    EXPECT_THAT(record.faults, ElementsAre("(no name): record: the address is null"));
}

TEST(ClassRecord, OffTheBoundaryIsReadAndReported)
{
    Sample sample;
    std::vector<char> copy(kClassSlots * 8 + 32);
    char *const odd = copy.data() + (16 - reinterpret_cast<uintptr_t>(copy.data()) % 16) + 3;
    std::memcpy(odd, sample.record.Address(), kClassSlots * 8);

    const ClassRecord record = ReadClassRecord(odd);

    EXPECT_EQ(record.name, "SampleQZL");
    EXPECT_EQ(record.methods.size(), 2u);
    ASSERT_EQ(record.faults.size(), 1u);
    EXPECT_THAT(record.faults[0],
                testing::MatchesRegex("SampleQZL: record: starts at 0x[0-9A-F]+, off the 16-byte boundary"));
}

TEST(ClassRecord, ATableOffTheBoundaryIsReadAndReported)
{
    Sample sample;
    Bytes moved(kMethodSlots * 2 + 1);
    std::memcpy(moved.Address() + 8, sample.methods.Address(), kMethodSlots * 2 * 8);
    sample.record.Set(9, moved.Address() + 8);

    const ClassRecord record = sample.Read();

    ASSERT_EQ(record.methods.size(), 2u);
    EXPECT_EQ(record.methods[1].text, "suspended as boolean");
    ASSERT_EQ(record.faults.size(), 1u);
    EXPECT_THAT(
        record.faults[0],
        testing::MatchesRegex("SampleQZL: methods: starts at 0x[0-9A-F]+8, off the 16-byte boundary"));
}

// One fault each

struct Fault {
    const char *name;
    void (*make)(Sample &);
    std::vector<std::string> faults;
};

void PrintTo(const Fault &fault, std::ostream *stream)
{
    *stream << fault.name;
}

class FaultyClassRecord : public testing::TestWithParam<Fault> {};

TEST_P(FaultyClassRecord, ReportsExactlyItsFault)
{
    Sample sample;
    GetParam().make(sample);

    EXPECT_EQ(sample.Read().faults, GetParam().faults);
}

const char *const kNoText = nullptr;

const Fault kFaults[] = {
    {"NoName",
     [](Sample &s) { s.record.Set(1, kNoText); },
     {"(no name): record slot 1: the text is missing"}},
    {"EmptyName", [](Sample &s) { s.record.Set(1, ""); }, {"(no name): record slot 1: the text is missing"}},
    {"NoPropertyName",
     [](Sample &s) { s.properties.Set(kPropertySlots + 1, kNoText); },
     {"SampleQZL: properties[1] slot 1: the text is missing"}},
    {"NoPropertyType",
     [](Sample &s) { s.properties.Set(2, kNoText); },
     {"SampleQZL: properties[0] slot 2: the text is missing"}},
    {"WrongPropertyType",
     [](Sample &s) { s.properties.Set(2, "as Integer"); },
     {"SampleQZL: properties[0] slot 2: \"as Integer\" is no declaration: expected a type at position 1, "
      "found \"as\""}},
    {"NoGetter",
     [](Sample &s) { s.properties.Set(kPropertySlots + 4, kNoText); },
     {"SampleQZL: properties[1] slot 4: the property has no getter"}},
    {"PropertyFirstSlot",
     [](Sample &s) { s.properties.Set(0, 1); },
     {"SampleQZL: properties[0] slot 0: must be 0, is 0x1"}},
    {"PropertyLastSlots",
     [](Sample &s) {
         for (size_t slot = 7; slot < kPropertySlots; ++slot)
             s.properties.Set(kPropertySlots + slot, slot);
     },
     {"SampleQZL: properties[1] slot 7: must be 0, is 0x7",
      "SampleQZL: properties[1] slot 8: must be 0, is 0x8",
      "SampleQZL: properties[1] slot 9: must be 0, is 0x9",
      "SampleQZL: properties[1] slot 10: must be 0, is 0xA",
      "SampleQZL: properties[1] slot 11: must be 0, is 0xB"}},
    {"NoMethodText",
     [](Sample &s) { s.methods.Set(2, kNoText); },
     {"SampleQZL: methods[0] slot 2: the text is missing"}},
    {"WrongMethodText",
     [](Sample &s) { s.methods.Set(2, "Run(times as integer"); },
     {"SampleQZL: methods[0] slot 2: \"Run(times as integer\" is no declaration: expected a comma or a "
      "closing "
      "parenthesis at position 21, found the end"}},
    {"NoMethodFunction",
     [](Sample &s) { s.methods.Set(kMethodSlots, kNoText); },
     {"SampleQZL: methods[1] slot 0: the method has no function"}},
    {"SetterOfAMethod",
     [](Sample &s) { s.methods.Set(1, kFunction); },
     {"SampleQZL: methods[0] slot 1: must be 0 but in a computed property"}},
    {"MethodLastSlots",
     [](Sample &s) {
         s.methods.Set(4, UINT64_MAX);
         s.methods.Set(5, 16);
     },
     {"SampleQZL: methods[0] slot 4: must be 0, is 0xFFFFFFFFFFFFFFFF",
      "SampleQZL: methods[0] slot 5: must be 0, is 0x10"}},
    {"NoSharedMethodText",
     [](Sample &s) { s.sharedMethods.Set(kMethodSlots + 2, kNoText); },
     {"SampleQZL: shared methods[1] slot 2: the text is missing"}},
    {"SharedMethodLastSlot",
     [](Sample &s) { s.sharedMethods.Set(kMethodSlots + 5, 2); },
     {"SampleQZL: shared methods[1] slot 5: must be 0, is 0x2"}},
    {"NoEventText",
     [](Sample &s) { s.events.Set(kEventSlots, kNoText); },
     {"SampleQZL: events[1] slot 0: the text is missing"}},
    {"EventKeyAndLastSlots",
     [](Sample &s) {
         s.events.Set(1, 5);
         s.events.Set(2, 6);
         s.events.Set(3, 7);
     },
     {"SampleQZL: events[0] slot 1: must be 0, is 0x5", "SampleQZL: events[0] slot 2: must be 0, is 0x6",
      "SampleQZL: events[0] slot 3: must be 0, is 0x7"}},
    {"NoConstantText",
     [](Sample &s) { s.constants.Set(0, kNoText); },
     {"SampleQZL: constants[0] slot 0: the text is missing"}},
    {"WrongConstantText",
     [](Sample &s) { s.constants.Set(kConstantSlots, "Two"); },
     {"SampleQZL: constants[1] slot 0: \"Two\" is no declaration: expected an equals sign at position 4, "
      "found "
      "the end"}},
    {"ConstantLastSlots",
     [](Sample &s) {
         for (size_t slot = 1; slot < kConstantSlots; ++slot)
             s.constants.Set(slot, 1);
     },
     {"SampleQZL: constants[0] slot 1: must be 0, is 0x1",
      "SampleQZL: constants[0] slot 2: must be 0, is 0x1",
      "SampleQZL: constants[0] slot 3: must be 0, is 0x1",
      "SampleQZL: constants[0] slot 4: must be 0, is 0x1"}},
    {"CountWithoutTable",
     [](Sample &s) { s.record.Set(11, kNoText); },
     {"SampleQZL: events slot 12: a count of 2 members, but no table"}},
    {"HugeCount",
     [](Sample &s) { s.record.Set(24, UINT64_MAX); },
     {"SampleQZL: shared methods slot 24: a count of 18446744073709551615 members"}},
    {"EveryFaultOfAMember",
     [](Sample &s) {
         s.methods.Set(0, kNoText);
         s.methods.Set(1, kFunction);
         s.methods.Set(2, kNoText);
         s.methods.Set(5, 1);
     },
     {"SampleQZL: methods[0] slot 2: the text is missing",
      "SampleQZL: methods[0] slot 0: the method has no function",
      "SampleQZL: methods[0] slot 1: must be 0 but in a computed property",
      "SampleQZL: methods[0] slot 5: must be 0, is 0x1"}},
};

INSTANTIATE_TEST_SUITE_P(ClassRecords, FaultyClassRecord, testing::ValuesIn(kFaults),
                         [](const testing::TestParamInfo<Fault> &info) { return info.param.name; });

class UnusedClassSlot : public testing::TestWithParam<size_t> {};

TEST_P(UnusedClassSlot, MustBeZero)
{
    Sample sample;
    sample.record.Set(GetParam(), uint64_t{1} << 63);

    EXPECT_THAT(sample.Read().faults, ElementsAre("SampleQZL: record slot " + std::to_string(GetParam()) +
                                                  ": must be 0, is 0x8000000000000000"));
}

INSTANTIATE_TEST_SUITE_P(ClassRecords, UnusedClassSlot,
                         testing::Values(4, 13, 14, 15, 16, 17, 21, 22, 25, 26, 27, 28, 29));

TEST(ClassRecord, AMemberWithAFaultKeepsItsPlace)
{
    Sample sample;
    sample.methods.Set(2, "Run(");

    const ClassRecord record = sample.Read();

    ASSERT_EQ(record.methods.size(), 2u);
    EXPECT_EQ(record.methods[0].text, "Run(");
    EXPECT_EQ(record.methods[0].declaration.name, "");
    EXPECT_EQ(record.methods[0].function, kFunction);
    EXPECT_EQ(record.methods[1].declaration.name, "suspended");
}

} // namespace
} // namespace qzlhost
