// Objects that claim to be Core Foundation objects become wrappers of those.
#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <ApplicationServices/ApplicationServices.h>

#include "tests/support/conversion_doubles.h"
#include "tests/support/raising.h"
#include "tests/support/row_names.h"
#include "tests/support/throwing.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

CFTypeID gTypeID;
int gTypeIDAsks;
/// Raised when a type ID is asked for.
id gRaised;

} // namespace

/// Returns the type ID that a test sets, or raises.
@interface QZLTestTypedObject : NSObject
@end

@implementation QZLTestTypedObject
- (CFTypeID)_cfTypeID
{
    ++gTypeIDAsks;
    if (gRaised != nil)
        @throw gRaised;
    return gTypeID;
}
@end

/// Raises when it is asked what it responds to.
@interface QZLTestUnwilling : NSObject
@end

@implementation QZLTestUnwilling
- (BOOL)respondsToSelector:(SEL)selector
{
    if (sel_isEqual(selector, sel_registerName("_cfTypeID")))
        [NSException raise:@"QZLTestException" format:@"asked for %s", sel_getName(selector)];
    return [super respondsToSelector:selector];
}
@end

namespace {

class CoreFoundationStep : public LinkedTest {
protected:
    /// A host with a wrapper class for the class chain, and these for Core Foundation objects.
    Host &StartWith(const std::vector<std::string> &coreFoundationClasses)
    {
        Host &host = Start();
        DefineWrapperClass(host, "NSObjectQZL");
        for (const std::string &name : coreFoundationClasses)
            DefineCFWrapperClass(host, name);
        return host;
    }
};

/// Gives the object the method of QZLTestTypedObject, and a type ID; one object in a process.
void AddTypeID(id object)
{
    const IMP answer =
        class_getMethodImplementation([QZLTestTypedObject class], sel_registerName("_cfTypeID"));
    AddMethods(object, "QZLTestTyped", {{"_cfTypeID", answer, "Q16@0:8"}});
}

struct TypeRow {
    const char *hostClass;
    CFTypeID (*typeID)();
};

const TypeRow kTypes[] = {
    {"CFURLQZL", CFURLGetTypeID},
    {"CFDictionaryQZL", CFDictionaryGetTypeID},
    {"CFStringQZL", CFStringGetTypeID},
    {"CFNumberQZL", CFNumberGetTypeID},
    {"CFArrayQZL", CFArrayGetTypeID},
    {"CFBooleanQZL", CFBooleanGetTypeID},
    {"CFBinaryDataQZL", CFDataGetTypeID},
    {"CFCharacterSetQZL", CFCharacterSetGetTypeID},
    {"CFBundleQZL", CFBundleGetTypeID},
    {"CFSetQZL", CFSetGetTypeID},
    {"CFBagQZL", CFBagGetTypeID},
    {"CFUUIDQZL", CFUUIDGetTypeID},
    {"CFTimeZoneQZL", CFTimeZoneGetTypeID},
    {"CFDateQZL", CFDateGetTypeID},
    {"CFAttributedStringQZL", CFAttributedStringGetTypeID},
    {"CFErrorQZL", CFErrorGetTypeID},
    {"CTFontQZL", CTFontGetTypeID},
    {"CTFontCollectionQZL", CTFontCollectionGetTypeID},
    {"CTFrameQZL", CTFrameGetTypeID},
    {"CTFramesetterQZL", CTFramesetterGetTypeID},
    {"CTGlyphInfoQZL", CTGlyphInfoGetTypeID},
    {"CTLineQZL", CTLineGetTypeID},
    {"CTParagraphStyleQZL", CTParagraphStyleGetTypeID},
    {"CTRunQZL", CTRunGetTypeID},
    {"CTTypesetterQZL", CTTypesetterGetTypeID},
    {"CTRunDelegateQZL", CTRunDelegateGetTypeID},
};

class CoreFoundationType : public CoreFoundationStep, public testing::WithParamInterface<TypeRow> {};

struct NumberedTypeID {
    const char *name;
    CFTypeID typeID;
    bool isCoreFoundation;
};

/// Only the low 32 bits count, and they are signed.
const NumberedTypeID kTypeIDs[] = {
    {"Zero", 0, false},
    {"MinusOneOf32Bits", 0xFFFFFFFF, false},
    {"LowestOf32Bits", 0x80000000, false},
    {"MinusOneOf64Bits", ~CFTypeID{0}, false},
    {"LowBitsZero", 0x100000000, false},
    {"LowBitsNegative", 0x180000000, false},
    {"PositiveOf64BitsWithLowBitsNegative", 0x00000007FFFFFFFF, false},
    {"HighestOf32Bits", 0x7FFFFFFF, true},
    {"UnknownType", 0x4242, true},
    {"NegativeOf64BitsWithLowBitsPositive", 0xFFFFFFFF7FFFFFFF, true},
};

class CoreFoundationTypeID : public CoreFoundationStep, public testing::WithParamInterface<NumberedTypeID> {};

} // namespace

TEST_P(CoreFoundationType, HasItsHostClass)
{
    Host &host = StartWith({GetParam().hostClass, "CFObjectQZL"});
    gTypeID = GetParam().typeID();
    ExpectNewWrapperEachTime(host, MakeObject([QZLTestTypedObject class]), GetParam().hostClass);
}

TEST_P(CoreFoundationType, WithoutItsHostClassIsAnyObject)
{
    Host &host = StartWith({"CFObjectQZL"});
    gTypeID = GetParam().typeID();
    EXPECT_EQ(host.ClassOf(Convert(MakeObject([QZLTestTypedObject class]))), "CFObjectQZL");
}

INSTANTIATE_TEST_SUITE_P(Cocoa, CoreFoundationType, testing::ValuesIn(kTypes),
                         [](const testing::TestParamInfo<TypeRow> &info) {
                             return std::string(info.param.hostClass);
                         });

TEST_P(CoreFoundationTypeID, CountsByItsLowBits)
{
    Host &host = StartWith({"CFObjectQZL"});
    gTypeID = GetParam().typeID;
    const Value variant = Convert(MakeObject([QZLTestTypedObject class]));
    EXPECT_EQ(host.ClassOf(variant), GetParam().isCoreFoundation ? "CFObjectQZL" : "NSObjectQZL");
}

INSTANTIATE_TEST_SUITE_P(Cocoa, CoreFoundationTypeID, testing::ValuesIn(kTypeIDs), kNameOfRow);

TEST_F(CoreFoundationStep, ComesBeforeTheClassChain)
{
    Host &host = StartWith({"CFObjectQZL"});
    DefineWrapperClass(host, "QZLTestTypedQZL");
    gTypeID = 1;
    EXPECT_EQ(host.ClassOf(Convert(MakeObject([QZLTestTypedObject class]))), "CFObjectQZL");
}

TEST_F(CoreFoundationStep, ComesAfterTheClassRows)
{
    Host &host = StartWith({"CFObjectQZL"});
    DefineWrapperClass(host, "NSPipeQZL");
    gTypeID = 1;
    NSPipe *const pipe = [NSPipe pipe];
    AddTypeID(pipe);
    EXPECT_EQ(host.ClassOf(Convert(pipe)), "NSPipeQZL");
    EXPECT_EQ(gTypeIDAsks, 0);
}

TEST_F(CoreFoundationStep, IsNotReachedByAValue)
{
    StartWith({"CFObjectQZL"});
    gTypeID = 1;
    NSValue *const value = [NSValue valueWithPointer:nullptr];
    AddTypeID(value);
    EXPECT_EQ(NewVariantFromNSObject(value), nullptr);
    EXPECT_EQ(gTypeIDAsks, 0);
}

TEST_F(CoreFoundationStep, WithoutAnyHostClassEndsWithNull)
{
    Host &host = StartWith({});
    gTypeID = CFURLGetTypeID();
    const id object = MakeObject([QZLTestTypedObject class]);
    const NSUInteger retains = [object retainCount];
    EXPECT_EQ(NewVariantFromNSObject(object), nullptr);
    EXPECT_EQ([object retainCount], retains);
    EXPECT_EQ(host.CallsOf("PluginNewInstance"), 2) << "the class chain is not tried";
}

TEST_F(CoreFoundationStep, InstanceWithoutTheSignatureIsAbandonedForNull)
{
    Host &host = StartWith({"CFObjectQZL"});
    DefineCFWrapperClass(host, "CFURLQZL", 0x52424345);
    gTypeID = CFURLGetTypeID();
    const id object = MakeObject([QZLTestTypedObject class]);
    const NSUInteger retains = [object retainCount];
    EXPECT_EQ(NewVariantFromNSObject(object), nullptr);
    EXPECT_EQ([object retainCount], retains);
    // The instance that was made is left to the host on purpose.
    ExpectLeaks("CFURLQZL", 1);
}

TEST_F(CoreFoundationStep, SignatureOfWhichOnlyTheLowBitsMatchIsNone)
{
    Host &host = Start();
    DefineCFWrapperClass(host, "CFObjectQZL", 0x100000000 + kCFWrapperSignature);
    gTypeID = 1;
    EXPECT_EQ(NewVariantFromNSObject(MakeObject([QZLTestTypedObject class])), nullptr);
    // The instance that was made is left to the host on purpose.
    ExpectLeaks("CFObjectQZL", 1);
}

TEST_F(CoreFoundationStep, ExceptionWhileTheTypeIsAskedGoesOnWithTheClassChain)
{
    Host &host = StartWith({"CFObjectQZL"});
    gRaised = [NSException exceptionWithName:@"QZLTestException" reason:@"no type" userInfo:nil];
    const id object = MakeObject([QZLTestTypedObject class]);
    const Value variant = Convert(object);
    EXPECT_EQ(gTypeIDAsks, 1);
    EXPECT_EQ(host.ClassOf(variant), "NSObjectQZL");
    EXPECT_EQ(HandleOf<id>(host, variant), object);
    EXPECT_TRUE(host.TakeException().IsNil());
}

TEST_F(CoreFoundationStep, ExceptionWhileTheSelectorIsAskedForGoesOnWithTheClassChain)
{
    Host &host = StartWith({"CFObjectQZL"});
    const id object = MakeObject([QZLTestUnwilling class]);
    ASSERT_NE(ExceptionRaisedBy([&] { [object respondsToSelector:sel_registerName("_cfTypeID")]; }), nil);
    EXPECT_EQ(host.ClassOf(Convert(object)), "NSObjectQZL");
}

TEST_F(CoreFoundationStep, ThrownObjectThatIsNoExceptionPassesToTheCaller)
{
    StartWith({"CFObjectQZL"});
    gRaised = @"no exception";
    id caught = nil;
    @try {
        NewVariantFromNSObject(MakeObject([QZLTestTypedObject class]));
    } @catch (NSString *thrown) {
        caught = thrown;
    }
    EXPECT_EQ(caught, gRaised);
}

namespace {

/// What the host does instead of making an instance.
void (*gOnNewInstance)();
int gNewInstances;

void *FailInsteadOfNewInstance(const char *)
{
    ++gNewInstances;
    gOnNewInstance();
    return nullptr;
}

/// On a host whose function for new instances does not return.
class CoreFoundationInstance : public CoreFoundationStep {
protected:
    id StartFailing(void (*failure)())
    {
        StartReplacing("PluginNewInstance", reinterpret_cast<void *>(&FailInsteadOfNewInstance));
        gOnNewInstance = failure;
        gTypeID = 1;
        return MakeObject([QZLTestTypedObject class]);
    }
};

} // namespace

TEST_F(CoreFoundationInstance, ThatIsRefusedByAStandardExceptionPassesIt)
{
    const id object = StartFailing(ThrowForTest);
    const NSUInteger retains = [object retainCount];
    EXPECT_TRUE(EndsThrown([&] { NewVariantFromNSObject(object); }));
    EXPECT_EQ(gNewInstances, 1) << "the class chain is not tried";
    EXPECT_EQ([object retainCount], retains);
}

TEST_F(CoreFoundationInstance, ThatIsRefusedByAnObjectThatIsNoExceptionPassesIt)
{
    const id object = StartFailing([] { @throw @"no exception"; });
    const NSUInteger retains = [object retainCount];
    id caught = nil;
    @try {
        NewVariantFromNSObject(object);
    } @catch (NSString *thrown) {
        caught = thrown;
    }
    EXPECT_TRUE([caught isEqual:@"no exception"]);
    EXPECT_EQ(gNewInstances, 1) << "the class chain is not tried";
    EXPECT_EQ([object retainCount], retains);
}

TEST_F(CoreFoundationStep, ObjectThatDoesNotAnswerTakesTheClassChain)
{
    Host &host = StartWith({"CFObjectQZL"});
    EXPECT_EQ(host.ClassOf(Convert(MakeObject([NSObject class]))), "NSObjectQZL");
}
