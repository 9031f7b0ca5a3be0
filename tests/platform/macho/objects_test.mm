// Objective-C of a dylib: classes, messages, categories, constant strings.
#import <Foundation/Foundation.h>
#include <gmock/gmock.h>
#include <objc/runtime.h>

#include "tests/platform/macho/dylib_test.h"
#include "tests/platform/macho/dylibs/objects.h"

@interface NSObject (OfTheDylib)
- (long)sides;
- (TwoNumbers)twoNumbers;
- (IntegerAndNumber)integerAndNumber;
- (FourFloats)fourFloats;
- (long)overridden;
- (long)replacedByCategory;
@end

namespace {

class DylibObjects : public DylibTest {
protected:
    void SetUp() override { Load("objects"); }

    id NewShape(long sides) { return [Find<id(long)>("newShape")(sides) autorelease]; }
    id NewSquare() { return [Find<id()>("newSquare")() autorelease]; }
    NSString *StringFrom(const char *function) { return Find<NSString *()>(function)(); }

private:
    NSAutoreleasePool *const pool_ = [[NSAutoreleasePool alloc] init];
};

} // namespace

TEST_F(DylibObjects, ClassesAreTheRuntimes)
{
    EXPECT_NE(objc_getClass("MachOSquare"), Nil);
    EXPECT_EQ(class_getSuperclass(objc_getClass("MachOSquare")), objc_getClass("MachOShape"));
    EXPECT_EQ(class_getSuperclass(objc_getClass("MachOShape")), [NSObject class]);
    EXPECT_TRUE([NewSquare() isKindOfClass:objc_getClass("MachOShape")]);
    EXPECT_STREQ(
        method_getTypeEncoding(class_getInstanceMethod(objc_getClass("MachOShape"), @selector(sides))),
        "q16@0:8");
}

TEST_F(DylibObjects, ResultsComeBackInEveryWay)
{
    const id shape = NewShape(6);
    EXPECT_EQ([shape sides], 6);
    const TwoNumbers numbers = [shape twoNumbers];
    EXPECT_EQ(numbers.first, 0.5);
    EXPECT_EQ(numbers.second, 1);
    const IntegerAndNumber mixed = [shape integerAndNumber];
    EXPECT_EQ(mixed.integer, 6);
    EXPECT_EQ(mixed.number, 0.5);
    const FourFloats floats = [shape fourFloats];
    EXPECT_EQ(floats.values[0], 1);
    EXPECT_EQ(floats.values[3], 4);
}

TEST_F(DylibObjects, ItsMessagesReturnResultsOfEachSize)
{
    const TwoIntegers two = Find<TwoIntegers(id)>("askTwoIntegers")(NewShape(7));
    EXPECT_EQ(two.first, 7);
    EXPECT_EQ(two.second, -1);
    const FiveIntegers five = Find<FiveIntegers(id)>("askFiveIntegers")(NewShape(7));
    EXPECT_EQ(five.values[0], 7);
    EXPECT_EQ(five.values[4], 4);
    EXPECT_EQ(Find<FiveIntegers(id)>("askFiveIntegers")(NewSquare()).values[4], 'q');
}

TEST_F(DylibObjects, ItsMessagesKeepEveryArgument)
{
    const double expected = 1 + 4 + 9 + 16 + 25 + 6 * 0.5 + 7 * 1.5 + 8 * 2.5 + 9 * 3.5 + 10 * 4.5 +
                            11 * 5.5 + 12 * 6.5 + 13 * 7.5 + 14 * 8.5;
    EXPECT_EQ(Find<double(id)>("askSum")(NewShape(1)), expected);
}

TEST_F(DylibObjects, ItsFirstMessagesKeepEveryArgumentWhileTheClassIsInitialised)
{
    EXPECT_EQ(Find<double()>("firstSum")(), 1 + 4 + 9 + 16 + 5.5);
    EXPECT_EQ(Find<double()>("firstSumOfNumbers")(), 1 + 4 + 9 + 16 + 25 + 36 + 49 + 64);
    EXPECT_EQ(Find<double()>("firstSumOfMany")(), 10);
    const FiveIntegers backwards = Find<FiveIntegers()>("firstBackwards")();
    EXPECT_THAT(backwards.values, testing::ElementsAre(5, 4, 3, 2, 1));
}

TEST_F(DylibObjects, MessagesToNilReturnZeros)
{
    const TwoIntegers two = Find<TwoIntegers(id)>("askTwoIntegers")(nil);
    EXPECT_EQ(two.first, 0);
    EXPECT_EQ(two.second, 0);
    EXPECT_EQ(Find<double(id)>("askNumber")(nil), 0);
    EXPECT_THAT(Find<FourFloats(id)>("askFourFloats")(nil).values, testing::Each(0));
    EXPECT_EQ(Find<long(id)>("askAdded")(nil), 0);
}

TEST_F(DylibObjects, SuperIsTheSuperclassOfTheClassWithTheMethod)
{
    EXPECT_EQ([NewSquare() sides], 4);
    const TwoNumbers numbers = [NewSquare() twoNumbers];
    EXPECT_EQ(numbers.first, 3.5);
    EXPECT_EQ(numbers.second, 5);
    EXPECT_STREQ([StringFrom("kindOfSquare") UTF8String], "shape and square");
}

TEST_F(DylibObjects, CategoriesAddAndReplaceMethods)
{
    EXPECT_EQ(Find<long(id)>("askAdded")(NewShape(3)), 42 + 43);
    EXPECT_EQ(Find<long(id)>("askAdded")(@"a string of this platform"), 42 + 43);
    EXPECT_EQ([NewShape(3) replacedByCategory], 2);
    EXPECT_EQ([NewShape(3) overridden], 1);
    EXPECT_EQ([NewSquare() overridden], 11);
}

TEST_F(DylibObjects, InstanceVariablesUnderAForeignClassLieBehindItsOwn)
{
    const id exception = [Find<id(long)>("newException")(77) autorelease];
    EXPECT_EQ(Find<long(id)>("codeOfException")(exception), 77);
    EXPECT_STREQ([[exception name] UTF8String], "MachOException");
    EXPECT_STREQ([[exception reason] UTF8String], "a reason");
    EXPECT_GE(ivar_getOffset(class_getInstanceVariable([exception class], "code")),
              static_cast<ptrdiff_t>(class_getInstanceSize([NSException class])));
}

TEST_F(DylibObjects, ConstantStringsKeepTheirCharacters)
{
    EXPECT_STREQ([StringFrom("asciiString") UTF8String], "plain text");
    EXPECT_TRUE([StringFrom("asciiString") isEqual:@"plain text"]);
    EXPECT_EQ([StringFrom("asciiString") hash], [@"plain text" hash]);
    EXPECT_EQ([StringFrom("emptyString") length], 0u);
    EXPECT_STREQ([StringFrom("wideString") UTF8String], "Gr\u00FC\u00DFe \U0001F600");
    EXPECT_EQ([StringFrom("wideString") length], 8u);
}

TEST_F(DylibObjects, ConstantStringsKeepNulCharacters)
{
    NSString *const ascii = StringFrom("asciiStringWithNul");
    ASSERT_EQ([ascii length], 3u);
    EXPECT_EQ([ascii characterAtIndex:1], 0);
    EXPECT_EQ([ascii characterAtIndex:2], 'b');
    NSString *const wide = StringFrom("wideStringWithNul");
    ASSERT_EQ([wide length], 3u);
    EXPECT_EQ([wide characterAtIndex:0], 0xFC);
    EXPECT_EQ([wide characterAtIndex:2], 'b');
}

TEST_F(DylibObjects, SelectorsAreTheRuntimes)
{
    const id shape = NewShape(9);
    const SEL sides = Find<SEL()>("selectorOfSides")();
    EXPECT_TRUE([shape respondsToSelector:sides]);
    EXPECT_EQ(reinterpret_cast<long>([shape performSelector:sides]), 9);
}

TEST_F(DylibObjects, LoadsRunBeforeInitialisers)
{
    int count = 0;
    const char *const *const loaded = Find<const char *const *(int *)>("loadedThings")(&count);
    ASSERT_EQ(count, 4);
    EXPECT_STREQ(loaded[0], "+[MachOShape load]");
    EXPECT_STREQ(loaded[1], "+[NSObject(OfTheTest) load]");
    // Their order is the linker's.
    EXPECT_THAT((std::vector<std::string>{loaded[2], loaded[3]}),
                testing::UnorderedElementsAre("static object", "constructor function"));
}

TEST_F(DylibTest, ObjectsOfConstantMetadataAreTheSame)
{
    NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
    Load("objects_constant");
    EXPECT_EQ(class_getSuperclass(objc_getClass("MachOSquare")), objc_getClass("MachOShape"));
    EXPECT_STREQ([Find<NSString *()>("kindOfSquare")() UTF8String], "shape and square");
    EXPECT_EQ(Find<long(id)>("askAdded")([Find<id(long)>("newShape")(3) autorelease]), 42 + 43);
    int count = 0;
    Find<const char *const *(int *)>("loadedThings")(&count);
    EXPECT_EQ(count, 4);
    [pool release];
}
