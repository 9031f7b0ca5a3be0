// Variants of numbers, booleans and strings become Cocoa objects.
#include <CoreFoundation/CoreFoundation.h>

#include <cfloat>
#include <climits>
#include <cmath>
#include <limits>

#include "tests/bridge/to_cocoa/variant_conversion.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

constexpr int64_t kIntegerCodes[] = {qzlhost::code::Int32, qzlhost::code::Int64, qzlhost::code::Color};
constexpr int64_t kDoubleCodes[] = {qzlhost::code::Double, qzlhost::code::Currency};
constexpr int64_t kStringCodes[] = {8, 18, 19, 20, 21, 23, 37};

constexpr int64_t kIntegers[] = {
    0, 1, -1, 2, 12, 13, -13, INT8_MIN, INT8_MAX, UINT8_MAX, INT16_MIN, INT16_MAX, UINT16_MAX, INT32_MIN,
    INT32_MAX, INT32_MAX + INT64_C(1), INT32_MIN - INT64_C(1), UINT32_MAX, UINT32_MAX + INT64_C(1),
    // A double would lose the last digit of these.
    (INT64_C(1) << 53) + 1, -(INT64_C(1) << 53) - 1, INT64_C(1234567890123456789), INT64_MAX - 1, INT64_MAX,
    INT64_MIN + 1, INT64_MIN};

constexpr float kSingles[] = {0.0f,
                              -0.0f,
                              1.5f,
                              -1.5f,
                              0.1f,
                              FLT_MAX,
                              -FLT_MAX,
                              FLT_MIN,
                              std::numeric_limits<float>::denorm_min(),
                              std::numeric_limits<float>::infinity(),
                              -std::numeric_limits<float>::infinity()};

constexpr double kDoubles[] = {0.0,
                               -0.0,
                               1.5,
                               -1.5,
                               0.1,
                               9007199254740993.0,
                               DBL_MAX,
                               -DBL_MAX,
                               DBL_MIN,
                               std::numeric_limits<double>::denorm_min(),
                               std::numeric_limits<double>::infinity(),
                               -std::numeric_limits<double>::infinity()};

/// Replaces the host's reading of integers: every variant holds this one.
struct Stated {
    static inline int64_t integer;
    static int64_t Integer(qzlhost::Instance *) { return integer; }
};

using NumbersToCocoa = VariantConversion;

/// The same value, of the same type.
void ExpectSameNumber(NSNumber *actual, NSNumber *expected)
{
    EXPECT_TRUE([actual isEqual:expected]) << [[actual description] UTF8String];
    EXPECT_STREQ([actual objCType], [expected objCType]);
    EXPECT_EQ([actual class], [expected class]);
}

class IntegerOfCode : public VariantConversion, public ::testing::WithParamInterface<int64_t> {};
class DoubleOfCode : public VariantConversion, public ::testing::WithParamInterface<int64_t> {};
class StringOfCode : public VariantConversion, public ::testing::WithParamInterface<int64_t> {};

} // namespace

TEST_P(IntegerOfCode, KeepsEveryDigitAndTheTypeOfCocoasOwn)
{
    Start();
    for (const int64_t integer : kIntegers) {
        SCOPED_TRACE(integer);
        NSNumber *const number = Convert(GetParam(), integer);
        EXPECT_EQ([number longLongValue], integer);
        EXPECT_EQ([[number stringValue] UTF8String], std::to_string(integer));
        ExpectSameNumber(number, GetParam() == qzlhost::code::Int64 ? [NSNumber numberWithLongLong:integer]
                                                                    : [NSNumber numberWithLong:integer]);
    }
}

TEST_P(IntegerOfCode, IsNoBoolean)
{
    Start();
    for (const int64_t integer : {0, 1}) {
        const id number = Convert(GetParam(), integer);
        EXPECT_NE(number, (id)kCFBooleanFalse);
        EXPECT_NE(number, (id)kCFBooleanTrue);
    }
}

INSTANTIATE_TEST_SUITE_P(Codes, IntegerOfCode, ::testing::ValuesIn(kIntegerCodes), CodeName);

TEST_F(NumbersToCocoa, SingleKeepsEveryBit)
{
    Start();
    for (const float single : kSingles) {
        SCOPED_TRACE(single);
        NSNumber *const number = Convert(single);
        EXPECT_EQ([number floatValue], single);
        EXPECT_EQ(std::signbit([number floatValue]), std::signbit(single));
        EXPECT_STREQ([number objCType], @encode(float));
    }
}

TEST_F(NumbersToCocoa, SingleThatIsNoNumberStaysNone)
{
    Start();
    NSNumber *const number = Convert(std::numeric_limits<float>::quiet_NaN());
    EXPECT_TRUE(std::isnan([number floatValue]));
    EXPECT_STREQ([number objCType], @encode(float));
}

TEST_P(DoubleOfCode, KeepsEveryBit)
{
    Start();
    for (const double content : kDoubles) {
        SCOPED_TRACE(content);
        NSNumber *const number = Convert(GetParam(), content);
        EXPECT_EQ([number doubleValue], content);
        EXPECT_EQ(std::signbit([number doubleValue]), std::signbit(content));
        EXPECT_STREQ([number objCType], @encode(double));
    }
}

TEST_P(DoubleOfCode, ThatIsNoNumberStaysNone)
{
    Start();
    NSNumber *const number = Convert(GetParam(), std::numeric_limits<double>::quiet_NaN());
    EXPECT_TRUE(std::isnan([number doubleValue]));
    EXPECT_STREQ([number objCType], @encode(double));
}

INSTANTIATE_TEST_SUITE_P(Codes, DoubleOfCode, ::testing::ValuesIn(kDoubleCodes), CodeName);

TEST_F(NumbersToCocoa, BooleansAreCoreFoundationsOwn)
{
    Start();
    EXPECT_EQ(Convert(true), (id)kCFBooleanTrue);
    EXPECT_EQ(Convert(false), (id)kCFBooleanFalse);
}

TEST_F(NumbersToCocoa, OnlyTheLowByteOfABooleanCounts)
{
    Start({}, [](Host &unloaded) {
        unloaded.Replace("VariantToInt64", reinterpret_cast<void *>(&Stated::Integer));
    });
    for (const int64_t integer : {INT64_C(0), INT64_C(256), INT64_C(0x100000000), INT64_C(-256), INT64_MIN}) {
        Stated::integer = integer;
        EXPECT_EQ(Convert(true), (id)kCFBooleanFalse) << integer;
    }
    for (const int64_t integer :
         {INT64_C(1), INT64_C(2), INT64_C(0x80), INT64_C(255), INT64_C(257), INT64_C(-1), INT64_MAX}) {
        Stated::integer = integer;
        EXPECT_EQ(Convert(false), (id)kCFBooleanTrue) << integer;
    }
}

TEST_P(StringOfCode, IsTheString)
{
    Host &host = Start();
    const Value string = Value::StringOfBytes("gr\xFC\xDF", qzlhost::encoding::Latin1);

    NSString *const converted = Convert(GetParam(), string);

    EXPECT_TRUE([converted isEqual:@"gr\u00FC\u00DF"]);
    EXPECT_EQ(host.References(string), 1);
    EXPECT_EQ(host.CallsOf("REALUnlockString"), 1);
}

TEST_P(StringOfCode, IsNeverNil)
{
    Start();
    const Value withoutBytes = Value::StringOfBytes("", qzlhost::encoding::UTF8);
    const Value invalid = Value::StringOfBytes("\xFF\xFE", qzlhost::encoding::UTF8);
    const Value ofUnknownEncoding = Value::StringOfBytes("text", 0x0BFE);
    for (const Value &string : {Value::EmptyString(), withoutBytes, invalid, ofUnknownEncoding}) {
        const id converted = Convert(GetParam(), string);
        EXPECT_TRUE([converted isEqual:@""]);
    }
}

TEST_P(StringOfCode, IsTheSameEmptyConstantWithoutText)
{
    Start();
    const id first = Convert(GetParam(), Value::EmptyString());
    const id second = Convert(GetParam(), Value::StringOfBytes("\xFF", qzlhost::encoding::UTF8));
    EXPECT_EQ(first, second);
    EXPECT_EQ([first class], [@"constant" class]);
}

INSTANTIATE_TEST_SUITE_P(Codes, StringOfCode, ::testing::ValuesIn(kStringCodes), CodeName);

TEST_F(NumbersToCocoa, TextIsAString)
{
    Start();
    EXPECT_TRUE([Convert(Value::TextOf("gr\xC3\xBC\xC3\x9F")) isEqual:@"gr\u00FC\u00DF"]);
    EXPECT_TRUE([Convert(Value::TextOf("")) isEqual:@""]);
}
