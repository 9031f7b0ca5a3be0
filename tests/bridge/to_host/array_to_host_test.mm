// Cocoa arrays and sets become host arrays of objects.
#include <set>

#include "tests/support/conversion_doubles.h"
#include "tests/support/raising.h"
#include "tests/support/row_names.h"
#include "tests/support/trace.h"

using qzlhost::Host;
using qzlhost::Value;
namespace code = qzlhost::code;

/// Raises for the second element.
@interface QZLBrokenEnumerator : NSEnumerator {
    int asked;
}
@end

@implementation QZLBrokenEnumerator
- (id)nextObject
{
    if (++asked == 2)
        [NSException raise:@"Broken" format:@"no second element"];
    return @"first";
}
@end

@interface QZLBrokenArray : NSArray
@end

@implementation QZLBrokenArray
- (NSUInteger)count
{
    return 2;
}
- (id)objectAtIndex:(NSUInteger)index
{
    return index == 0 ? @"first" : nil;
}
- (NSEnumerator *)objectEnumerator
{
    return [[[QZLBrokenEnumerator alloc] init] autorelease];
}
@end

/// A set whose -allObjects has an order that its enumerator reverses.
@interface QZLTestOrderedSet : NSSet
@end

@implementation QZLTestOrderedSet
- (NSUInteger)count
{
    return 4;
}
- (NSArray *)allObjects
{
    return @[ @"one", @"two", [NSNull null], @"three" ];
}
- (NSEnumerator *)objectEnumerator
{
    return [[self allObjects] reverseObjectEnumerator];
}
@end

namespace {

using ArrayToHost = LinkedTest;

constexpr int64_t kObjectArray = code::Array + code::Object;

constexpr char kCreate[] = "RuntimeArrayCreateSingleDimBoundedArray";
constexpr char kInsert[] = "PluginObjectArrayInsertProc";

/// A Cocoa array of the numbers from 0 on.
NSArray *Numbers(int count)
{
    NSMutableArray *const numbers = [NSMutableArray array];
    for (int number = 0; number < count; ++number)
        [numbers addObject:[NSNumber numberWithInt:number]];
    return numbers;
}

/// Without one of the host functions that an array needs.
class ArrayOnHostWithout : public LinkedTest, public ::testing::WithParamInterface<const char *> {};

/// Arrays in arrays, `depth` of them.
NSArray *NestedArrays(int depth)
{
    NSArray *array = [NSArray array];
    for (int level = 1; level < depth; ++level)
        array = [NSArray arrayWithObject:array];
    return array;
}

} // namespace

TEST_F(ArrayToHost, EmptyArrayOrSetIsAnEmptyArrayOfObjects)
{
    Host &host = Start();
    for (const id empty : {id([NSArray array]), id([NSSet set])}) {
        const Value array = Convert(empty);
        EXPECT_EQ(array.Code(), kObjectArray);
        EXPECT_EQ(host.ArrayCount(array), 0);
        EXPECT_EQ(host.References(array), 1);
    }
}

TEST_F(ArrayToHost, IsMadeEmptyWithObjectElements)
{
    Host &host = Start();
    Convert(@[ @1, @2 ]);
    EXPECT_EQ(ArgumentsOf(host, kCreate), (std::vector<std::string>{"4, -1"}));
}

TEST_F(ArrayToHost, NullBetweenElementsIsANilElement)
{
    Host &host = Start();
    const Value array = Convert(@[ @1, [NSNull null], @"text" ]);
    ASSERT_EQ(host.ArrayCount(array), 3);
    EXPECT_EQ(host.ArrayElement(array, 0).AsInteger(), 1);
    EXPECT_EQ(host.ArrayElement(array, 0).Code(), code::Int64);
    EXPECT_TRUE(host.ArrayElement(array, 1).IsNil());
    EXPECT_EQ(host.ArrayElement(array, 2).AsString(), "text");
    EXPECT_EQ(host.ArrayElement(array, 2).Code(), code::String);
}

TEST_F(ArrayToHost, ElementWithoutACounterpartIsNil)
{
    Host &host = Start();
    const Value array = Convert(@[ [NSData data], [[[NSObject alloc] init] autorelease] ]);
    ASSERT_EQ(host.ArrayCount(array), 2);
    EXPECT_TRUE(host.ArrayElement(array, 0).IsNil());
    EXPECT_TRUE(host.ArrayElement(array, 1).IsNil());
}

TEST_F(ArrayToHost, ElementsKeepTheirKindsAndOrder)
{
    Host &host = Start();
    const Value array = Convert(@[
        @"text", [NSNumber numberWithBool:YES], @2.5, [NSNumber numberWithFloat:0.5F], @{@"key" : @"value"},
        [NSArray array], [NSData dataWithBytes:"abc" length:3], [NSDate dateWithTimeIntervalSince1970:0]
    ]);
    constexpr int64_t kCodes[] = {code::String, code::Boolean, code::Double, code::Single,
                                  code::Object, kObjectArray,  code::Object, code::Date};
    ASSERT_EQ(host.ArrayCount(array), static_cast<int64_t>(std::size(kCodes)));
    for (size_t index = 0; index < std::size(kCodes); ++index)
        EXPECT_EQ(host.ArrayElement(array, static_cast<int64_t>(index)).Code(), kCodes[index]) << index;
}

TEST_F(ArrayToHost, ElementsBelongToTheArrayAlone)
{
    Host &host = Start();
    const Value array = Convert(@[ @"text", @1, @[ @2 ], @{} ]);
    for (int64_t index = 0; index < 4; ++index)
        EXPECT_EQ(host.References(host.ArrayElement(array, index)), 2) << "the array's and the test's";
}

TEST_F(ArrayToHost, WrapperOfAnElementGetsOneReferenceForEachPlaceInTheArray)
{
    Host &host = Start();
    host.DefineClass({"WrapperQZL", ""});
    const Value wrapper = host.New("WrapperQZL");
    NSObject *const object = [[[NSObject alloc] init] autorelease];
    Registry registry;
    registry.Enter(object, wrapper);
    {
        const Value array = Convert(@[ object, object, object ]);
        EXPECT_EQ(host.References(wrapper), 4);
        EXPECT_EQ(host.ArrayElement(array, 1).ObjectPointer(), wrapper.ObjectPointer());
    }
    EXPECT_EQ(host.References(wrapper), 1);
}

TEST_F(ArrayToHost, SameArrayTwiceBecomesTwoArrays)
{
    Host &host = Start();
    NSArray *const inner = @[ @"shared" ];
    const Value array = Convert(@[ inner, inner ]);
    const Value first = host.ArrayElement(array, 0);
    const Value second = host.ArrayElement(array, 1);
    EXPECT_NE(first.ObjectPointer(), second.ObjectPointer());
    EXPECT_EQ(host.ArrayElement(first, 0).AsString(), "shared");
    EXPECT_EQ(host.ArrayElement(second, 0).AsString(), "shared");
}

TEST_F(ArrayToHost, LaterChangesDoNotReachTheHost)
{
    Host &host = Start();
    NSMutableArray *const source = [NSMutableArray arrayWithObject:@"before"];
    const Value array = Convert(source);
    [source addObject:@"after"];
    EXPECT_EQ(host.ArrayCount(array), 1);
}

TEST_F(ArrayToHost, AHundredThousandElementsArriveInOrder)
{
    constexpr int kCount = 100'000;
    Host &host = Start();
    const Value array = Convert(Numbers(kCount));
    ASSERT_EQ(host.ArrayCount(array), kCount);
    for (int64_t index = 0; index < kCount; ++index)
        ASSERT_EQ(host.ArrayElement(array, index).AsInteger(), index);
}

TEST_F(ArrayToHost, AThousandArraysInEachOtherKeepTheirDepth)
{
    constexpr int kDepth = 1000;
    Host &host = Start();
    Value array = Convert(NestedArrays(kDepth));
    int depth = 1;
    for (; host.ArrayCount(array) == 1; ++depth)
        array = host.ArrayElement(array, 0);
    EXPECT_EQ(depth, kDepth);
    EXPECT_EQ(host.ArrayCount(array), 0);
}

TEST_F(ArrayToHost, SetIsAnArrayInTheOrderOfAllItsObjects)
{
    Host &host = Start();
    const Value array = Convert(MakeObject([QZLTestOrderedSet class]));
    EXPECT_EQ(array.Code(), kObjectArray);
    ASSERT_EQ(host.ArrayCount(array), 4);
    EXPECT_EQ(host.ArrayElement(array, 0).AsString(), "one");
    EXPECT_EQ(host.ArrayElement(array, 1).AsString(), "two");
    EXPECT_TRUE(host.ArrayElement(array, 2).IsNil());
    EXPECT_EQ(host.ArrayElement(array, 3).AsString(), "three");
}

TEST_F(ArrayToHost, FoundationsSetIsAnArrayOfItsMembers)
{
    Host &host = Start();
    const Value array = Convert([NSSet setWithObjects:@"one", @"two", @"three", nil]);
    std::set<std::string> members;
    for (int64_t index = 0; index < host.ArrayCount(array); ++index)
        members.insert(host.ArrayElement(array, index).AsString());
    EXPECT_EQ(host.ArrayCount(array), 3);
    EXPECT_EQ(members, (std::set<std::string>{"one", "three", "two"}));
}

TEST_F(ArrayToHost, MutableAndCountedSetsAreArraysToo)
{
    Host &host = Start();
    EXPECT_EQ(host.ArrayCount(Convert([NSMutableSet setWithObject:@"member"])), 1);
    NSCountedSet *const counted = [NSCountedSet setWithObject:@"member"];
    [counted addObject:@"member"];
    EXPECT_EQ(host.ArrayCount(Convert(counted)), 1);
}

TEST_P(ArrayOnHostWithout, TheFunctionIsNull)
{
    StartLacking({GetParam()});
    EXPECT_EQ(NewVariantFromNSObject(@[ @1 ]), nullptr);
    EXPECT_EQ(NewVariantFromNSObject([NSSet setWithObject:@1]), nullptr);
    EXPECT_EQ(NewVariantFromNSObject(@[ @[ @1 ] ]), nullptr);
}

TEST_P(ArrayOnHostWithout, AnAnswerOfItIsNull)
{
    Host &host = Start(2024.01, [](Host &unloaded) { unloaded.Fail(GetParam()); });
    EXPECT_EQ(NewVariantFromNSObject(@[ @1, @2 ]), nullptr);
    EXPECT_EQ(host.CallsOf(GetParam()), 1);
    host.Fail(GetParam(), false);
}

INSTANTIATE_TEST_SUITE_P(Functions, ArrayOnHostWithout, ::testing::Values(kCreate, kInsert),
                         kParameterItself);

TEST_F(ArrayToHost, CocoaExceptionBetweenElementsLeavesNothingBehind)
{
    Start();
    NSArray *const broken = [[[QZLBrokenArray alloc] init] autorelease];
    EXPECT_TRUE([ExceptionRaisedBy([&] { NewVariantFromNSObject(broken); }) isEqual:@"Broken"]);
}

TEST_F(ArrayToHost, ConversionLeavesRetainsAlone)
{
    Start();
    NSObject *const element = [[[NSObject alloc] init] autorelease];
    NSArray *const array = @[ element ];
    const NSUInteger elementRetains = [element retainCount];
    const NSUInteger arrayRetains = [array retainCount];
    {
        const qzlhost::AutoreleasePool pool;
        Convert(array);
    }
    EXPECT_EQ([element retainCount], elementRetains);
    EXPECT_EQ([array retainCount], arrayRetains);
}
