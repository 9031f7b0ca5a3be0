// Host instances that wrap Cocoa and Core Foundation objects.
#include "bridge/to_host/wrappers.h"

#include <ApplicationServices/ApplicationServices.h>
#import <Foundation/Foundation.h>

#include "bridge/instance_data.h"
#include "tests/support/conversion_doubles.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

using Wrappers = LinkedTest;

} // namespace

/// Returns another object from -retain, as a proxy may.
@interface QZLTestSubstituted : NSObject {
@public
    id substitute;
}
@end

@implementation QZLTestSubstituted
- (instancetype)retain
{
    return [substitute retain];
}
@end

namespace {

QZLTestSubstituted *MakeSubstituted()
{
    QZLTestSubstituted *const made = MakeObject([QZLTestSubstituted class]);
    made->substitute = MakeObject([NSObject class]);
    return made;
}

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

TEST_F(Wrappers, RegistryHasTheConvertedObjectWhateverItsRetainReturns)
{
    Host &host = Start();
    DefineWrapperClass(host, "NSTimerQZL");
    const Registry registry;
    QZLTestSubstituted *const object = MakeSubstituted();
    const Value wrapper = Owned(NewRegisteredWrapper(object, "NSTimerQZL"));
    EXPECT_EQ(WrapperHandle(ObjectOf(wrapper)), object->substitute) << "the handle is what was retained";
    EXPECT_EQ([object->substitute retainCount], 2u);
    EXPECT_EQ(registry.At(object), ObjectOf(wrapper));
    EXPECT_EQ(registry.At(object->substitute), nullptr);

    const Value again = Owned(NewRegisteredWrapper(object, "NSTimerQZL"));
    EXPECT_EQ(again.ObjectPointer(), wrapper.ObjectPointer());
    EXPECT_EQ(host.References(wrapper), 2);
    EXPECT_EQ([object->substitute retainCount], 2u);
}

TEST_F(Wrappers, RegisteredWrapperIsNullForNilAndForAnUnknownClass)
{
    Host &host = Start();
    DefineWrapperClass(host, "NSTimerQZL");
    const Registry registry;
    const id object = MakeObject([NSObject class]);
    const NSUInteger retains = [object retainCount];
    EXPECT_EQ(NewRegisteredWrapper(nil, "NSTimerQZL"), nullptr);
    EXPECT_EQ(host.CallsOf("PluginNewInstance"), 0);
    EXPECT_EQ(NewRegisteredWrapper(object, "NoSuchClassQZL"), nullptr);
    EXPECT_EQ([object retainCount], retains);
    EXPECT_EQ(registry.At(object), nullptr);
}

TEST_F(Wrappers, RegisteredWrapperComesWithoutAReferenceIfTheHostCannotLock)
{
    Host &host = StartLacking({"REALLockObject"});
    DefineWrapperClass(host, "NSTimerQZL");
    const Registry registry;
    const id object = MakeObject([NSObject class]);
    const Value first = Owned(NewRegisteredWrapper(object, "NSTimerQZL"));
    EXPECT_EQ(NewRegisteredWrapper(object, "NSTimerQZL"), ObjectOf(first));
    EXPECT_EQ(host.References(first), 1);
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

TEST_F(Wrappers, CFWrapperFallsBackToTheGeneralClass)
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

namespace {

/// The registry's entry for the object at its last release.
const Registry *gRegistry;
REALobject gEntryAtRelease;

} // namespace

/// Looks itself up in the registry when it is released.
@interface QZLTestEntryWatcher : NSObject
@end

@implementation QZLTestEntryWatcher
- (oneway void)release
{
    gEntryAtRelease = gRegistry->At(self);
    [super release];
}
@end

TEST_F(Wrappers, EntryIsGoneBeforeTheObjectIsReleased)
{
    Host &host = Start();
    DefineWrapperClass(host, "NSTimerQZL");
    const Registry registry;
    gRegistry = &registry;
    const id object = [[QZLTestEntryWatcher alloc] init];
    {
        const Value wrapper = Owned(NewRegisteredWrapper(object, "NSTimerQZL"));
        gEntryAtRelease = registry.At(object);
        ASSERT_EQ(gEntryAtRelease, ObjectOf(wrapper));
    }
    EXPECT_EQ(gEntryAtRelease, nullptr);
    [object release];
}
