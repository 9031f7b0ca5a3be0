// Distinguishes objects with an isKindOfClass: of their own from those with NSObject's.
#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include "bridge/to_host/root_class_kind.h"
#include "tests/support/conversion_doubles.h"
#include "tests/support/replaced_method.h"

namespace {

class RootClassKind : public testing::Test {
    qzlhost::AutoreleasePool pool_;
};

BOOL AnswerNo(id, SEL, Class)
{
    return NO;
}

const RuntimeMethod kOwnKind = {"isKindOfClass:", reinterpret_cast<IMP>(AnswerNo), "C24@0:8#16"};

/// Returns NSObject's method for any selector.
IMP AnswerRootMethod(id, SEL, SEL selector)
{
    return [NSObject instanceMethodForSelector:selector];
}

} // namespace

/// Counts the messages that it gets.
@interface QZLTestSilentProxy : NSProxy {
@public
    int _messages;
}
@end

@implementation QZLTestSilentProxy
- (NSMethodSignature *)methodSignatureForSelector:(SEL)selector
{
    (void)selector;
    ++_messages;
    return [NSObject instanceMethodSignatureForSelector:@selector(self)];
}
- (void)forwardInvocation:(NSInvocation *)invocation
{
    (void)invocation;
    ++_messages;
}
- (BOOL)isKindOfClass:(Class)asked
{
    (void)asked;
    ++_messages;
    return NO;
}
- (IMP)methodForSelector:(SEL)selector
{
    ++_messages;
    return [NSObject instanceMethodForSelector:selector];
}
- (Class)class
{
    ++_messages;
    return [NSObject class];
}
@end

/// A root class other than NSObject.
__attribute__((objc_root_class))
@interface QZLTestOtherRoot {
    Class _isa;
}
+ (void)initialize;
+ (Class)itself;
@end

@implementation QZLTestOtherRoot
+ (void)initialize
{
}
+ (Class)itself
{
    return self;
}
- (BOOL)isKindOfClass:(Class)asked
{
    (void)asked;
    return NO;
}
@end

TEST_F(RootClassKind, IsOfObjectsThatInheritIt)
{
    EXPECT_TRUE(InheritsRootIsKindOfClass([NSObject class]));
    EXPECT_TRUE(
        InheritsRootIsKindOfClass(MakeClass("QZLTestLeaf", MakeClass("QZLTestMiddle", [NSObject class]))));
    EXPECT_TRUE(InheritsRootIsKindOfClass(object_getClass(@"text")));
    EXPECT_TRUE(InheritsRootIsKindOfClass(object_getClass([NSPipe pipe])));
}

TEST_F(RootClassKind, IsNotOfObjectsWithAMethodOfTheirOwn)
{
    EXPECT_FALSE(InheritsRootIsKindOfClass(MakeClass("QZLTestOwnKind", [NSObject class], { kOwnKind })));
}

TEST_F(RootClassKind, IsNotOfObjectsWithASuperclassThatHasAMethodOfItsOwn)
{
    const Class ownKind = MakeClass("QZLTestOwnKind", [NSObject class], { kOwnKind });
    EXPECT_FALSE(InheritsRootIsKindOfClass(MakeClass("QZLTestLeaf", MakeClass("QZLTestMiddle", ownKind))));
}

TEST_F(RootClassKind, IsNotOfAnObjectWhoseClassGotAMethodMeanwhile)
{
    const Class middle = MakeClass("QZLTestMiddle", [NSObject class]);
    const id object = MakeObject(MakeClass("QZLTestLeaf", middle));
    EXPECT_TRUE(InheritsRootIsKindOfClass(object_getClass(object)));
    class_addMethod(middle, sel_registerName(kOwnKind.selector), kOwnKind.implementation, kOwnKind.types);
    EXPECT_FALSE(InheritsRootIsKindOfClass(object_getClass(object)));
}

TEST_F(RootClassKind, IsNotOfAnObjectThatGotAnotherClassMeanwhile)
{
    const id object = MakeObject([NSObject class]);
    EXPECT_TRUE(InheritsRootIsKindOfClass(object_getClass(object)));
    AddMethods(object, "QZLTestOwnKind", {kOwnKind});
    EXPECT_FALSE(InheritsRootIsKindOfClass(object_getClass(object)));
    object_setClass(object, [NSObject class]);
    EXPECT_TRUE(InheritsRootIsKindOfClass(object_getClass(object)));
}

TEST_F(RootClassKind, IsOfNoObjectOnceNSObjectsMethodIsAnother)
{
    const id object = MakeObject([NSObject class]);
    ASSERT_TRUE(InheritsRootIsKindOfClass(object_getClass(object)));
    bool inherits = true;
    {
        const ReplacedMethod replaced(class_getInstanceMethod([NSObject class], @selector(isKindOfClass:)),
                                      &AnswerNo);
        inherits = InheritsRootIsKindOfClass(object_getClass(object));
    }
    EXPECT_FALSE(inherits);
    EXPECT_TRUE(InheritsRootIsKindOfClass(object_getClass(object)));
}

TEST_F(RootClassKind, IsNotWhatTheClassSaysOfItsMethods)
{
    const Class liar = MakeClass("QZLTestLiar", [NSObject class], { kOwnKind });
    class_addMethod(object_getClass(liar), @selector(instanceMethodForSelector:),
                    reinterpret_cast<IMP>(AnswerRootMethod), "^?24@0:8:16");
    ASSERT_EQ([liar instanceMethodForSelector:@selector(isKindOfClass:)],
              [NSObject instanceMethodForSelector:@selector(isKindOfClass:)]);
    EXPECT_FALSE(InheritsRootIsKindOfClass(liar));
}

TEST_F(RootClassKind, IsNotOfAProxyWhichIsSentNothing)
{
    QZLTestSilentProxy *const proxy = [QZLTestSilentProxy alloc];
    EXPECT_FALSE(InheritsRootIsKindOfClass(object_getClass(proxy)));
    EXPECT_EQ(proxy->_messages, 0);
    [proxy release];
}

TEST_F(RootClassKind, IsNotOfObjectsOfAnotherRootClass)
{
    const id object = class_createInstance([QZLTestOtherRoot itself], 0);
    EXPECT_FALSE(InheritsRootIsKindOfClass(object_getClass(object)));
    object_dispose(object);
}

TEST_F(RootClassKind, IsNotOfClassObjects)
{
    EXPECT_FALSE(InheritsRootIsKindOfClass(object_getClass([NSObject class])));
    EXPECT_FALSE(InheritsRootIsKindOfClass(object_getClass([NSPipe class])));
}
