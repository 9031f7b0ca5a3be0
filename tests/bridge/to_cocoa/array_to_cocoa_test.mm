// Host arrays become Cocoa arrays.
#include <algorithm>

#include "tests/bridge/to_cocoa/array_test.h"
#include "tests/support/host_declarations.h"
#include "tests/support/replaced_method.h"
#include "tests/support/row_names.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

namespace code = qzlhost::code;

/// Returns each byte for its index, not only 0 and 1.
uint8_t ReadIndexAsBoolean(qzlhost::Instance *, int64_t index)
{
    return static_cast<uint8_t>(index);
}

void *GiveReaderOfIndexes(qzlhost::Instance *)
{
    return reinterpret_cast<void *>(&ReadIndexAsBoolean);
}

int64_t gTypeCode;

int64_t AnswerTypeCode(qzlhost::Instance *)
{
    return gTypeCode;
}

/// The arguments of numberWithBool:.
std::vector<int> gBooleans;

id NoteBoolean(id, SEL, uint8_t boolean)
{
    gBooleans.push_back(boolean);
    return @"boolean";
}

class EveryArray : public ArrayTest, public ::testing::WithParamInterface<ArrayRow> {};
class NumberArray : public EveryArray {};
class TextArray : public EveryArray {};
/// Arrays whose elements may become nil, which Cocoa refuses.
class NilArray : public EveryArray {};
using ArrayToCocoa = ArrayTest;

} // namespace

INSTANTIATE_TEST_SUITE_P(Rows, EveryArray,
                         ::testing::Values(kIntegers, kInt64s, kSingles, kDoubles, kBooleans, kStrings,
                                           kTexts, kDates, kObjects),
                         kNameOfRow);
INSTANTIATE_TEST_SUITE_P(Rows, NumberArray, ::testing::ValuesIn(kNumberRows), kNameOfRow);
INSTANTIATE_TEST_SUITE_P(Rows, TextArray, ::testing::ValuesIn(kTextRows), kNameOfRow);
INSTANTIATE_TEST_SUITE_P(Rows, NilArray, ::testing::ValuesIn(kNilRows), kNameOfRow);

TEST_P(EveryArray, HasEveryElementInOrder)
{
    Host &host = Start();
    for (const int64_t count : {0, 1, 3, 1000}) {
        SCOPED_TRACE(count);
        const Value array = NewArray(GetParam(), count);
        ASSERT_EQ(array.Code(), GetParam().arrayCode);

        NSMutableArray *const converted = Convert(array);

        ASSERT_TRUE([converted isKindOfClass:[NSMutableArray class]]);
        ASSERT_EQ([converted count], static_cast<NSUInteger>(count));
        for (int64_t index = 0; index < count; ++index)
            ExpectSame([converted objectAtIndex:static_cast<NSUInteger>(index)], GetParam().expected(index));
        EXPECT_EQ(host.References(array), 1);
    }
}

TEST_P(EveryArray, GivesEveryReferenceBack)
{
    Host &host = Start();
    const Value element = GetParam().element(host, 1);
    const Value array = host.NewArray(GetParam().elementCode, {element, element, element});
    const int64_t references = host.References(element);

    Convert(array);

    EXPECT_EQ(host.References(element), references);
}

TEST_P(EveryArray, IsReadThroughReadersOnHostsBefore2016)
{
    Host &host = Start(2015.04);
    const Value array = NewArray(GetParam(), 3);
    ASSERT_EQ([Convert(array) count], 3u);
    ExpectSame([Convert(array) objectAtIndex:2], GetParam().expected(2));
    EXPECT_GT(host.CallsOf(GetParam().reader), 0);
}

TEST_P(EveryArray, HasOneElementWhereTheHostKnowsNoUpperBounds)
{
    Start(2024.01, [](Host &unloaded) { unloaded.Lack("RuntimeUBound"); });
    NSMutableArray *const converted = Convert(NewArray(GetParam(), 3));
    ASSERT_EQ([converted count], 1u);
    ExpectSame([converted objectAtIndex:0], GetParam().expected(0));
}

TEST_P(EveryArray, ReadsTheUpperBoundOnceAndAgainBeforeEachElement)
{
    Host &host = Start();
    const Value array = NewArray(GetParam(), 3);
    host.ClearTrace();
    Convert(array);
    EXPECT_EQ(host.CallsOf("RuntimeUBound"), 4);
}

TEST_P(NumberArray, HoldsZerosWithoutAReader)
{
    Start(2024.01, [](Host &unloaded) { unloaded.Lack(GetParam().reader); });
    NSMutableArray *const converted = Convert(NewArray(GetParam(), 3));
    ASSERT_EQ([converted count], 3u);
    for (id element in converted)
        ExpectSame(element, GetParam().missing());
}

TEST_P(NumberArray, HoldsZerosWhereTheReaderIsNull)
{
    Host &host = Start();
    host.Fail(GetParam().reader);
    NSMutableArray *const converted = Convert(NewArray(GetParam(), 3));
    ASSERT_EQ([converted count], 3u);
    for (id element in converted)
        ExpectSame(element, GetParam().missing());
}

TEST_P(TextArray, HoldsEmptyStringsWithoutAReader)
{
    Start(2024.01, [](Host &unloaded) { unloaded.Lack(GetParam().reader); });
    NSMutableArray *const converted = Convert(NewArray(GetParam(), 3));
    EXPECT_TRUE([converted isEqual:(@[ @"", @"", @"" ])]);
}

TEST_P(TextArray, HoldsEmptyStringsWhereTheReaderIsNull)
{
    Host &host = Start();
    host.Fail(GetParam().reader);
    EXPECT_TRUE([Convert(NewArray(GetParam(), 3)) isEqual:(@[ @"", @"", @"" ])]);
}

TEST_P(TextArray, HoldsEmptyStringsForNullElements)
{
    Host &host = Start();
    const Value array = NewArray(GetParam(), 1);
    host.ArrayResize(array, 3);
    EXPECT_TRUE([Convert(array) isEqual:(@[ ExpectedText(0), @"", @"" ])]);
}

TEST_P(NilArray, EndsInACocoaExceptionWithoutAReader)
{
    Start(2024.01, [](Host &unloaded) { unloaded.Lack(GetParam().reader); });
    EXPECT_TRUE([ExceptionNameOf(NewArray(GetParam(), 1)) isEqual:NSInvalidArgumentException]);
    EXPECT_EQ(ExceptionNameOf(NewArray(GetParam(), 0)), nil);
}

TEST_P(NilArray, EndsInACocoaExceptionWhereTheReaderIsNull)
{
    Host &host = Start();
    host.Fail(GetParam().reader);
    EXPECT_TRUE([ExceptionNameOf(NewArray(GetParam(), 1)) isEqual:NSInvalidArgumentException]);
}

TEST_P(NilArray, EndsInACocoaExceptionForANilElementAndGivesReferencesBack)
{
    Host &host = Start();
    const Value element = GetParam().element(host, 1);
    const Value array = host.NewArray(GetParam().elementCode, {element, Value(), element});
    const int64_t references = host.References(element);

    EXPECT_TRUE([ExceptionNameOf(array) isEqual:NSInvalidArgumentException]);

    EXPECT_EQ(host.References(element), references);
    EXPECT_EQ(host.References(array), 1);
}

TEST_P(NilArray, GivesAnElementBackThatHasNoCocoaObject)
{
    Host &host = Start(2024.01, [](Host &unloaded) { unloaded.Lack("pluginObjectType"); });
    const Value element = host.New("RuntimeException");
    const Value array = host.NewArray(GetParam().elementCode, {element});
    const int64_t references = host.References(element);

    EXPECT_TRUE([ExceptionNameOf(array) isEqual:NSInvalidArgumentException]);

    EXPECT_EQ(host.References(element), references);
}

TEST_F(ArrayToCocoa, OtherArrayCodesAreNil)
{
    Start(2024.01, [](Host &unloaded) {
        unloaded.ReplaceMethod(kVarType, reinterpret_cast<void *>(&AnswerTypeCode));
    });
    const int64_t known[] = {4098, 4099, 4100, 4101, 4103, 4104, 4105, 4107, 4133};
    const Value array = NewArray(kIntegers, 3);
    for (gTypeCode = 4090; gTypeCode <= 4140; ++gTypeCode) {
        if (std::find(std::begin(known), std::end(known), gTypeCode) == std::end(known))
            EXPECT_EQ(Convert(array), nil) << gTypeCode;
    }
}

TEST_F(ArrayToCocoa, ArraysOfCurrencyAreNilAlthoughCurrencyIsANumber)
{
    Host &host = Start();
    const Value currency = Value::OfCode(code::Currency, Value(1.5));
    const Value array = host.NewArray(code::Currency, {currency});
    ASSERT_EQ(array.Code(), 4102);
    EXPECT_EQ(Convert(array), nil);
    EXPECT_TRUE([Convert(currency) isEqual:@1.5]);
}

TEST_F(ArrayToCocoa, BooleansAreTheTwoSharedObjects)
{
    Host &host = Start();
    NSMutableArray *const converted = Convert(host.NewArray(code::Boolean, {true, false}));
    EXPECT_EQ([converted objectAtIndex:0], [NSNumber numberWithBool:YES]);
    EXPECT_EQ([converted objectAtIndex:1], [NSNumber numberWithBool:NO]);
}

TEST_F(ArrayToCocoa, EveryByteOfABooleanButZeroIsTrue)
{
    Start(2024.01, [](Host &unloaded) {
        unloaded.Replace("PluginBooleanArrayGetProc", reinterpret_cast<void *>(&GiveReaderOfIndexes));
    });
    NSMutableArray *const converted = Convert(NewArray(kBooleans, 256));
    ASSERT_EQ([converted count], 256u);
    for (NSUInteger index = 0; index < 256; ++index)
        EXPECT_EQ([converted objectAtIndex:index], [NSNumber numberWithBool:index != 0]) << index;
}

TEST_F(ArrayToCocoa, EveryBooleanReachesCocoaAsZeroOrOne)
{
    Start(2024.01, [](Host &unloaded) {
        unloaded.Replace("PluginBooleanArrayGetProc", reinterpret_cast<void *>(&GiveReaderOfIndexes));
    });
    const Value array = NewArray(kBooleans, 256);
    {
        const ReplacedMethod<decltype(NoteBoolean)> noted(
            class_getClassMethod([NSNumber class], @selector(numberWithBool:)), &NoteBoolean);
        Convert(array);
    }
    std::vector<int> expected(256, 1);
    expected[0] = 0;
    EXPECT_EQ(gBooleans, expected);
}

TEST_F(ArrayToCocoa, DatesAreReadAsDatesAndNotAsVariants)
{
    Host &host = Start();
    const Value array = NewArray(kDates, 1);
    host.ClearTrace();
    EXPECT_EQ([Convert(array) count], 1u);
    EXPECT_EQ(host.CallsOf("REALGetPropValueInteger"), 6) << "the fields";
    EXPECT_EQ(host.CallsOf("REALGetPropValueObject"), 0) << "the date of a variant";
}

TEST_F(ArrayToCocoa, NestsArrays)
{
    Host &host = Start();
    const Value integers = host.NewArray(code::Int64, {1, 2});
    const Value inner = host.NewArray(code::Object, {integers, "text"});
    const Value outer =
        host.NewArray(code::Object, {inner, host.NewArray(code::String), integers, Value(true)});

    NSMutableArray *const converted = Convert(outer);

    NSArray *const expected = @[ @[ @[ @1, @2 ], @"text" ], @[], @[ @1, @2 ], [NSNumber numberWithBool:YES] ];
    EXPECT_TRUE([converted isEqual:expected]) << [[converted description] UTF8String];
    EXPECT_EQ(host.References(integers), 3);
}

TEST_F(ArrayToCocoa, NilDeepInsideGivesEveryReferenceBack)
{
    Host &host = Start();
    const Value integers = host.NewArray(code::Int64, {1});
    const Value inner = host.NewArray(code::Object, {integers, Value()});
    const Value outer = host.NewArray(code::Object, {integers, inner, integers});
    const int64_t references = host.References(integers);

    EXPECT_TRUE([ExceptionNameOf(outer) isEqual:NSInvalidArgumentException]);

    EXPECT_EQ(host.References(integers), references);
    EXPECT_EQ(host.References(inner), 2);
}
