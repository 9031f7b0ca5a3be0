// NSValues of rectangles, sizes, points and ranges.
#include "tests/platform/gnustep/port_testing.h"

namespace {

/// A kind of value: one, an equal one, and a different one.
struct Kind {
    const char *objCType;
    const char *gnustepType;
    NSUInteger size;
    NSValue *value;
    NSValue *equal;
    NSValue *different;
};

std::vector<Kind> Kinds()
{
    const NSRect rect = NSMakeRect(1, 2, 3, 4);
    const NSRange range = NSMakeRange(5, 6);
    return {
        {"{CGRect={CGPoint=dd}{CGSize=dd}}", @encode(NSRect), 32, [NSValue valueWithRect:rect],
         [NSValue valueWithRect:rect], [NSValue valueWithRect:NSMakeRect(1, 2, 3, 5)]},
        {"{CGSize=dd}", @encode(NSSize), 16, [NSValue valueWithSize:rect.size],
         [NSValue valueWithSize:rect.size], [NSValue valueWithSize:NSMakeSize(3, 5)]},
        {"{CGPoint=dd}", @encode(NSPoint), 16, [NSValue valueWithPoint:rect.origin],
         [NSValue valueWithPoint:rect.origin], [NSValue valueWithPoint:NSMakePoint(1, 3)]},
        {"{_NSRange=QQ}", @encode(NSRange), 16, [NSValue valueWithRange:range],
         [NSValue valueWithRange:range], [NSValue valueWithRange:NSMakeRange(5, 7)]},
    };
}

std::string BytesOf(NSValue *value, NSUInteger size)
{
    std::string bytes(size, '\x55');
    [value getValue:bytes.data()];
    return bytes;
}

} // namespace

TEST(GeometryValues, HaveTheEncodingsOfMacOS)
{
    for (const Kind &kind : Kinds())
        EXPECT_STREQ([kind.value objCType], kind.objCType);
}

TEST(GeometryValues, HaveEncodingsOfTheRightSize)
{
    for (const Kind &kind : Kinds()) {
        NSUInteger size = 0;
        NSGetSizeAndAlignment([kind.value objCType], &size, nullptr);
        EXPECT_EQ(size, kind.size);
    }
}

TEST(GeometryValues, KeepTheirContent)
{
    const std::vector<Kind> kinds = Kinds();
    EXPECT_TRUE(NSEqualRects([kinds[0].value rectValue], NSMakeRect(1, 2, 3, 4)));
    EXPECT_TRUE(NSEqualSizes([kinds[1].value sizeValue], NSMakeSize(3, 4)));
    EXPECT_TRUE(NSEqualPoints([kinds[2].value pointValue], NSMakePoint(1, 2)));
    EXPECT_TRUE(NSEqualRanges([kinds[3].value rangeValue], NSMakeRange(5, 6)));
}

TEST(GeometryValues, CopyOutAllTheirBytes)
{
    const std::vector<Kind> kinds = Kinds();
    NSRect rect;
    [kinds[0].value getValue:&rect];
    EXPECT_TRUE(NSEqualRects(rect, NSMakeRect(1, 2, 3, 4)));
    NSRange range;
    [kinds[3].value getValue:&range];
    EXPECT_TRUE(NSEqualRanges(range, NSMakeRange(5, 6)));
    for (const Kind &kind : kinds)
        EXPECT_EQ(BytesOf(kind.value, kind.size + 1).back(), '\x55');
}

TEST(GeometryValues, CompareByContent)
{
    for (const Kind &kind : Kinds()) {
        EXPECT_TRUE([kind.value isEqual:kind.equal]) << kind.objCType;
        EXPECT_TRUE([kind.value isEqualToValue:kind.equal]) << kind.objCType;
        EXPECT_EQ([kind.value hash], [kind.equal hash]) << kind.objCType;
        EXPECT_FALSE([kind.value isEqual:kind.different]) << kind.objCType;
        EXPECT_FALSE([kind.value isEqualToValue:kind.different]) << kind.objCType;
    }
    const std::vector<Kind> kinds = Kinds();
    EXPECT_FALSE([kinds[1].value isEqual:kinds[2].value]);
}

TEST(GeometryValues, AreMadeFromEitherSpellingOfTheEncoding)
{
    for (const Kind &kind : Kinds()) {
        const std::string bytes = BytesOf(kind.value, kind.size);
        for (const char *const type : {kind.objCType, kind.gnustepType}) {
            NSValue *const made = [NSValue valueWithBytes:bytes.data() objCType:type];
            EXPECT_STREQ([made objCType], kind.objCType);
            EXPECT_TRUE([made isEqual:kind.value]) << type;
            EXPECT_TRUE([kind.value isEqual:made]) << type;
        }
    }
}

TEST(GeometryValues, Copy)
{
    for (const Kind &kind : Kinds()) {
        NSValue *const copy = [[kind.value copy] autorelease];
        EXPECT_TRUE([copy isEqual:kind.value]);
        EXPECT_STREQ([copy objCType], kind.objCType);
    }
}

TEST(GeometryValues, AreKeysOfDictionariesAndMembersOfSets)
{
    for (const Kind &kind : Kinds()) {
        NSDictionary *const dictionary = [NSDictionary dictionaryWithObject:@"found" forKey:kind.value];
        EXPECT_EQ([dictionary objectForKey:kind.equal], @"found");
        EXPECT_TRUE([[NSSet setWithObject:kind.value] containsObject:kind.equal]);
    }
}

TEST(GeometryValues, AreArchivedAndReadBack)
{
    for (const Kind &kind : Kinds()) {
        NSData *const archive = [NSArchiver archivedDataWithRootObject:kind.value];
        NSValue *const read = [NSUnarchiver unarchiveObjectWithData:archive];
        EXPECT_TRUE([read isEqual:kind.value]) << kind.objCType;
        EXPECT_STREQ([read objCType], kind.objCType);
    }
}

TEST(GeometryValues, AreArchivedInGNUstepsOwnForm)
{
    for (const Kind &kind : Kinds()) {
        NSData *const archive = [NSArchiver archivedDataWithRootObject:kind.value];
        const std::string bytes(static_cast<const char *>([archive bytes]), [archive length]);
        EXPECT_NE(bytes.find(kind.gnustepType), std::string::npos) << kind.objCType;
    }
}

TEST(GeometryValues, LeaveOtherValuesAsTheyAre)
{
    const int number = 5;
    int read = 0;
    NSValue *const value = [NSValue valueWithBytes:&number objCType:@encode(int)];
    [value getValue:&read];
    EXPECT_STREQ([value objCType], "i");
    EXPECT_EQ(read, 5);
    EXPECT_STREQ([[NSValue valueWithPointer:&number] objCType], "^v");
    EXPECT_STREQ([[NSNumber numberWithDouble:0.5] objCType], "d");
    struct Other {
        long one, two;
    } const other = {1, 2};
    EXPECT_STREQ([[NSValue valueWithBytes:&other objCType:@encode(Other)] objCType], @encode(Other));
}
