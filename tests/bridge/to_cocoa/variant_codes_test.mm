// Which type codes have a Cocoa counterpart, and where the code and the value come from.
#include <algorithm>
#include <iterator>

#include "tests/bridge/to_cocoa/variant_conversion.h"
#include "tests/support/host_declarations.h"
#include "tests/support/row_names.h"
#include "tests/support/trace.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

constexpr int64_t kConvertedCodes[] = {2,  3,  4,  5,    6,    7,    8,    9,    11,   16,   18,   19,  20,
                                       21, 23, 37, 4098, 4099, 4100, 4101, 4103, 4104, 4105, 4107, 4133};

/// Replaces the host's reading of type codes: every variant has this one.
struct Stated {
    static inline int64_t code;
    static int64_t Code(qzlhost::Instance *) { return code; }
};

class VariantCodes : public VariantConversion {
protected:
    Host &StartWithStatedCodes()
    {
        return Start({}, [](Host &unloaded) {
            unloaded.ReplaceMethod(kVarType, reinterpret_cast<void *>(&Stated::Code));
        });
    }
};

class CodeWithoutObject : public VariantCodes, public ::testing::WithParamInterface<int64_t> {};

/// The two ways to read a variant of one type code.
struct Fallback {
    const char *name;
    int64_t code;
    Value (*content)();
    /// The descriptions of the object, and of the one if both ways fail.
    const char *expected;
    const char *empty;
    const char *function;
    const char *getter;
    const char *property;
};

Value LargeInteger()
{
    return INT64_C(9007199254740993);
}

Value OneAndAHalf()
{
    return 1.5;
}

Value SingleOneAndAHalf()
{
    return 1.5f;
}

Value True()
{
    return true;
}

Value Words()
{
    return "words";
}

constexpr Fallback kFallbacks[] = {
    {"Int32", 2, LargeInteger, "9007199254740993", "0", "VariantToInt64", "REALGetPropValueInt64",
     "LongValue"},
    {"Int64", 3, LargeInteger, "9007199254740993", "0", "VariantToInt64", "REALGetPropValueInt64",
     "LongValue"},
    {"Single", 4, SingleOneAndAHalf, "1.5", "0", "VariantToSingle", "REALGetPropValueSingle", "SingleValue"},
    {"Double", 5, OneAndAHalf, "1.5", "0", "VariantToDouble", "REALGetPropValueDouble", "DoubleValue"},
    {"Currency", 6, OneAndAHalf, "1.5", "0", "VariantToDouble", "REALGetPropValueDouble", "DoubleValue"},
    {"String", 8, Words, "words", "", "VariantToString", "REALGetPropValueString", "StringValue"},
    {"Boolean", 11, True, "1", "0", "VariantToInt64", "REALGetPropValueInt64", "LongValue"},
    {"Color", 16, LargeInteger, "9007199254740993", "0", "VariantToInt64", "REALGetPropValueInt64",
     "LongValue"},
    {"Code18", 18, Words, "words", "", "VariantToString", "REALGetPropValueString", "StringValue"},
    {"Text", 37, Words, "words", "", "VariantToString", "REALGetPropValueString", "StringValue"},
};

class ValueByFallback : public VariantConversion, public ::testing::WithParamInterface<Fallback> {};

} // namespace

TEST_P(CodeWithoutObject, IsNil)
{
    Host &host = StartWithStatedCodes();
    Stated::code = GetParam();
    const Value variant = Value(5).Boxed();
    host.ClearTrace();

    EXPECT_EQ(MemberConversion::Convert(variant), nil);

    // To load VarType.
    EXPECT_EQ(FunctionsCalled(host), std::vector<std::string>{"REALLoadGlobalMethod"});
}

INSTANTIATE_TEST_SUITE_P(Codes, CodeWithoutObject,
                         ::testing::Values(0, 1, 10, 12, 13, 14, 15, 17, 22, 24, 35, 36, 38, 4095, 4096, 4097,
                                           4102, 4106, 4108, 4112, 4120, 4132, 4134, 8192,
                                           // The low bits of these are a convertible code.
                                           0x10003, 0x100000003, 0x7FFFFFFF00000008, INT64_MAX, -1, -8,
                                           INT64_MIN, INT64_MIN + 5),
                         CodeName);

TEST_F(VariantCodes, EveryCodeUpTo5000IsNilOrListed)
{
    StartWithStatedCodes();
    const Value variant = Value(5).Boxed();
    for (int64_t code = -100; code <= 5000; ++code) {
        Stated::code = code;
        if (std::find(std::begin(kConvertedCodes), std::end(kConvertedCodes), code) ==
            std::end(kConvertedCodes))
            EXPECT_EQ(MemberConversion::Convert(variant), nil) << code;
    }
}

TEST_P(ValueByFallback, ComesFromTheFunctionWhereThereIsOne)
{
    const Fallback &fallback = GetParam();
    Host &host = Start();

    const id object = Convert(fallback.code, fallback.content());

    EXPECT_STREQ([[object description] UTF8String], fallback.expected);
    EXPECT_EQ(host.CallsOf(fallback.function), 1);
    EXPECT_EQ(host.CallsOf(fallback.getter), 0);
}

TEST_P(ValueByFallback, ComesFromThePropertyWithoutTheFunction)
{
    const Fallback &fallback = GetParam();
    Host &host = Start({}, [&](Host &unloaded) { unloaded.Lack(fallback.function); });

    const id object = Convert(fallback.code, fallback.content());

    EXPECT_STREQ([[object description] UTF8String], fallback.expected);
    const std::vector<std::string> asked = ArgumentsOf(host, fallback.getter);
    ASSERT_EQ(asked.size(), 1u);
    EXPECT_NE(asked[0].find('"' + std::string(fallback.property) + '"'), std::string::npos);
}

TEST_P(ValueByFallback, IsEmptyWithoutBoth)
{
    const Fallback &fallback = GetParam();
    Start({}, [&](Host &unloaded) {
        unloaded.Lack(fallback.function);
        unloaded.Lack(fallback.getter);
    });

    const id object = Convert(fallback.code, fallback.content());

    ASSERT_NE(object, nil);
    EXPECT_STREQ([[object description] UTF8String], fallback.empty);
}

TEST_P(ValueByFallback, ComesFromTheFunctionAsSoonAsThereIsOne)
{
    const Fallback &fallback = GetParam();
    Host &host = Start({}, [&](Host &unloaded) { unloaded.AnswerFrom(fallback.function, 2); });

    for (int round = 0; round < 3; ++round)
        EXPECT_STREQ([[Convert(fallback.code, fallback.content()) description] UTF8String],
                     fallback.expected);

    EXPECT_EQ(host.CallsOf(fallback.getter), 1);
    EXPECT_EQ(host.CallsOf(fallback.function), 2);
    EXPECT_EQ(host.AsksFor(fallback.function), 2);
}

TEST_P(ValueByFallback, IsConvertedByTheTypePropertyWithoutVarType)
{
    const Fallback &fallback = GetParam();
    Host &host = Start({}, [](Host &unloaded) { unloaded.LackMethod(kVarType); });

    const id object = Convert(fallback.code, fallback.content());

    EXPECT_STREQ([[object description] UTF8String], fallback.expected);
    EXPECT_EQ(host.CallsOf("REALGetPropValueInteger"), 1);
}

INSTANTIATE_TEST_SUITE_P(Codes, ValueByFallback, ::testing::ValuesIn(kFallbacks), kNameOfRow);

TEST_F(VariantCodes, WithoutAnyTypeCodeVariantsAreNil)
{
    Start({}, [](Host &unloaded) {
        unloaded.LackMethod(kVarType);
        unloaded.Lack("REALGetPropValueInteger");
    });
    for (const Value &content : {Value(5), Value(1.5), Value(true), Value("text")})
        EXPECT_EQ(Convert(content), nil);
}

TEST_F(VariantCodes, VarTypeIsLoadedFromNoModule)
{
    using LoadMethod = void *(void *module, const char *declaration);
    static std::vector<std::pair<void *, std::string>> asked;
    static constexpr LoadMethod *kNote = [](void *module, const char *declaration) -> void * {
        asked.emplace_back(module, declaration);
        return nullptr;
    };
    Start({},
          [](Host &unloaded) { unloaded.Replace("REALLoadGlobalMethod", reinterpret_cast<void *>(kNote)); });
    EXPECT_EQ([Convert(7) intValue], 7);
    EXPECT_EQ(asked, (std::vector<std::pair<void *, std::string>>{{nullptr, kVarType}}));
}

TEST_F(VariantCodes, VarTypeIsLoadedOnceWhenItIsThere)
{
    Host &host = Start({}, [](Host &unloaded) { unloaded.AnswerFrom("REALLoadGlobalMethod", 3); });
    for (int round = 0; round < 5; ++round)
        EXPECT_EQ([Convert(7) intValue], 7);
    EXPECT_EQ(host.AsksFor("REALLoadGlobalMethod"), 3);
    EXPECT_EQ(host.CallsOf("REALLoadGlobalMethod"), 1);
    EXPECT_EQ(host.CallsOf("REALGetPropValueInteger"), 2);
}

TEST_F(VariantCodes, VariantOfTheCodeOfDatesWithoutADateIsNil)
{
    Start();
    EXPECT_EQ(Convert(qzlhost::code::Date, 5), nil);
}
