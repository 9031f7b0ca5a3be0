// Objects that no other step takes become wrappers along their class chain. Proxies become what they claim to
// be.
#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <ApplicationServices/ApplicationServices.h>

#include "tests/support/conversion_doubles.h"

using qzlhost::Host;
using qzlhost::Value;

namespace code = qzlhost::code;

namespace {

using Fallback = LinkedTest;
using Proxies = LinkedTest;

} // namespace

/// Claims to be of no class, not even of its own.
@interface QZLTestOfNoKind : NSObject
@end

@implementation QZLTestOfNoKind
- (BOOL)isKindOfClass:(Class)asked
{
    (void)asked;
    return NO;
}
@end

namespace {
Class gAnsweredClass;
}

/// Claims to be of another class.
@interface QZLTestOtherClass : NSObject
@end

@implementation QZLTestOtherClass
- (Class)class
{
    return gAnsweredClass;
}
@end

/// Claims to be of a class without being so.
@interface QZLTestProxy : NSProxy {
    Class _class;
    CFTypeID _typeID;
    NSUInteger _retains;
}
- (instancetype)initWithClass:(Class)cocoaClass typeID:(CFTypeID)typeID;
@end

@implementation QZLTestProxy
- (instancetype)initWithClass:(Class)cocoaClass typeID:(CFTypeID)typeID
{
    _class = cocoaClass;
    _typeID = typeID;
    _retains = 1;
    return self;
}
- (Class)class
{
    return _class;
}
- (BOOL)isKindOfClass:(Class)asked
{
    return DescendsFrom(_class, asked);
}
- (BOOL)respondsToSelector:(SEL)selector
{
    return _typeID != 0 && sel_isEqual(selector, sel_registerName("_cfTypeID"));
}
- (CFTypeID)_cfTypeID
{
    return _typeID;
}
- (instancetype)retain
{
    ++_retains;
    return self;
}
- (oneway void)release
{
    if (--_retains == 0)
        [self dealloc];
}
- (NSUInteger)retainCount
{
    return _retains;
}
@end

/// Forwards every message to its target.
@interface QZLTestForwarder : NSProxy {
    id _target;
}
- (instancetype)initWithTarget:(id)target;
@end

@implementation QZLTestForwarder
- (instancetype)initWithTarget:(id)target
{
    _target = [target retain];
    return self;
}
- (void)dealloc
{
    [_target release];
    [super dealloc];
}
- (Class)class
{
    return [_target class];
}
- (BOOL)isKindOfClass:(Class)asked
{
    return [_target isKindOfClass:asked];
}
- (BOOL)respondsToSelector:(SEL)selector
{
    return [_target respondsToSelector:selector];
}
- (NSMethodSignature *)methodSignatureForSelector:(SEL)selector
{
    return [_target methodSignatureForSelector:selector];
}
- (void)forwardInvocation:(NSInvocation *)invocation
{
    [invocation invokeWithTarget:_target];
}
@end

namespace {

/// A proxy that claims to be of this class.
id MakeProxy(const char *className, CFTypeID typeID = 0)
{
    QZLTestProxy *const proxy = [QZLTestProxy alloc];
    return [[proxy initWithClass:objc_getClass(className) typeID:typeID] autorelease];
}

id MakeForwarder(id target)
{
    return [[[QZLTestForwarder alloc] initWithTarget:target] autorelease];
}

struct ProxiedClass {
    const char *className;
    const char *hostClass;
    bool registered;
};

const ProxiedClass kProxiedClasses[] = {
    {"NSPipe", "NSPipeQZL", true},
    {"NSSearchField", "NSTextFieldQZL", true},
    {"NSToolbarItem", "NSToolbarItemQZL", true},
    {"NSMutableCharacterSet", "NSCharacterSetQZL", true},
    {"NSMutableURLRequest", "NSURLRequestQZL", true},
    {"NSBitmapImageRep", "NSImageRepQZL", false},
    {"NSMutableIndexSet", "NSIndexSetQZL", false},
    {"NSButton", "NSViewQZL", false},
    {"NSPanel", "NSWindowQZL", false},
    {"NSNotification", "NSNotificationQZL", true},
    {"NSDistributedNotificationCenter", "NSNotificationCenterQZL", false},
    {"NSOperationQueue", "NSObjectQZL", false},
};

class ProxiedRow : public Proxies, public testing::WithParamInterface<ProxiedClass> {};

} // namespace

TEST_F(Fallback, TakesTheNearestClassThatTheHostHas)
{
    Host &host = Start();
    DefineWrapperClass(host, "NSObjectQZL");
    DefineWrapperClass(host, "QZLTestMiddleQZL");
    ExpectNewWrapperEachTime(
        host, MakeObject(MakeClass("QZLTestLeaf", MakeClass("QZLTestMiddle", [NSObject class]))),
        "QZLTestMiddleQZL");
}

TEST_F(Fallback, WithoutAHostClassIsNull)
{
    Host &host = Start();
    const id object = MakeObject([NSObject class]);
    const NSUInteger retains = [object retainCount];
    EXPECT_EQ(NewVariantFromNSObject(object), nullptr);
    EXPECT_EQ([object retainCount], retains);
    EXPECT_EQ(host.CallsOf("PluginNewInstance"), 1);
}

TEST_F(Fallback, WithoutPluginNewInstanceIsNull)
{
    StartLacking({"PluginNewInstance"});
    EXPECT_EQ(NewVariantFromNSObject(MakeObject([NSObject class])), nullptr);
}

TEST_F(Fallback, TakesAnObjectOfNoKind)
{
    Host &host = Start();
    DefineWrapperClass(host, "QZLTestOfNoKindQZL");
    const id object = MakeObject([QZLTestOfNoKind class]);
    const Value variant = Convert(object);
    EXPECT_EQ(host.ClassOf(variant), "QZLTestOfNoKindQZL");
    EXPECT_EQ(HandleOf<id>(host, variant), object);
}

TEST_F(Fallback, AsksTheObjectForItsClass)
{
    Host &host = Start();
    DefineWrapperClass(host, "QZLTestOtherClassQZL");
    DefineWrapperClass(host, "QZLTestOfNoKindQZL");
    gAnsweredClass = [QZLTestOfNoKind class];
    EXPECT_EQ(host.ClassOf(Convert(MakeObject([QZLTestOtherClass class]))), "QZLTestOfNoKindQZL");
}

TEST_F(Fallback, ObjectWithoutAClassIsNull)
{
    Host &host = Start();
    DefineWrapperClass(host, "NSObjectQZL");
    gAnsweredClass = Nil;
    EXPECT_EQ(NewVariantFromNSObject(MakeObject([QZLTestOtherClass class])), nullptr);
    EXPECT_EQ(host.CallsOf("PluginNewInstance"), 0);
}

TEST_F(Fallback, WrapsAClassObject)
{
    Host &host = Start();
    DefineWrapperClass(host, "NSObjectQZL");
    const Value variant = Convert([NSObject class]);
    EXPECT_EQ(host.ClassOf(variant), "NSObjectQZL");
    EXPECT_EQ(HandleOf<id>(host, variant), [NSObject class]);
}

TEST_P(ProxiedRow, IsTheRowOfTheClassThatTheProxyClaims)
{
    Host &host = Start();
    for (const ProxiedClass &row : kProxiedClasses)
        if (!host.HasClass(row.hostClass))
            DefineWrapperClass(host, row.hostClass);
    DefineWrapperClass(host, "QZLTestProxyQZL");
    DefineWrapperClass(host, "NSProxyQZL");
    const Registry registry;
    const id proxy = MakeProxy(GetParam().className);
    {
        const Value variant = Convert(proxy);
        EXPECT_EQ(host.ClassOf(variant), GetParam().hostClass);
        EXPECT_EQ(HandleOf<id>(host, variant), proxy);
        EXPECT_EQ([proxy retainCount], 2u);
        EXPECT_EQ(registry.At(proxy), GetParam().registered ? ObjectOf(variant) : nullptr);
    }
    EXPECT_EQ([proxy retainCount], 1u);
    EXPECT_EQ(registry.At(proxy), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Cocoa, ProxiedRow, testing::ValuesIn(kProxiedClasses),
                         [](const testing::TestParamInfo<ProxiedClass> &info) {
                             return std::string(info.param.className);
                         });

TEST_F(Proxies, CoreFoundationProxyIsWrappedAsItsType)
{
    Host &host = Start();
    DefineCFWrapperClass(host, "CTLineQZL");
    const id proxy = MakeProxy("NSObject", CTLineGetTypeID());
    {
        const Value variant = Convert(proxy);
        EXPECT_EQ(host.ClassOf(variant), "CTLineQZL");
        EXPECT_EQ([proxy retainCount], 2u);
    }
    EXPECT_EQ([proxy retainCount], 1u);
}

TEST_F(Proxies, ForwarderOfAStringIsAString)
{
    Start();
    const Value variant = Convert(MakeForwarder([NSMutableString stringWithString:@"text"]));
    EXPECT_EQ(variant.Code(), code::String);
    EXPECT_EQ(variant.AsString(), "text");
}

TEST_F(Proxies, ForwarderOfAnArrayIsAnArray)
{
    Host &host = Start();
    const Value array = Convert(MakeForwarder([NSArray arrayWithObjects:@"one", @"two", nil]));
    ASSERT_EQ(host.ArrayCount(array), 2);
    EXPECT_EQ(host.ArrayElement(array, 1).AsString(), "two");
}

TEST_F(Proxies, ForwarderOfANumberIsANumber)
{
    Start();
    const Value variant = Convert(MakeForwarder([NSNumber numberWithInt:123456]));
    EXPECT_EQ(variant.Code(), code::Int64);
    EXPECT_EQ(variant.AsInteger(), 123456);
}

TEST_F(Proxies, ForwarderOfABooleanIsNoBooleanByIdentity)
{
    Host &host = Start();
    Convert(MakeForwarder([NSNumber numberWithBool:YES]));
    // It is read as a number by its type, "c" or "C".
    const bool isChar = std::string([[NSNumber numberWithBool:YES] objCType]) == "c";
    EXPECT_EQ(host.CallsOf("IntegerToVariant"), isChar ? 0 : 1);
    EXPECT_EQ(host.CallsOf("BooleanToVariant"), isChar ? 1 : 0);
}

TEST_F(Proxies, ForwarderOfARowsObjectIsThatRows)
{
    Host &host = Start();
    DefineWrapperClass(host, "NSPipeQZL");
    const id proxy = MakeForwarder([NSPipe pipe]);
    const Value variant = Convert(proxy);
    EXPECT_EQ(host.ClassOf(variant), "NSPipeQZL");
    EXPECT_EQ(HandleOf<id>(host, variant), proxy) << "the proxy itself, not what it stands for";
}
