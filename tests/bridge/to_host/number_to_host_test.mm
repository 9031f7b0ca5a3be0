// Cocoa numbers become host variants by the type that they claim.
#include <cfloat>
#include <climits>
#include <cmath>
#include <limits>
#include <type_traits>

#include "tests/support/conversion_doubles.h"
#include "tests/support/row_names.h"

using qzlhost::Host;
using qzlhost::Value;
namespace code = qzlhost::code;

/// A number that claims any type, and records how it is read.
@interface QZLTypedNumber : NSNumber {
@public
    const char *type;
    /// The integer accessors return its low bits.
    int64_t integer;
    double number;
    /// The accessor that was called last.
    SEL readWith;
    int reads;
}
@end

namespace {

template <typename Result>
Result Read(QZLTypedNumber *self, SEL accessor)
{
    self->readWith = accessor;
    ++self->reads;
    if constexpr (std::is_floating_point_v<Result>)
        return static_cast<Result>(self->number);
    else
        return static_cast<Result>(self->integer);
}

template <typename Result>
void AddAccessor(Class numberClass, SEL accessor)
{
    class_addMethod(numberClass, accessor, reinterpret_cast<IMP>(Read<Result>), @encode(Result));
}

} // namespace

@implementation QZLTypedNumber

+ (void)initialize
{
    AddAccessor<BOOL>(self, @selector(boolValue));
    AddAccessor<char>(self, @selector(charValue));
    AddAccessor<unsigned char>(self, @selector(unsignedCharValue));
    AddAccessor<short>(self, @selector(shortValue));
    AddAccessor<unsigned short>(self, @selector(unsignedShortValue));
    AddAccessor<int>(self, @selector(intValue));
    AddAccessor<unsigned>(self, @selector(unsignedIntValue));
    AddAccessor<long>(self, @selector(longValue));
    AddAccessor<unsigned long>(self, @selector(unsignedLongValue));
    AddAccessor<long long>(self, @selector(longLongValue));
    AddAccessor<unsigned long long>(self, @selector(unsignedLongLongValue));
    AddAccessor<float>(self, @selector(floatValue));
    AddAccessor<double>(self, @selector(doubleValue));
}

- (const char *)objCType
{
    return type;
}

@end

namespace {

using NumberToHost = LinkedTest;

QZLTypedNumber *TypedNumber(const char *type)
{
    QZLTypedNumber *const made = MakeObject([QZLTypedNumber class]);
    made->type = type;
    return made;
}

/// The accessor that read the number; empty unless it was read exactly once.
std::string Accessor(QZLTypedNumber *number)
{
    return number->reads == 1 ? [NSStringFromSelector(number->readWith) UTF8String] : "";
}

/// Whether they are equal, with the sign of a zero, or both are no number.
bool IsSame(double one, double other)
{
    return (std::isnan(one) && std::isnan(other)) ||
           (one == other && std::signbit(one) == std::signbit(other));
}

struct IntegerRow {
    const char *name;
    const char *type;
    int64_t integer;
    const char *accessor;
    const char *hostFunction;
    int64_t expected;
};

constexpr int64_t kAllOnes = -1;

constexpr IntegerRow kIntegerRows[] = {
    {"BooleanZero", "c", 0, "boolValue", "BooleanToVariant", 0},
    {"BooleanOne", "c", 1, "boolValue", "BooleanToVariant", 1},
    {"CharFiveIsTrue", "c", 5, "boolValue", "BooleanToVariant", 1},
    {"CharMinusOneIsTrue", "c", -1, "boolValue", "BooleanToVariant", 1},
    {"CharLowestIsTrue", "c", SCHAR_MIN, "boolValue", "BooleanToVariant", 1},
    {"UnsignedCharZero", "C", 0, "unsignedCharValue", "IntegerToVariant", 0},
    {"UnsignedCharOneIsNoBoolean", "C", 1, "unsignedCharValue", "IntegerToVariant", 1},
    {"UnsignedCharHighest", "C", UCHAR_MAX, "unsignedCharValue", "IntegerToVariant", 255},
    {"ShortLowest", "s", SHRT_MIN, "shortValue", "IntegerToVariant", -32768},
    {"ShortMinusOne", "s", -1, "shortValue", "IntegerToVariant", -1},
    {"ShortHighest", "s", SHRT_MAX, "shortValue", "IntegerToVariant", 32767},
    {"UnsignedShortHighest", "S", USHRT_MAX, "unsignedShortValue", "IntegerToVariant", 65535},
    {"IntLowest", "i", INT_MIN, "intValue", "IntegerToVariant", -2147483648},
    {"IntMinusOne", "i", -1, "intValue", "IntegerToVariant", -1},
    {"IntHighest", "i", INT_MAX, "intValue", "IntegerToVariant", 2147483647},
    {"UnsignedIntZero", "I", 0, "unsignedIntValue", "UInt32ToVariant", 0},
    {"UnsignedIntAboveInt", "I", 2147483648, "unsignedIntValue", "UInt32ToVariant", 2147483648},
    {"UnsignedIntHighest", "I", UINT_MAX, "unsignedIntValue", "UInt32ToVariant", 4294967295},
    {"LongLongLowest", "q", INT64_MIN, "longValue", "IntegerToVariant", INT64_MIN},
    {"LongLongBeyondADouble", "q", 9007199254740993, "longValue", "IntegerToVariant", 9007199254740993},
    {"LongLongHighest", "q", INT64_MAX, "longValue", "IntegerToVariant", INT64_MAX},
    {"UnsignedLongLongThatFits", "Q", 4294967295, "unsignedLongValue", "UInt32ToVariant", 4294967295},
    {"UnsignedLongLongJustTooLargeIsZero", "Q", 4294967296, "unsignedLongValue", "UInt32ToVariant", 0},
    {"UnsignedLongLongIsCut", "Q", 0x123456789, "unsignedLongValue", "UInt32ToVariant", 0x23456789},
    {"UnsignedLongLongHighest", "Q", kAllOnes, "unsignedLongValue", "UInt32ToVariant", 4294967295},
};

class IntegerTypeToHost : public LinkedTest, public ::testing::WithParamInterface<IntegerRow> {};

struct FloatingRow {
    const char *name;
    double number;
};

constexpr FloatingRow kFloatingRows[] = {
    {"Zero", 0.0},
    {"NegativeZero", -0.0},
    {"Third", 1.0 / 3.0},
    {"LargestSingle", FLT_MAX},
    {"LowestSingle", -FLT_MAX},
    {"SmallestSingle", 1.40129846432481707e-45},
    {"LargestDouble", DBL_MAX},
    {"SmallestDouble", std::numeric_limits<double>::denorm_min()},
    {"Infinity", std::numeric_limits<double>::infinity()},
    {"NegativeInfinity", -std::numeric_limits<double>::infinity()},
    {"NotANumber", std::numeric_limits<double>::quiet_NaN()},
};

class FloatingToHost : public LinkedTest, public ::testing::WithParamInterface<FloatingRow> {};

/// Types that are read as doubles, as all are that have no row of their own.
struct OtherTypeRow {
    const char *name;
    const char *type;
};

constexpr OtherTypeRow kOtherTypes[] = {
    {"Double", "d"},     {"Long", "l"},        {"UnsignedLong", "L"},  {"LongDouble", "D"},
    {"CppBoolean", "B"}, {"Nothing", ""},      {"LongerName", "cc"},   {"QualifiedChar", "rc"},
    {"Int128", "t"},     {"IntAndMore", "i8"}, {"Structure", "{?=q}"}, {"Pointer", "^i"},
};

class OtherTypeToHost : public LinkedTest, public ::testing::WithParamInterface<OtherTypeRow> {};

struct FoundationRow {
    const char *name;
    NSNumber *(*make)();
    int64_t code;
    int64_t expected;
};

const FoundationRow kFoundationRows[] = {
    {"UnsignedChar", [] { return [NSNumber numberWithUnsignedChar:200]; }, code::Int64, 200},
    {"Short", [] { return [NSNumber numberWithShort:-32768]; }, code::Int64, -32768},
    {"UnsignedShort", [] { return [NSNumber numberWithUnsignedShort:65535]; }, code::Int64, 65535},
    {"Int", [] { return [NSNumber numberWithInt:INT_MIN]; }, code::Int64, INT_MIN},
    {"UnsignedInt", [] { return [NSNumber numberWithUnsignedInt:UINT_MAX]; }, code::Int64, UINT_MAX},
    {"Integer", [] { return [NSNumber numberWithInteger:-1]; }, code::Int64, -1},
    {"Long", [] { return [NSNumber numberWithLong:LONG_MIN]; }, code::Int64, INT64_MIN},
    {"LongLong", [] { return [NSNumber numberWithLongLong:LLONG_MAX]; }, code::Int64, INT64_MAX},
    {"UnsignedLongLongHighest", [] { return [NSNumber numberWithUnsignedLongLong:ULLONG_MAX]; }, code::Int64,
     4294967295},
    {"BooleanTrue", [] { return [NSNumber numberWithBool:YES]; }, code::Boolean, 1},
    {"BooleanFalse", [] { return [NSNumber numberWithBool:NO]; }, code::Boolean, 0},
    {"Single", [] { return [NSNumber numberWithFloat:-3.0F]; }, code::Single, -3},
    {"Double", [] { return [NSNumber numberWithDouble:1e15]; }, code::Double, 1000000000000000},
    {"WholeDoubleStaysADouble", [] { return [NSNumber numberWithDouble:1.0]; }, code::Double, 1},
    {"Decimal", []() -> NSNumber * { return [NSDecimalNumber decimalNumberWithString:@"42"]; }, code::Double,
     42},
};

class FoundationNumberToHost : public LinkedTest, public ::testing::WithParamInterface<FoundationRow> {};

struct MissingRow {
    const char *hostFunction;
    const char *type;
};

constexpr MissingRow kMissingRows[] = {
    {"BooleanToVariant", "c"}, {"IntegerToVariant", "q"}, {"UInt32ToVariant", "I"},
    {"SingleToVariant", "f"},  {"DoubleToVariant", "d"},
};

class NumberOnHostWithout : public LinkedTest, public ::testing::WithParamInterface<MissingRow> {};

std::string HostFunctionOf(const ::testing::TestParamInfo<MissingRow> &row)
{
    return row.param.hostFunction;
}

} // namespace

TEST_P(IntegerTypeToHost, IsReadByItsTypeAndKeepsItsValue)
{
    const IntegerRow &row = GetParam();
    Host &host = Start();
    QZLTypedNumber *const number = TypedNumber(row.type);
    number->integer = row.integer;

    const Value variant = Convert(number);

    EXPECT_EQ(Accessor(number), row.accessor);
    EXPECT_EQ(host.CallsOf(row.hostFunction), 1);
    EXPECT_EQ(variant.Code(), row.type == std::string("c") ? code::Boolean : code::Int64);
    EXPECT_EQ(variant.AsInteger(), row.expected);
    EXPECT_EQ(host.References(variant), 1);
}

INSTANTIATE_TEST_SUITE_P(Rows, IntegerTypeToHost, ::testing::ValuesIn(kIntegerRows), kNameOfRow);

TEST_P(FloatingToHost, SingleKeepsItsValue)
{
    Host &host = Start();
    QZLTypedNumber *const number = TypedNumber("f");
    number->number = GetParam().number;

    const Value variant = Convert(number);

    EXPECT_EQ(Accessor(number), "floatValue");
    EXPECT_EQ(host.CallsOf("SingleToVariant"), 1);
    EXPECT_EQ(variant.Code(), code::Single);
    EXPECT_TRUE(IsSame(variant.AsDouble(), static_cast<float>(GetParam().number))) << variant.AsDouble();
}

TEST_P(FloatingToHost, DoubleKeepsItsValue)
{
    Host &host = Start();
    QZLTypedNumber *const number = TypedNumber("d");
    number->number = GetParam().number;

    const Value variant = Convert(number);

    EXPECT_EQ(Accessor(number), "doubleValue");
    EXPECT_EQ(host.CallsOf("DoubleToVariant"), 1);
    EXPECT_EQ(variant.Code(), code::Double);
    EXPECT_TRUE(IsSame(variant.AsDouble(), GetParam().number)) << variant.AsDouble();
}

INSTANTIATE_TEST_SUITE_P(Rows, FloatingToHost, ::testing::ValuesIn(kFloatingRows), kNameOfRow);

TEST_P(OtherTypeToHost, IsADouble)
{
    Host &host = Start();
    QZLTypedNumber *const number = TypedNumber(GetParam().type);
    number->integer = 7;
    number->number = 1.5;

    const Value variant = Convert(number);

    EXPECT_EQ(Accessor(number), "doubleValue");
    EXPECT_EQ(host.CallsOf("DoubleToVariant"), 1);
    EXPECT_EQ(variant.Code(), code::Double);
    EXPECT_EQ(variant.AsDouble(), 1.5);
}

INSTANTIATE_TEST_SUITE_P(Rows, OtherTypeToHost, ::testing::ValuesIn(kOtherTypes), kNameOfRow);

TEST_P(FoundationNumberToHost, KeepsKindAndValue)
{
    Start();
    const Value variant = Convert(GetParam().make());
    EXPECT_EQ(variant.Code(), GetParam().code);
    EXPECT_EQ(variant.AsInteger(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Rows, FoundationNumberToHost, ::testing::ValuesIn(kFoundationRows), kNameOfRow);

TEST_P(NumberOnHostWithout, ItsFunctionIsNull)
{
    StartLacking({GetParam().hostFunction});
    QZLTypedNumber *const number = TypedNumber(GetParam().type);
    EXPECT_EQ(NewVariantFromNSObject(number), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Rows, NumberOnHostWithout, ::testing::ValuesIn(kMissingRows), HostFunctionOf);

TEST_F(NumberToHost, NumbersEqualToABooleanAreNoBooleans)
{
    Start();
    EXPECT_EQ(Convert([NSNumber numberWithInt:1]).Code(), code::Int64);
    EXPECT_EQ(Convert([NSNumber numberWithInt:0]).Code(), code::Int64);
}

TEST_F(NumberToHost, ConversionLeavesTheNumbersRetainsAlone)
{
    Start();
    QZLTypedNumber *const number = TypedNumber("q");
    const NSUInteger retains = [number retainCount];
    Convert(number);
    EXPECT_EQ([number retainCount], retains);
}
