// Structures in Cocoa values become host instances.
#include "tests/bridge/to_host/to_host_test.h"

#include <cmath>
#include <cstring>
#include <limits>

using qzlhost::Host;
using qzlhost::Value;

/// A value that says that it holds any structure, with different numbers in each.
@interface QZLTypedValue : NSValue {
@public
    const char *type;
}
@end

@implementation QZLTypedValue
- (const char *)objCType
{
    return type;
}
- (NSRect)rectValue
{
    return NSMakeRect(1, 2, 3, 4);
}
- (NSSize)sizeValue
{
    return NSMakeSize(5, 6);
}
- (NSPoint)pointValue
{
    return NSMakePoint(7, 8);
}
- (NSRange)rangeValue
{
    return NSMakeRange(9, 10);
}
@end

namespace {

using ValueToHost = LinkedTest;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

NSValue *TypedValue(const char *type)
{
    QZLTypedValue *const made = MakeObject([QZLTypedValue class]);
    made->type = type;
    return made;
}

struct StructureRow {
    const char *testName;
    const char *hostClass;
    NSValue *(*make)();
    /// The instance data, as the doubles or integers that lie in it.
    std::vector<double> doubles;
    std::vector<uint64_t> integers;
};

const StructureRow kStructures[] = {
    {"Rect", "NSRectQZL", [] { return [NSValue valueWithRect:NSMakeRect(1, 2, 3, 4)]; }, {1, 2, 3, 4}, {}},
    {"ExtremeRect",
     "NSRectQZL",
     [] { return [NSValue valueWithRect:NSMakeRect(-kInfinity, -0.0, 1e308, kNotANumber)]; },
     {-kInfinity, -0.0, 1e308, kNotANumber},
     {}},
    {"Size", "NSSizeQZL", [] { return [NSValue valueWithSize:NSMakeSize(5.5, -6)]; }, {5.5, -6}, {}},
    {"Point", "NSPointQZL", [] { return [NSValue valueWithPoint:NSMakePoint(-7.25, 8)]; }, {-7.25, 8}, {}},
    {"Range", "NSRangeQZL", [] { return [NSValue valueWithRange:NSMakeRange(9, 10)]; }, {}, {9, 10}},
    {"RangeNotFound",
     "NSRangeQZL",
     [] { return [NSValue valueWithRange:NSMakeRange(NSNotFound, 0)]; },
     {},
     {static_cast<uint64_t>(INT64_MAX), 0}},
    {"HighestRange",
     "NSRangeQZL",
     [] {
         return [NSValue valueWithRange:NSRange{NSUIntegerMax, NSUIntegerMax}];
     },
     {},
     {UINT64_MAX, UINT64_MAX}},
    {"RectOfASubclass",
     "NSRectQZL",
     [] { return TypedValue("{CGRect={CGPoint=dd}{CGSize=dd}}"); },
     {1, 2, 3, 4},
     {}},
    {"SizeOfASubclass", "NSSizeQZL", [] { return TypedValue("{CGSize=dd}"); }, {5, 6}, {}},
    {"PointOfASubclass", "NSPointQZL", [] { return TypedValue("{CGPoint=dd}"); }, {7, 8}, {}},
    {"RangeOfASubclass", "NSRangeQZL", [] { return TypedValue("{_NSRange=QQ}"); }, {}, {9, 10}},
};

class StructureToHost : public LinkedTest, public ::testing::WithParamInterface<StructureRow> {};

/// The host class with room for the structure and as much again, which must stay as it was.
void DefineStructureClass(Host &host, const std::string &name)
{
    qzlhost::ClassDefinition definition;
    definition.name = name;
    definition.dataSize = 64;
    host.DefineClass(std::move(definition));
}

struct TimeRow {
    const char *selector;
    const char *type;
};

constexpr TimeRow kTimes[] = {
    {"QTTimeValueQZL", "{?=qqq}"},
    {"QTTimeRangeValueQZL", "{?={?=qqq}{?=qqq}}"},
    {"CMTimeValueQZL", "{?=qiIq}"},
    {"CMTimeRangeValueQZL", "{?={?=qiIq}{?=qiIq}}"},
    {"CMTimeMappingValueQZL", "{?={?={?=qiIq}{?=qiIq}}{?={?=qiIq}{?=qiIq}}}"},
};

class TimeToHost : public LinkedTest, public ::testing::WithParamInterface<TimeRow> {};

/// What the family's methods answer, and what they were asked.
REALobject gTime;
std::vector<std::pair<id, std::string>> gTimeAsks;

REALobject AnswerTime(id self, SEL selector)
{
    gTimeAsks.emplace_back(self, [NSStringFromSelector(selector) UTF8String]);
    return gTime;
}

/// Adds the family's method to all values, for the life of the process.
void OfferTimeMethod(const char *selector)
{
    class_addMethod([NSValue class], sel_registerName(selector), reinterpret_cast<IMP>(AnswerTime),
                    "^v16@0:8");
}

struct OtherRow {
    const char *testName;
    const char *type;
};

constexpr OtherRow kOtherStructures[] = {
    {"GNUstepRect", "{_NSRect={_NSPoint=dd}{_NSSize=dd}}"},
    {"SinglePrecisionPoint", "{CGPoint=ff}"},
    {"RangeOfLongs", "{_NSRange=LL}"},
    {"PointerToPoint", "^{CGPoint=dd}"},
    {"PointAndMore", "{CGPoint=dd}d"},
    {"FourIntegers", "{?=qqqq}"},
    {"Pointer", "^v"},
    {"Object", "@"},
    {"Double", "d"},
    {"Nothing", ""},
};

class OtherStructureToHost : public LinkedTest, public ::testing::WithParamInterface<OtherRow> {};

template <class Row>
std::string NameOf(const ::testing::TestParamInfo<Row> &row)
{
    return row.param.testName;
}

} // namespace

TEST_P(StructureToHost, FillsTheInstanceData)
{
    const StructureRow &row = GetParam();
    Host &host = Start();
    DefineStructureClass(host, row.hostClass);

    const Value instance = Convert(row.make());

    ASSERT_FALSE(instance.IsNil());
    EXPECT_EQ(host.ClassOf(instance), row.hostClass);
    EXPECT_EQ(host.References(instance), 1);
    char expected[64] = {};
    if (row.integers.empty())
        std::memcpy(expected, row.doubles.data(), row.doubles.size() * sizeof(double));
    else
        std::memcpy(expected, row.integers.data(), row.integers.size() * sizeof(uint64_t));
    EXPECT_EQ(std::memcmp(host.InstanceData(instance), expected, sizeof expected), 0);
}

TEST_P(StructureToHost, HostWithoutTheClassGivesNull)
{
    Start();
    EXPECT_EQ(NewVariantFromNSObject(GetParam().make()), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Rows, StructureToHost, ::testing::ValuesIn(kStructures), NameOf<StructureRow>);

TEST_P(TimeToHost, IsWhatTheFamilysMethodAnswersUnchanged)
{
    Host &host = Start();
    OfferTimeMethod(GetParam().selector);
    host.DefineClass({"TimeQZL", ""});
    const Value time = host.New("TimeQZL");
    gTime = ObjectOf(time);
    NSValue *const value = TypedValue(GetParam().type);

    EXPECT_EQ(NewVariantFromNSObject(value), gTime);

    EXPECT_EQ(host.References(time), 1) << "the conversion neither takes nor gives a reference";
    ASSERT_EQ(gTimeAsks.size(), 1u);
    EXPECT_EQ(gTimeAsks[0].first, value);
    EXPECT_EQ(gTimeAsks[0].second, GetParam().selector);
}

TEST_P(TimeToHost, NullFromTheFamilysMethodIsNull)
{
    Start();
    OfferTimeMethod(GetParam().selector);
    gTime = nullptr;
    EXPECT_EQ(NewVariantFromNSObject(TypedValue(GetParam().type)), nullptr);
    EXPECT_EQ(gTimeAsks.size(), 1u);
}

TEST_P(TimeToHost, WithoutItsMethodIsNullWhateverOtherTimesThereAre)
{
    Host &host = Start();
    for (const TimeRow &row : kTimes)
        if (std::strcmp(row.selector, GetParam().selector) != 0)
            OfferTimeMethod(row.selector);
    host.DefineClass({"TimeQZL", ""});
    const Value time = host.New("TimeQZL");
    gTime = ObjectOf(time);
    EXPECT_EQ(NewVariantFromNSObject(TypedValue(GetParam().type)), nullptr);
    EXPECT_TRUE(gTimeAsks.empty());
}

TEST_P(TimeToHost, MethodThatComesLaterIsFound)
{
    Host &host = Start();
    host.DefineClass({"TimeQZL", ""});
    const Value time = host.New("TimeQZL");
    gTime = ObjectOf(time);
    NSValue *const value = TypedValue(GetParam().type);
    EXPECT_EQ(NewVariantFromNSObject(value), nullptr);
    OfferTimeMethod(GetParam().selector);
    EXPECT_EQ(NewVariantFromNSObject(value), gTime);
}

INSTANTIATE_TEST_SUITE_P(Rows, TimeToHost, ::testing::ValuesIn(kTimes),
                         [](const ::testing::TestParamInfo<TimeRow> &row) { return row.param.selector; });

TEST_P(OtherStructureToHost, IsNullAndNoOtherConversionIsTried)
{
    Host &host = Start();
    // A host class that a wrapper of the value could be made of.
    DefineStructureClass(host, "NSValueQZL");
    EXPECT_EQ(NewVariantFromNSObject(TypedValue(GetParam().type)), nullptr);
    EXPECT_EQ(host.CallsOf("PluginNewInstance"), 0);
}

INSTANTIATE_TEST_SUITE_P(Rows, OtherStructureToHost, ::testing::ValuesIn(kOtherStructures), NameOf<OtherRow>);

TEST_F(ValueToHost, FoundationsValueOfAnotherStructureIsNull)
{
    Start();
    struct Other {
        int one;
        double other;
    };
    const Other content = {1, 2};
    EXPECT_EQ(NewVariantFromNSObject([NSValue valueWithBytes:&content objCType:@encode(Other)]), nullptr);
    EXPECT_EQ(NewVariantFromNSObject([NSValue valueWithPointer:&content]), nullptr);
    EXPECT_EQ(NewVariantFromNSObject([NSValue valueWithNonretainedObject:@"object"]), nullptr);
}

TEST_F(ValueToHost, EachConversionMakesAnInstanceOfItsOwn)
{
    Host &host = Start();
    DefineStructureClass(host, "NSPointQZL");
    NSValue *const value = [NSValue valueWithPoint:NSMakePoint(1, 2)];
    const Value first = Convert(value);
    const Value second = Convert(value);
    EXPECT_NE(first.ObjectPointer(), second.ObjectPointer());
}
