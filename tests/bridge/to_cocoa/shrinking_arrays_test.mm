// Host arrays that lose elements while they become Cocoa arrays.
#include "tests/bridge/to_cocoa/array_test.h"
#include "tests/support/row_names.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

/// The messages of the host exceptions that were raised, in order; for Cocoa's the name.
std::vector<std::string> gRaised;

void NoteException(qzlhost::Instance *exception)
{
    Host &host = Host::Current();
    const Value raised = Value::Share(exception);
    const std::string className = host.ClassOf(raised);
    const std::string text = className == "NSExceptionQZL"
                                 ? [[HandleOf<NSException *>(host, raised) name] UTF8String]
                                 : host.Get(raised, "Message").AsString();
    gRaised.push_back(className + ": " + text);
}

std::string MissingIndex(int64_t index, int64_t count)
{
    return "OutOfBoundsException: Parameter index  is too big. Range is 0 to " + std::to_string(count - 1) +
           ", but value is " + std::to_string(index) + ".";
}

/// How arrays shrink: to `count` elements at the request number `ask` (from 1 on) for an upper bound.
struct Shrinking {
    int ask = 0;
    int64_t count = 0;
    int asks = 0;
} gShrinking;

int64_t ShrinkingUpperBound(qzlhost::Instance *asked)
{
    Host &host = Host::Current();
    const Value array = Value::Share(asked);
    if (++gShrinking.asks == gShrinking.ask)
        host.ArrayResize(array, gShrinking.count);
    return host.ArrayCount(array) - 1;
}

int64_t ReadAndEmpty(qzlhost::Instance *asked, int64_t index)
{
    Host &host = Host::Current();
    const Value array = Value::Share(asked);
    const int64_t element = host.ArrayElement(array, index).AsInteger();
    host.ArrayResize(array, 0);
    return element;
}

void *GiveReaderThatEmpties(qzlhost::Instance *)
{
    return reinterpret_cast<void *>(&ReadAndEmpty);
}

class ShrinkingArray : public ArrayTest {
protected:
    /// A host whose arrays shrink so, and which records exceptions.
    Host &StartShrinking(int ask, int64_t count)
    {
        gShrinking = {ask, count};
        return Start(2024.01, [](Host &unloaded) {
            unloaded.Replace("RuntimeUBound", reinterpret_cast<void *>(&ShrinkingUpperBound));
            unloaded.Replace("RuntimeRaiseException", reinterpret_cast<void *>(&NoteException));
        });
    }
};

class ShrinkingRow : public ShrinkingArray, public ::testing::WithParamInterface<ArrayRow> {};
class ShrinkingNumbers : public ShrinkingRow {};
class ShrinkingTexts : public ShrinkingRow {};
/// Arrays whose missing elements are nil, which Cocoa refuses.
class ShrinkingNils : public ShrinkingRow {};

} // namespace

INSTANTIATE_TEST_SUITE_P(Rows, ShrinkingNumbers, ::testing::ValuesIn(kNumberRows), kNameOfRow);
INSTANTIATE_TEST_SUITE_P(Rows, ShrinkingTexts, ::testing::ValuesIn(kTextRows), kNameOfRow);
INSTANTIATE_TEST_SUITE_P(Rows, ShrinkingNils, ::testing::ValuesIn(kNilRows), kNameOfRow);

TEST_P(ShrinkingNumbers, RaiseForEachMissingIndexAndHoldZeros)
{
    // The first request is for the whole array, the fourth for the index 2.
    StartShrinking(4, 2);
    NSMutableArray *const converted = Convert(NewArray(GetParam(), 5));
    EXPECT_EQ(gRaised, (std::vector{MissingIndex(2, 2), MissingIndex(3, 2), MissingIndex(4, 2)}));
    ASSERT_EQ([converted count], 5u);
    for (const NSUInteger index : {0u, 1u})
        ExpectSame([converted objectAtIndex:index], GetParam().expected(static_cast<int64_t>(index)));
    for (const NSUInteger index : {2u, 3u, 4u})
        ExpectSame([converted objectAtIndex:index], GetParam().missing());
}

TEST_P(ShrinkingTexts, RaiseForEachMissingIndexAndHoldEmptyStrings)
{
    StartShrinking(4, 2);
    NSMutableArray *const converted = Convert(NewArray(GetParam(), 4));
    EXPECT_EQ(gRaised, (std::vector{MissingIndex(2, 2), MissingIndex(3, 2)}));
    EXPECT_TRUE([converted isEqual:(@[ ExpectedText(0), ExpectedText(1), @"", @"" ])]);
}

TEST_P(ShrinkingNils, RaiseForTheFirstMissingIndexAndEndInACocoaException)
{
    StartShrinking(4, 2);
    EXPECT_EQ(Convert(NewArray(GetParam(), 4)), nil);
    EXPECT_EQ(gRaised,
              (std::vector<std::string>{MissingIndex(2, 2), "NSExceptionQZL: NSInvalidArgumentException"}));
}

TEST_P(ShrinkingNumbers, HaveARangeThatEndsBelowZeroWhenAllIsLost)
{
    StartShrinking(2, 0);
    NSMutableArray *const converted = Convert(NewArray(GetParam(), 1));
    EXPECT_EQ(gRaised, (std::vector{MissingIndex(0, 0)}));
    ASSERT_EQ([converted count], 1u);
    ExpectSame([converted objectAtIndex:0], GetParam().missing());
}

TEST_F(ShrinkingArray, MayShrinkFromInsideTheReader)
{
    Host &host = Start(2024.01, [](Host &unloaded) {
        unloaded.Replace("PluginInt64ArrayGetProc", reinterpret_cast<void *>(&GiveReaderThatEmpties));
        unloaded.Replace("RuntimeRaiseException", reinterpret_cast<void *>(&NoteException));
    });
    NSMutableArray *const converted = Convert(host.NewArray(qzlhost::code::Int64, {7, 8, 9}));
    EXPECT_TRUE([converted isEqual:(@[ @7, @0, @0 ])]);
    EXPECT_EQ(gRaised, (std::vector{MissingIndex(1, 0), MissingIndex(2, 0)}));
}

TEST_F(ShrinkingArray, ThatGrowsHasNoMoreElementsThanAtItsStart)
{
    StartShrinking(2, 9);
    NSMutableArray *const converted = Convert(NewArray(kIntegers, 3));
    EXPECT_EQ([converted count], 3u);
    EXPECT_TRUE(gRaised.empty());
}
