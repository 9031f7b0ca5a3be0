// A program's values as JSON.
#include "qzlhost/value_json.h"

#include <gtest/gtest.h>

#include <limits>

using qzlhost::Host;
using qzlhost::Value;
namespace code = qzlhost::code;

namespace {

class ValueJson : public testing::Test {
protected:
    std::string Json(const Value &value) { return LineOfJson(ValueAsJson(host, value)); }

    Host host;
};

} // namespace

TEST_F(ValueJson, OfSimpleValuesIsPlain)
{
    EXPECT_EQ(Json(Value()), "null");
    EXPECT_EQ(Json(true), "true");
    EXPECT_EQ(Json(std::numeric_limits<int64_t>::min()), "-9223372036854775808");
    EXPECT_EQ(Json(0.1), "0.1");
    EXPECT_EQ(Json(1.5f), "1.5");
    EXPECT_EQ(Json("a \"quoted\" line\n"), R"("a \"quoted\" line\n")");
    EXPECT_EQ(Json(Value::EmptyString()), R"("")");
    EXPECT_EQ(Json(Value::TextOf("Gr\u00FC\u00DFe")), "\"Gr\u00FC\u00DFe\"");
    EXPECT_EQ(Json(Value("boxed").Boxed()), R"("boxed")");
}

TEST_F(ValueJson, OfWhatJsonLacksIsAnObjectOfOneEntry)
{
    EXPECT_EQ(Json(host.NewDate(2024, 2, 29, 14, 5, 9)), R"({"date":"2024-02-29 14:05:09"})");
    EXPECT_EQ(Json(host.NewMemoryBlock(std::string_view("\0\x7f\xff", 3))), R"({"bytes":"007fff"})");
    EXPECT_EQ(Json(host.NewMemoryBlock("")), R"({"bytes":""})");
    EXPECT_EQ(Json(host.NewFolderItem("/tmp")), R"({"path":"/tmp"})");
    EXPECT_EQ(Json(host.New("RuntimeException")), R"({"class":"RuntimeException"})");
    EXPECT_EQ(ValueAsJson(host, std::numeric_limits<double>::infinity()).begin().key(), "number");
}

TEST_F(ValueJson, OfContainersHoldsTheirValuesInOrder)
{
    const Value inner = host.NewDictionary();
    host.DictionarySet(inner, 5, "five");
    const Value outer = host.NewDictionary();
    host.DictionarySet(outer, "z", host.NewArray(code::Object, {1, "two", inner}));
    host.DictionarySet(outer, "a", host.NewDictionary());
    EXPECT_EQ(Json(outer), R"({"z":[1,"two",{"5":"five"}],"a":{}})");
    EXPECT_EQ(Json(host.NewArray(code::Int64)), "[]");
}

TEST_F(ValueJson, OfBytesThatAreNoTextIsStillJson)
{
    const Value string = Value::StringOfBytes("\xff", qzlhost::encoding::UTF8);
    EXPECT_EQ(nlohmann::json::parse(Json(string)), "\uFFFD");
}
