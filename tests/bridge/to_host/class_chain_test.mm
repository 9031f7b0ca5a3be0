// The walk along an object's class chain to a host class for its wrapper, with the test of the object's kind.
#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include "tests/support/conversion_doubles.h"
#include "tests/support/trace.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

/// The results of isKindOfClass:, in order and NO afterwards, and the classes that it was called with.
std::vector<bool> gAnswers;
std::vector<Class> gAsked;

} // namespace

/// Returns these results.
@interface QZLTestFickle : NSObject
@end

@implementation QZLTestFickle
- (BOOL)isKindOfClass:(Class)asked
{
    gAsked.push_back(asked);
    return gAsked.size() <= gAnswers.size() && gAnswers[gAsked.size() - 1];
}
@end

namespace {

class ClassChain : public LinkedTest {
protected:
    /// A host class that wraps Cocoa objects; its instances are recorded.
    void DefineNotedClass(const std::string &name)
    {
        qzlhost::ClassDefinition definition;
        definition.name = name;
        definition.dataSize = 16;
        definition.constructor = [this](qzlhost::Instance *instance) {
            instances_.push_back(reinterpret_cast<REALobject>(instance));
        };
        definition.destructor = [](qzlhost::Instance *instance) {
            WrapperDestructorHook(reinterpret_cast<REALobject>(instance));
        };
        host().DefineClass(std::move(definition));
    }

    /// An object of a class whose superclasses are QZLTestMiddle, QZLTestFickle and NSObject.
    static id MakeLeaf()
    {
        return MakeObject(MakeClass("QZLTestLeaf", MakeClass("QZLTestMiddle", [QZLTestFickle class])));
    }

    /// The instances that were made, in order.
    const std::vector<REALobject> &Instances() const { return instances_; }

private:
    std::vector<REALobject> instances_;
};

} // namespace

TEST_F(ClassChain, OfADistributedCentreBeginsWithItsOwnClass)
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

TEST_F(ClassChain, IsNotBegunWithoutAnObjectOrAKind)
{
    Host &host = Start();
    DefineNotedClass("NSObjectQZL");
    EXPECT_EQ(NewNSObjectQZL(nil, [NSObject class]), nullptr);
    EXPECT_EQ(NewNSObjectQZL(MakeLeaf(), Nil), nullptr);
    EXPECT_EQ(host.CallsOf("PluginNewInstance"), 0);
}

TEST_F(ClassChain, SkipsNamesOf200Characters)
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

TEST_F(ClassChain, IsGoneThroughToTheRootForAnObjectOfAnotherKind)
{
    Host &host = Start();
    for (const char *name : {"QZLTestLeafQZL", "QZLTestFickleQZL", "NSObjectQZL"})
        DefineNotedClass(name);
    const Registry registry;
    const id object = MakeLeaf();
    const NSUInteger retains = [object retainCount];

    EXPECT_EQ(NewNSObjectQZL(object, [NSTimer class]), nullptr);

    EXPECT_EQ(ArgumentsOf(host, "PluginNewInstance"),
              (std::vector<std::string>{"\"QZLTestLeafQZL\"", "\"QZLTestMiddleQZL\"", "\"QZLTestFickleQZL\"",
                                        "\"NSObjectQZL\""}));
    EXPECT_EQ(gAsked, std::vector<Class>(3, [NSTimer class])) << "once for each instance";
    ASSERT_EQ(Instances().size(), 3u);
    for (const REALobject instance : Instances())
        EXPECT_EQ(WrapperHandle(instance), nil);
    EXPECT_EQ([object retainCount], retains);
    EXPECT_EQ(registry.At(object), nullptr);
    EXPECT_EQ(host.CallsOf("REALUnlockObject"), 0);
    // The instances that were made are left to the host on purpose.
    ExpectLeaks("QZL", 3);
}

TEST_F(ClassChain, GoesOnAfterAnInstanceWasAbandonedAndFillsTheNext)
{
    Host &host = Start();
    for (const char *name : {"QZLTestLeafQZL", "QZLTestMiddleQZL", "NSObjectQZL"})
        DefineNotedClass(name);
    gAnswers = {false, true};
    const id object = MakeLeaf();
    const NSUInteger retains = [object retainCount];
    {
        const Value wrapper = Owned(NewNSObjectQZL(object, [NSTimer class]));
        EXPECT_EQ(host.ClassOf(wrapper), "QZLTestMiddleQZL");
        EXPECT_EQ(host.References(wrapper), 1);
        EXPECT_EQ(WrapperHandle(ObjectOf(wrapper)), object);
        EXPECT_EQ([object retainCount], retains + 1);
        ASSERT_EQ(Instances().size(), 2u) << "no class behind the one that was filled is tried";
        EXPECT_EQ(WrapperHandle(Instances()[0]), nil);
        EXPECT_EQ(host.CallsOf("REALUnlockObject"), 0);
    }
    EXPECT_EQ([object retainCount], retains);
    // The instance that was made first is left to the host on purpose.
    ExpectLeaks("QZLTestLeafQZL", 1);
}

TEST_F(ClassChain, AsksForTheKindOnlyOnceThereIsAnInstance)
{
    Host &host = Start();
    EXPECT_EQ(NewNSObjectQZL(MakeLeaf(), [NSTimer class]), nullptr);
    EXPECT_EQ(host.CallsOf("PluginNewInstance"), 4) << "the host has none of the classes";
    EXPECT_TRUE(gAsked.empty());
}
