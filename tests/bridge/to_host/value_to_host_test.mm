// Structures in Cocoa values become host instances.
#include <array>
#include <cstring>
#include <limits>
#include <numeric>

#include "family/family.h"
#include "tests/support/conversion_doubles.h"
#include "tests/support/row_names.h"

using qzlhost::Host;
using qzlhost::Value;

/// A value that claims to hold any structure, with different numbers in each.
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
    const char *name;
    const char *hostClass;
    NSValue *(*make)();
    /// The instance data, which is doubles or integers.
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
     [] { return [NSValue valueWithRange:NSRange{NSUIntegerMax, NSUIntegerMax}]; },
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

/// Defines the host class with room for the structure and more, which must stay zero.
void DefineStructureClass(Host &host, const std::string &name)
{
    host.DefineClass({name, "", 64});
}

class TimeToHost : public LinkedTest, public ::testing::WithParamInterface<FamilyTime> {
protected:
    /// The family's value, with different bytes in it.
    NSValue *NewValue()
    {
        std::iota(bytes_.begin(), bytes_.end(), uint8_t{1});
        return [NSValue valueWithBytes:bytes_.data() objCType:GetParam().objCType];
    }

    /// Expects the instance that the family made for the value, unchanged and with its one reference.
    void ExpectTime(const Value &instance)
    {
        ASSERT_FALSE(instance.IsNil());
        EXPECT_EQ(host().ClassOf(instance), GetParam().hostClass);
        EXPECT_EQ(host().References(instance), 1) << "the conversion neither takes nor gives a reference";
        EXPECT_EQ(std::memcmp(host().InstanceData(instance), bytes_.data(), GetParam().size), 0);
    }

private:
    std::array<uint8_t, 96> bytes_;
};

struct OtherRow {
    const char *name;
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

INSTANTIATE_TEST_SUITE_P(Rows, StructureToHost, ::testing::ValuesIn(kStructures), kNameOfRow);

TEST_P(TimeToHost, IsTheResultOfTheFamilysMethod)
{
    Host &host = Start();
    Family family(host);
    family.OfferTimeClass(GetParam());
    family.OfferTimeToHost(GetParam());
    NSValue *const value = NewValue();

    const Value time = Convert(value);

    ExpectTime(time);
    EXPECT_EQ(family.TimesMade(), 1);
    EXPECT_EQ(family.LastTimeAsked(), value);
    EXPECT_EQ(family.LastTimeAnswered(), time.ObjectPointer());
}

TEST_P(TimeToHost, NullFromTheFamilysMethodIsNull)
{
    Host &host = Start();
    Family family(host);
    family.OfferTimeToHost(GetParam());
    EXPECT_EQ(NewVariantFromNSObject(NewValue()), nullptr);
    EXPECT_EQ(family.TimesMade(), 1);
}

TEST_P(TimeToHost, WithoutItsMethodIsNullWhateverOtherTimesThereAre)
{
    Host &host = Start();
    Family family(host);
    for (const FamilyTime &time : kFamilyTimes) {
        family.OfferTimeClass(time);
        if (std::strcmp(time.toHost, GetParam().toHost) != 0)
            family.OfferTimeToHost(time);
    }
    EXPECT_EQ(NewVariantFromNSObject(NewValue()), nullptr);
    EXPECT_EQ(family.TimesMade(), 0);
}

TEST_P(TimeToHost, MethodThatComesLaterIsFound)
{
    Host &host = Start();
    Family family(host);
    family.OfferTimeClass(GetParam());
    EXPECT_EQ(NewVariantFromNSObject(NewValue()), nullptr);
    family.OfferTimeToHost(GetParam());
    ExpectTime(Convert(NewValue()));
}

INSTANTIATE_TEST_SUITE_P(Rows, TimeToHost, ::testing::ValuesIn(kFamilyTimes),
                         [](const ::testing::TestParamInfo<FamilyTime> &row) { return row.param.toHost; });

TEST_P(OtherStructureToHost, IsNullAndNoOtherConversionIsTried)
{
    Host &host = Start();
    // A host class that a wrapper of the value could be made of.
    DefineStructureClass(host, "NSValueQZL");
    EXPECT_EQ(NewVariantFromNSObject(TypedValue(GetParam().type)), nullptr);
    EXPECT_EQ(host.CallsOf("PluginNewInstance"), 0);
}

INSTANTIATE_TEST_SUITE_P(Rows, OtherStructureToHost, ::testing::ValuesIn(kOtherStructures), kNameOfRow);

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
