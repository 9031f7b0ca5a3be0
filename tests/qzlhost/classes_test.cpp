// The description of a library's classes as a table and as JSON.
#include "qzlhost/classes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace qzlhost {
namespace {

using testing::HasSubstr;

void *const kFunction = reinterpret_cast<void *>(uintptr_t{16});

PropertyRecord Property(const char *name, const char *type, void *getter, void *setter, int64_t parameter)
{
    return {name, ParseType(type), 6, getter, setter, parameter};
}

MethodRecord Method(const char *text, void *setter = nullptr)
{
    return {text, ParseDeclaration(text), kFunction, setter, 4};
}

ConstantRecord Constant(const char *text)
{
    return {text, ParseConstant(text)};
}

ClassRecord SampleClass()
{
    ClassRecord record;
    record.version = 13;
    record.name = "SampleQZL";
    record.superName = "BaseQZL";
    record.dataSize = 16;
    record.constructor = kFunction;
    record.flags = 4;
    record.properties = {Property("Handle", "Integer", kFieldAccess, kFieldAccess, 0),
                         Property("Tags", "String()", kFunction, nullptr, -1),
                         Property("Title", "String", kFunction, kFunction, 0)};
    record.methods = {Method("Run(times as integer = 1)"), Method("suspended as boolean", kFunction),
                      Method("_exception as NSExceptionQZL")};
    record.events = {{"Happened(what as string)", ParseDeclaration("Happened(what as string)"), nullptr}};
    record.constants = {Constant("One = 1"), Constant("Name = \"x\"")};
    record.sharedMethods = {Method("first as SampleQZL")};
    return record;
}

ClassRecord PlainClass()
{
    ClassRecord record;
    record.name = "PlainQZL";
    record.faults = {"PlainQZL: record slot 4: must be 0, is 0x1"};
    return record;
}

TEST(DescribeAsTable, HasAParagraphForEachClassAndARowForEachMember)
{
    EXPECT_EQ(DescribeAsTable({SampleClass(), PlainClass()}),
              "SampleQZL\n"
              "  super BaseQZL, data size 16, version 13, flags 4, constructor present, destructor none\n"
              "  kind               flags  access      declaration\n"
              "  property           6      field       Handle as Integer\n"
              "  property           6      read-only   Tags as String()\n"
              "  property           6      read-write  Title as String\n"
              "  method             4                  Run(times as integer = 1)\n"
              "  computed property  4      read-write  suspended as boolean\n"
              "  computed property  4      read-only   _exception as NSExceptionQZL\n"
              "  event                                 Happened(what as string)\n"
              "  constant                              One = 1\n"
              "  constant                              Name = \"x\"\n"
              "  shared method      4                  first as SampleQZL\n"
              "\n"
              "PlainQZL\n"
              "  super none, data size 0, version 0, flags 0, constructor none, destructor none\n"
              "  fault: PlainQZL: record slot 4: must be 0, is 0x1\n");
}

TEST(DescribeAsTable, OfNoClassesIsEmpty)
{
    EXPECT_EQ(DescribeAsTable({}), "");
}

TEST(DescribeAsJson, HasTheKeysInOrderAndTwoBlanksOfIndentation)
{
    EXPECT_EQ(DescribeAsJson({PlainClass()}), R"([
  {
    "name": "PlainQZL",
    "super": null,
    "version": 0,
    "dataSize": 0,
    "flags": 0,
    "constructor": false,
    "destructor": false,
    "properties": [],
    "methods": [],
    "events": [],
    "constants": [],
    "sharedMethods": [],
    "faults": [
      "PlainQZL: record slot 4: must be 0, is 0x1"
    ]
  }
])");
}

TEST(DescribeAsJson, HasEveryMember)
{
    const nlohmann::json expected = nlohmann::json::parse(R"json([{
        "name": "SampleQZL", "super": "BaseQZL", "version": 13, "dataSize": 16, "flags": 4,
        "constructor": true, "destructor": false,
        "properties": [
            {"name": "Handle", "type": "Integer", "flags": 6, "getter": "field", "setter": "field",
             "parameter": 0},
            {"name": "Tags", "type": "String()", "flags": 6, "getter": "function", "setter": null,
             "parameter": -1},
            {"name": "Title", "type": "String", "flags": 6, "getter": "function", "setter": "function",
             "parameter": 0}],
        "methods": [
            {"declaration": "Run(times as integer = 1)", "flags": 4, "setter": false},
            {"declaration": "suspended as boolean", "flags": 4, "setter": true},
            {"declaration": "_exception as NSExceptionQZL", "flags": 4, "setter": false}],
        "events": [{"declaration": "Happened(what as string)"}],
        "constants": [
            {"declaration": "One = 1", "name": "One", "value": 1},
            {"declaration": "Name = \"x\"", "name": "Name", "value": "x"}],
        "sharedMethods": [{"declaration": "first as SampleQZL", "flags": 4, "setter": false}],
        "faults": []
}])json");

    EXPECT_EQ(nlohmann::json::parse(DescribeAsJson({SampleClass()})), expected);
}

TEST(DescribeAsJson, OfNoClassesIsAnEmptyArray)
{
    EXPECT_EQ(DescribeAsJson({}), "[]");
}

TEST(DescribeAsJson, KeepsTheClassesInTheirOrder)
{
    const nlohmann::json classes = nlohmann::json::parse(DescribeAsJson({SampleClass(), PlainClass()}));

    ASSERT_EQ(classes.size(), 2u);
    EXPECT_EQ(classes[0]["name"], "SampleQZL");
    EXPECT_EQ(classes[1]["name"], "PlainQZL");
}

TEST(DescribeAsJson, HasTheValueOfEveryKindOfConstant)
{
    ClassRecord record;
    record.constants = {Constant("a = nil"), Constant("b = true"), Constant("c = -9223372036854775808"),
                        Constant("d = 0.5"), Constant("e = \"\"")};

    const nlohmann::json constants = nlohmann::json::parse(DescribeAsJson({record}))[0]["constants"];

    EXPECT_EQ(constants[0]["value"], nullptr);
    EXPECT_EQ(constants[1]["value"], true);
    EXPECT_EQ(constants[2]["value"], INT64_MIN);
    EXPECT_EQ(constants[3]["value"], 0.5);
    EXPECT_EQ(constants[4]["value"], "");
}

TEST(DescribeAsJson, StaysReadableWithBytesThatAreNoUtf8)
{
    ClassRecord record;
    record.name = "Bad\xFFName \"\n";

    const nlohmann::json classes = nlohmann::json::parse(DescribeAsJson({record}));

    EXPECT_EQ(classes[0]["name"], "Bad\xEF\xBF\xBDName \"\n");
}

TEST(DescribeAsJson, LargeSizesAndFlagsAreUnsigned)
{
    ClassRecord record;
    record.dataSize = UINT64_MAX;

    EXPECT_THAT(DescribeAsJson({record}), HasSubstr("\"dataSize\": 18446744073709551615"));
}

} // namespace
} // namespace qzlhost
