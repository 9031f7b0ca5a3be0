// Host instances that wrap Cocoa and Core Foundation objects.
#include "bridge/to_host/wrappers.h"

#include <ApplicationServices/ApplicationServices.h>
#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include "tests/bridge/to_host/conversion_doubles.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

using Wrappers = LinkedTest;

CFTypeID gTypeID;

CFTypeID AnswerTypeID(id, SEL)
{
    return gTypeID;
}

struct TypeRow {
    const char *name;
    CFTypeID (*typeID)();
};

const TypeRow kTypes[] = {
    {"CFURL", CFURLGetTypeID},
    {"CFDictionary", CFDictionaryGetTypeID},
    {"CFString", CFStringGetTypeID},
    {"CFNumber", CFNumberGetTypeID},
    {"CFArray", CFArrayGetTypeID},
    {"CFBoolean", CFBooleanGetTypeID},
    {"CFBinaryData", CFDataGetTypeID},
    {"CFCharacterSet", CFCharacterSetGetTypeID},
    {"CFBundle", CFBundleGetTypeID},
    {"CFSet", CFSetGetTypeID},
    {"CFBag", CFBagGetTypeID},
    {"CFUUID", CFUUIDGetTypeID},
    {"CFTimeZone", CFTimeZoneGetTypeID},
    {"CFDate", CFDateGetTypeID},
    {"CFAttributedString", CFAttributedStringGetTypeID},
    {"CFError", CFErrorGetTypeID},
    {"CTFont", CTFontGetTypeID},
    {"CTFontCollection", CTFontCollectionGetTypeID},
    {"CTFrame", CTFrameGetTypeID},
    {"CTFramesetter", CTFramesetterGetTypeID},
    {"CTGlyphInfo", CTGlyphInfoGetTypeID},
    {"CTLine", CTLineGetTypeID},
    {"CTParagraphStyle", CTParagraphStyleGetTypeID},
    {"CTRun", CTRunGetTypeID},
    {"CTTypesetter", CTTypesetterGetTypeID},
    {"CTRunDelegate", CTRunDelegateGetTypeID},
};

} // namespace

TEST_F(Wrappers, RegisteredWrapperIsNewWithoutARegistry)
{
    Host &host = Start();
    DefineWrapperClass(host, "NSTimerQZL");
    const id object = MakeObject([NSObject class]);
    const NSUInteger retains = [object retainCount];
    {
        const Value first = Owned(NewRegisteredWrapper(object, "NSTimerQZL"));
        const Value second = Owned(NewRegisteredWrapper(object, "NSTimerQZL"));
        EXPECT_EQ(host.ClassOf(first), "NSTimerQZL");
        EXPECT_NE(first.ObjectPointer(), second.ObjectPointer());
        EXPECT_EQ(WrapperHandle(ObjectOf(first)), object);
        EXPECT_EQ(host.References(first), 1);
        EXPECT_EQ([object retainCount], retains + 2);
    }
    EXPECT_EQ([object retainCount], retains);
}

TEST_F(Wrappers, RegisteredWrapperIsTheSameWithARegistry)
{
    Host &host = Start();
    DefineWrapperClass(host, "NSTimerQZL");
    const Registry registry;
    const id object = MakeObject([NSObject class]);
    const NSUInteger retains = [object retainCount];
    {
        const Value first = Owned(NewRegisteredWrapper(object, "NSTimerQZL"));
        EXPECT_EQ(FindInstance(object), ObjectOf(first));
        const Value second = Owned(NewRegisteredWrapper(object, "NSTimerQZL"));
        EXPECT_EQ(first.ObjectPointer(), second.ObjectPointer());
        EXPECT_EQ(host.References(first), 2);
        EXPECT_EQ([object retainCount], retains + 1) << "retained once, by the one instance";
    }
    EXPECT_EQ([object retainCount], retains);
    EXPECT_EQ(FindInstance(object), nullptr);
}

TEST_F(Wrappers, RegistryEntryIsReturnedWhateverItsClass)
{
    Host &host = Start();
    DefineWrapperClass(host, "NSTimerQZL");
    DefineWrapperClass(host, "NSPipeQZL");
    const Registry registry;
    const id object = MakeObject([NSObject class]);
    const Value timer = Owned(NewRegisteredWrapper(object, "NSTimerQZL"));
    const Value pipe = Owned(NewRegisteredWrapper(object, "NSPipeQZL"));
    EXPECT_EQ(timer.ObjectPointer(), pipe.ObjectPointer());
}

TEST_F(Wrappers, RegistryComparesByIdentity)
{
    Host &host = Start();
    DefineWrapperClass(host, "NSTimerQZL");
    const Registry registry;
    NSMutableString *const one = [NSMutableString stringWithString:@"equal"];
    NSMutableString *const two = [NSMutableString stringWithString:@"equal"];
    ASSERT_TRUE([one isEqual:two]);
    const Value first = Owned(NewRegisteredWrapper(one, "NSTimerQZL"));
    const Value second = Owned(NewRegisteredWrapper(two, "NSTimerQZL"));
    EXPECT_NE(first.ObjectPointer(), second.ObjectPointer());
}

TEST_F(Wrappers, RegisteredWrapperIsNullForNilAndForAnUnknownClass)
{
    Start();
    const id object = MakeObject([NSObject class]);
    const NSUInteger retains = [object retainCount];
    EXPECT_EQ(NewRegisteredWrapper(nil, "NSTimerQZL"), nullptr);
    EXPECT_EQ(NewRegisteredWrapper(object, "NoSuchClassQZL"), nullptr);
    EXPECT_EQ([object retainCount], retains);
}

TEST_F(Wrappers, KnownWrapperComesWithoutAReferenceWhereTheHostCannotLock)
{
    Host &host = Start(2024.01, [](Host &unloaded) { unloaded.Lack("REALLockObject"); });
    DefineWrapperClass(host, "NSTimerQZL");
    const Registry registry;
    const id object = MakeObject([NSObject class]);
    const Value first = Owned(NewRegisteredWrapper(object, "NSTimerQZL"));
    EXPECT_EQ(NewRegisteredWrapper(object, "NSTimerQZL"), ObjectOf(first));
    EXPECT_EQ(host.References(first), 1);
}

TEST_F(Wrappers, ChainWalkTakesTheNearestClassThatTheHostHas)
{
    Host &host = Start();
    DefineWrapperClass(host, "NSObjectQZL");
    DefineWrapperClass(host, "QZLTestMiddleQZL");
    const Class middle = MakeClass("QZLTestMiddle", [NSObject class]);
    const Class leaf = MakeClass("QZLTestLeaf", middle);
    const Value wrapper = Owned(NewNSObjectQZL(MakeObject(leaf), [NSObject class]));
    EXPECT_EQ(host.ClassOf(wrapper), "QZLTestMiddleQZL");
    EXPECT_EQ(host.References(wrapper), 1);
    const Value root = Owned(NewNSObjectQZL(MakeObject([NSObject class]), [NSObject class]));
    EXPECT_EQ(host.ClassOf(root), "NSObjectQZL");
}

TEST_F(Wrappers, ChainWalkOfADistributedCentreFindsItsOwnClassFirst)
{
    Host &host = Start();
    const id center = [NSDistributedNotificationCenter defaultCenter];
    DefineWrapperClass(host, "NSNotificationCenterQZL");
    {
        const Value wrapper = Owned(NewNSObjectQZL(center, [NSNotificationCenter class]));
        EXPECT_EQ(host.ClassOf(wrapper), "NSNotificationCenterQZL");
    }
    DefineWrapperClass(host, "NSDistributedNotificationCenterQZL");
    const Value wrapper = Owned(NewNSObjectQZL(center, [NSNotificationCenter class]));
    EXPECT_EQ(host.ClassOf(wrapper), "NSDistributedNotificationCenterQZL");
}

TEST_F(Wrappers, ChainWalkRegistersNothing)
{
    Host &host = Start();
    DefineWrapperClass(host, "NSObjectQZL");
    const Registry registry;
    const id object = MakeObject([NSObject class]);
    const NSUInteger retains = [object retainCount];
    const Value first = Owned(NewNSObjectQZL(object, [NSObject class]));
    const Value second = Owned(NewNSObjectQZL(object, [NSObject class]));
    EXPECT_NE(first.ObjectPointer(), second.ObjectPointer());
    EXPECT_EQ([object retainCount], retains + 2);
    EXPECT_EQ(FindInstance(object), nullptr);
}

TEST_F(Wrappers, ChainWalkEndsWithNullWithoutAHostClass)
{
    Start();
    EXPECT_EQ(NewNSObjectQZL(MakeObject([NSObject class]), [NSObject class]), nullptr);
    EXPECT_EQ(NewNSObjectQZL(nil, [NSObject class]), nullptr);
    EXPECT_EQ(NewNSObjectQZL(MakeObject([NSObject class]), Nil), nullptr);
}

TEST_F(Wrappers, ChainWalkSkipsNamesOf200Characters)
{
    Host &host = Start();
    const std::string name199(199, 'A');
    const std::string name200(200, 'B');
    DefineWrapperClass(host, name199 + "QZL");
    DefineWrapperClass(host, name200 + "QZL");
    DefineWrapperClass(host, std::string(199, 'B') + "QZL");
    const Class base = MakeClass(name199, [NSObject class]);
    const Class leaf = MakeClass(name200, base);
    const Value wrapper = Owned(NewNSObjectQZL(MakeObject(leaf), [NSObject class]));
    EXPECT_EQ(host.ClassOf(wrapper), name199 + "QZL");
}

TEST_F(Wrappers, ChainWalkAbandonsInstancesForAnObjectOfAnotherKind)
{
    Host &host = Start();
    DefineWrapperClass(host, "NSObjectQZL");
    const id object = MakeObject([NSObject class]);
    const NSUInteger retains = [object retainCount];
    EXPECT_EQ(NewNSObjectQZL(object, [NSString class]), nullptr);
    EXPECT_EQ([object retainCount], retains);
    // The instance that was made is left to the host on purpose.
    ExpectLeaks("NSObjectQZL", 1);
}

TEST_F(Wrappers, CFTypesHaveTheirClasses)
{
    Host &host = Start();
    const Class typed = MakeClass("QZLTestTyped", [NSObject class]);
    class_addMethod(typed, sel_registerName("_cfTypeID"), reinterpret_cast<IMP>(AnswerTypeID), "Q16@0:8");
    const id object = MakeObject(typed);
    for (const TypeRow &row : kTypes) {
        gTypeID = row.typeID();
        EXPECT_EQ(CFWrapperClassName(object), std::string(row.name) + "QZL");
    }
    gTypeID = 0x7FFFFFFF;
    EXPECT_STREQ(CFWrapperClassName(object), "CFObjectQZL");
    EXPECT_EQ(host.Trace().size(), 0u);
}

TEST_F(Wrappers, CFDataObjectBecomesBinaryData)
{
    Start();
    EXPECT_STREQ(CFWrapperClassName([NSData dataWithBytes:"abc" length:3]), "CFBinaryDataQZL");
}

TEST_F(Wrappers, CFWrapperHoldsARetain)
{
    Host &host = Start();
    DefineCFWrapperClass(host, "CFArrayQZL");
    const id object = MakeObject([NSObject class]);
    const NSUInteger retains = [object retainCount];
    {
        const Value wrapper = Owned(NewCFWrapper(object, "CFArrayQZL"));
        ASSERT_FALSE(wrapper.IsNil());
        EXPECT_EQ(host.References(wrapper), 1);
        const auto *const data = InstanceData<CFWrapperData>(ObjectOf(wrapper));
        EXPECT_EQ(data->handle, object);
        EXPECT_EQ(data->unused, data) << "the class's own field";
        EXPECT_EQ(data->signature, 0x52424346);
        EXPECT_EQ([object retainCount], retains + 1);
    }
    EXPECT_EQ([object retainCount], retains);
}

TEST_F(Wrappers, CFWrapperFallsBackToTheAnyClass)
{
    Host &host = Start();
    const id object = MakeObject([NSObject class]);
    EXPECT_EQ(NewCFWrapper(object, "CFArrayQZL"), nullptr);
    DefineCFWrapperClass(host, "CFObjectQZL");
    const Value wrapper = Owned(NewCFWrapper(object, "CFArrayQZL"));
    EXPECT_EQ(host.ClassOf(wrapper), "CFObjectQZL");
}

TEST_F(Wrappers, CFWrapperWithoutTheSignatureIsAbandoned)
{
    Host &host = Start();
    DefineCFWrapperClass(host, "CFArrayQZL", 0x52424345);
    const id object = MakeObject([NSObject class]);
    const NSUInteger retains = [object retainCount];
    EXPECT_EQ(NewCFWrapper(object, "CFArrayQZL"), nullptr);
    EXPECT_EQ([object retainCount], retains);
    // The instance that was made is left to the host on purpose.
    ExpectLeaks("CFArrayQZL", 1);
}

TEST_F(Wrappers, DestructorHookOfAnInstanceWithoutHandleDoesNothing)
{
    Host &host = Start();
    DefineWrapperClass(host, "NSTimerQZL");
    host.New("NSTimerQZL");
}
