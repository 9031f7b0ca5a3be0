// Type IDs and CFGetTypeID.
#include "tests/platform/gnustep/port_testing.h"

#include <CoreText/CoreText.h>

#include <set>

@interface AnswersTypeID : NSObject {
@public
    CFTypeID answer;
}
- (CFTypeID)_cfTypeID;
@end

@implementation AnswersTypeID

- (CFTypeID)_cfTypeID
{
    return answer;
}

@end

namespace {

using TypeIDFunction = CFTypeID (*)();

constexpr TypeIDFunction kFunctions[] = {
    CFURLGetTypeID,
    CFDictionaryGetTypeID,
    CFStringGetTypeID,
    CFNumberGetTypeID,
    CFArrayGetTypeID,
    CFBooleanGetTypeID,
    CFDataGetTypeID,
    CFCharacterSetGetTypeID,
    CFBundleGetTypeID,
    CFSetGetTypeID,
    CFBagGetTypeID,
    CFUUIDGetTypeID,
    CFTimeZoneGetTypeID,
    CFDateGetTypeID,
    CFAttributedStringGetTypeID,
    CFErrorGetTypeID,
    CTFontGetTypeID,
    CTFontCollectionGetTypeID,
    CTFrameGetTypeID,
    CTFramesetterGetTypeID,
    CTGlyphInfoGetTypeID,
    CTLineGetTypeID,
    CTParagraphStyleGetTypeID,
    CTRunGetTypeID,
    CTTypesetterGetTypeID,
    CTRunDelegateGetTypeID,
};

} // namespace

TEST(TypeIDs, ArePositiveAndDistinct)
{
    std::set<CFTypeID> seen;
    for (const TypeIDFunction function : kFunctions) {
        EXPECT_GT(static_cast<SInt32>(function()), 0);
        EXPECT_TRUE(seen.insert(function()).second) << function();
    }
    EXPECT_EQ(seen.size(), 26U);
}

TEST(TypeIDs, OfTollFreeTypesFollowTheObjectsClass)
{
    NSDate *const date = [NSDate date];
    NSCalendarDate *const calendarDate = [NSCalendarDate date];
    EXPECT_EQ(CFGetTypeID(@"constant"), CFStringGetTypeID());
    EXPECT_EQ(CFGetTypeID([NSMutableString string]), CFStringGetTypeID());
    EXPECT_EQ(CFGetTypeID([NSURL URLWithString:@"http://host/"]), CFURLGetTypeID());
    EXPECT_EQ(CFGetTypeID([NSDictionary dictionary]), CFDictionaryGetTypeID());
    EXPECT_EQ(CFGetTypeID([NSMutableDictionary dictionary]), CFDictionaryGetTypeID());
    EXPECT_EQ(CFGetTypeID([NSArray array]), CFArrayGetTypeID());
    EXPECT_EQ(CFGetTypeID([NSNumber numberWithInt:1]), CFNumberGetTypeID());
    EXPECT_EQ(CFGetTypeID([NSNumber numberWithDouble:0.5]), CFNumberGetTypeID());
    EXPECT_EQ(CFGetTypeID([NSDecimalNumber one]), CFNumberGetTypeID());
    EXPECT_EQ(CFGetTypeID([NSNumber numberWithBool:YES]), CFBooleanGetTypeID());
    EXPECT_EQ(CFGetTypeID(kCFBooleanFalse), CFBooleanGetTypeID());
    EXPECT_EQ(CFGetTypeID([NSData data]), CFDataGetTypeID());
    EXPECT_EQ(CFGetTypeID(date), CFDateGetTypeID());
    EXPECT_EQ(CFGetTypeID(calendarDate), CFDateGetTypeID());
    EXPECT_EQ(CFGetTypeID([NSSet set]), CFSetGetTypeID());
    EXPECT_EQ(CFGetTypeID([NSCountedSet set]), CFBagGetTypeID());
    EXPECT_EQ(CFGetTypeID([NSTimeZone timeZoneForSecondsFromGMT:0]), CFTimeZoneGetTypeID());
    EXPECT_EQ(CFGetTypeID([NSCharacterSet letterCharacterSet]), CFCharacterSetGetTypeID());
    EXPECT_EQ(CFGetTypeID([NSBundle mainBundle]), CFBundleGetTypeID());
    EXPECT_EQ(CFGetTypeID([NSError errorWithDomain:@"d" code:1 userInfo:nil]), CFErrorGetTypeID());
    EXPECT_EQ(CFGetTypeID([[[NSAttributedString alloc] initWithString:@"a"] autorelease]),
              CFAttributedStringGetTypeID());
    EXPECT_EQ(CFGetTypeID([NSUUID UUID]), CFUUIDGetTypeID());
}

TEST(TypeIDs, OfAnAddressDictionaryAreADictionarys)
{
    const port_testing::Owned<CFMutableDictionaryRef> dictionary(
        CFDictionaryCreateMutable(nullptr, 0, nullptr, nullptr));
    EXPECT_EQ(CFGetTypeID(dictionary.get()), CFDictionaryGetTypeID());
}

TEST(TypeIDs, OfAnObjectThatHasOneItselfAreThat)
{
    AnswersTypeID *const object = [[[AnswersTypeID alloc] init] autorelease];
    for (const TypeIDFunction function : kFunctions) {
        object->answer = function();
        EXPECT_EQ(CFGetTypeID(object), function());
    }
}

TEST(TypeIDs, OfOtherObjectsAreNoneOfTheListed)
{
    const CFTypeID other = CFGetTypeID([[[NSObject alloc] init] autorelease]);
    EXPECT_EQ(other, 1U);
    for (const TypeIDFunction function : kFunctions)
        EXPECT_NE(other, function());
    EXPECT_EQ(CFGetTypeID([NSNull null]), other);
}

TEST(TypeIDs, HaveTheNamesOfTheirTypes)
{
    const std::pair<CFTypeID, const char *> names[] = {
        {0, "Not A Type"},
        {1, "CFType"},
        {CFURLGetTypeID(), "CFURL"},
        {CFDictionaryGetTypeID(), "CFDictionary"},
        {CFStringGetTypeID(), "CFString"},
        {CFNumberGetTypeID(), "CFNumber"},
        {CFArrayGetTypeID(), "CFArray"},
        {CFBooleanGetTypeID(), "CFBoolean"},
        {CFDataGetTypeID(), "CFData"},
        {CFCharacterSetGetTypeID(), "CFCharacterSet"},
        {CFBundleGetTypeID(), "CFBundle"},
        {CFSetGetTypeID(), "CFSet"},
        {CFBagGetTypeID(), "CFBag"},
        {CFUUIDGetTypeID(), "CFUUID"},
        {CFTimeZoneGetTypeID(), "CFTimeZone"},
        {CFDateGetTypeID(), "CFDate"},
        {CFAttributedStringGetTypeID(), "CFAttributedString"},
        {CFErrorGetTypeID(), "CFError"},
        {CTFontGetTypeID(), "CTFont"},
        {CTFontCollectionGetTypeID(), "CTFontCollection"},
        {CTFrameGetTypeID(), "CTFrame"},
        {CTFramesetterGetTypeID(), "CTFramesetter"},
        {CTGlyphInfoGetTypeID(), "CTGlyphInfo"},
        {CTLineGetTypeID(), "CTLine"},
        {CTParagraphStyleGetTypeID(), "CTParagraphStyle"},
        {CTRunGetTypeID(), "CTRun"},
        {CTTypesetterGetTypeID(), "CTTypesetter"},
        {CTRunDelegateGetTypeID(), "CTRunDelegate"},
    };
    for (const auto &[type, name] : names) {
        const port_testing::Owned<CFStringRef> description(CFCopyTypeIDDescription(type));
        EXPECT_STREQ([(NSString *)description.get() UTF8String], name);
    }
    EXPECT_EQ(CFCopyTypeIDDescription(std::size(names)), nullptr);
}

TEST(TypeIDs, OfANewUUIDAreAUUIDs)
{
    const port_testing::Owned<CFUUIDRef> one(CFUUIDCreate(kCFAllocatorDefault));
    const port_testing::Owned<CFUUIDRef> other(CFUUIDCreate(kCFAllocatorDefault));
    EXPECT_EQ(CFGetTypeID(one.get()), CFUUIDGetTypeID());
    EXPECT_FALSE([(id)one.get() isEqual:(id)other.get()]);
}

TEST(TypeIDs, OfNullIsZero)
{
    EXPECT_EQ(CFGetTypeID(nullptr), 0U);
}
