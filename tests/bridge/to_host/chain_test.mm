// The order of the steps that turn a Cocoa object into a host value, by objects that two steps could take.
#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <CoreFoundation/CoreFoundation.h>

#include "family/family.h"
#include "tests/support/conversion_doubles.h"
#include "tests/support/row_names.h"

using qzlhost::Host;
using qzlhost::Value;

@interface NSObject (QZLTestObjectWrapper)
+ (id)wrap:(REALobject)object;
@end

namespace code = qzlhost::code;

namespace {

using ConversionChain = LinkedTest;

Class gClaimedClass;

/// An isKindOfClass: that returns YES for the claimed class, too.
BOOL IsAlsoOfClaimedClass(id self, SEL, Class asked)
{
    return asked == gClaimedClass || DescendsFrom(object_getClass(self), asked);
}

/// Makes an object claim to be of this class, too; one object in a process.
id ClaimingToBe(const char *className, id object, std::vector<RuntimeMethod> methods = {})
{
    gClaimedClass = objc_getClass(className);
    methods.push_back({"isKindOfClass:", reinterpret_cast<IMP>(IsAlsoOfClaimedClass), "C24@0:8#16"});
    AddMethods(object, "QZLTestClaimant", methods);
    return object;
}

/// An object that some step takes.
struct Kind {
    const char *name;
    id (*make)();
};

id MakeNumber()
{
    return [NSNumber numberWithInt:123456];
}

const Kind kKinds[] = {
    {"URL", [] { return id([NSURL URLWithString:@"http://www.example.com/"]); }},
    {"FileURL", [] { return id([NSURL fileURLWithPath:@"/tmp"]); }},
    {"String", [] { return id(@"text"); }},
    {"EmptyString", [] { return id(@""); }},
    {"Data", [] { return id([NSData dataWithBytes:"abc" length:3]); }},
    {"Array", [] { return id([NSArray arrayWithObject:@"element"]); }},
    {"Set", [] { return id([NSSet setWithObject:@"element"]); }},
    {"False", [] { return id(kCFBooleanFalse); }},
    {"True", [] { return id(kCFBooleanTrue); }},
    {"Number", MakeNumber},
    {"Date", [] { return id([NSDate dateWithTimeIntervalSinceReferenceDate:0]); }},
    {"Dictionary", [] { return id([NSDictionary dictionaryWithObject:@"value" forKey:@"key"]); }},
    {"RowOfFixedName", [] { return id([NSPipe pipe]); }},
    {"RowOfClassChain", [] { return id([NSIndexSet indexSet]); }},
    {"Value", [] { return id([NSValue valueWithSize:NSMakeSize(1, 2)]); }},
    {"ValueOfUnknownStructure", [] { return id([NSValue valueWithPointer:nullptr]); }},
    {"PlainObject", [] { return MakeObject([NSObject class]); }},
    {"ClassObject", [] { return id([NSObject class]); }},
};

class RegisteredObject : public ConversionChain, public testing::WithParamInterface<Kind> {};

} // namespace

TEST_F(ConversionChain, NullObjectIsNullEvenWhenRegistered)
{
    Host &host = Start();
    DefineWrapperClass(host, "NSNullQZL");
    Registry registry;
    const Value entered = host.New("NSNullQZL");
    registry.Enter([NSNull null], entered);
    EXPECT_EQ(NewVariantFromNSObject([NSNull null]), nullptr);
    EXPECT_EQ(NewVariantFromNSObject(nil), nullptr);
    EXPECT_EQ(host.References(entered), 1);
}

TEST_F(ConversionChain, ObjectEqualToTheNullObjectIsConverted)
{
    Host &host = Start();
    DefineWrapperClass(host, "NSObjectQZL");
    const auto equal = +[](id, SEL, id) -> BOOL { return YES; };
    const id object = MakeObject([NSObject class]);
    AddMethods(object, "QZLTestEqual", {{"isEqual:", reinterpret_cast<IMP>(equal), "C24@0:8@16"}});
    const Value variant = Convert(object);
    ASSERT_FALSE(variant.IsNil());
    EXPECT_EQ(host.ClassOf(variant), "NSObjectQZL");
}

TEST_P(RegisteredObject, IsItsInstanceWithOneMoreReference)
{
    Host &host = Start();
    DefineWrapperClass(host, "EnteredQZL");
    Registry registry;
    const Value entered = host.New("EnteredQZL");
    const id object = GetParam().make();
    registry.Enter(object, entered);
    const NSUInteger retains = [object retainCount];
    {
        const Value variant = Convert(object);
        EXPECT_EQ(variant.ObjectPointer(), entered.ObjectPointer());
        EXPECT_EQ(host.References(entered), 2);
        EXPECT_EQ([object retainCount], retains);
    }
    EXPECT_EQ(host.References(entered), 1);
}

INSTANTIATE_TEST_SUITE_P(Cocoa, RegisteredObject, testing::ValuesIn(kKinds), kNameOfRow);

TEST_F(ConversionChain, EqualObjectOfARegisteredOneIsConverted)
{
    Host &host = Start();
    DefineWrapperClass(host, "EnteredQZL");
    Registry registry;
    const Value entered = host.New("EnteredQZL");
    registry.Enter([NSMutableString stringWithString:@"text"], entered);
    EXPECT_EQ(Convert([NSMutableString stringWithString:@"text"]).AsString(), "text");
}

TEST_F(ConversionChain, RegisteredElementOfAnArrayIsItsInstance)
{
    Host &host = Start();
    DefineWrapperClass(host, "EnteredQZL");
    Registry registry;
    const Value entered = host.New("EnteredQZL");
    NSString *const element = [NSMutableString stringWithString:@"text"];
    registry.Enter(element, entered);
    const Value array = Convert([NSArray arrayWithObjects:element, [NSNull null], nil]);
    EXPECT_EQ(host.ArrayElement(array, 0).ObjectPointer(), entered.ObjectPointer());
    EXPECT_TRUE(host.ArrayElement(array, 1).IsNil());
}

TEST_F(ConversionChain, URLComesBeforeString)
{
    Start();
    const id url = ClaimingToBe("NSString", [NSURL URLWithString:@"http://www.example.com/"]);
    EXPECT_EQ(Convert(url).AsString(), "http://www.example.com/");
}

TEST_F(ConversionChain, StringComesBeforeData)
{
    Start();
    const id string = ClaimingToBe("NSData", [NSMutableString stringWithString:@"text"]);
    EXPECT_EQ(Convert(string).AsString(), "text");
}

TEST_F(ConversionChain, DataComesBeforeArray)
{
    Host &host = Start();
    const id data = ClaimingToBe("NSArray", [NSMutableData dataWithBytes:"abc" length:3]);
    EXPECT_EQ(host.MemoryBlockBytes(Convert(data)), "abc");
}

TEST_F(ConversionChain, ArrayComesBeforeSet)
{
    Host &host = Start();
    const id array = ClaimingToBe("NSSet", [NSMutableArray arrayWithObjects:@"one", @"two", nil]);
    const Value converted = Convert(array);
    ASSERT_EQ(host.ArrayCount(converted), 2);
    EXPECT_EQ(host.ArrayElement(converted, 0).AsString(), "one");
    EXPECT_EQ(host.ArrayElement(converted, 1).AsString(), "two");
}

TEST_F(ConversionChain, SetComesBeforeNumber)
{
    Host &host = Start();
    const id set = ClaimingToBe("NSNumber", [NSMutableSet setWithObject:@"element"]);
    const Value converted = Convert(set);
    ASSERT_EQ(host.ArrayCount(converted), 1);
    EXPECT_EQ(host.ArrayElement(converted, 0).AsString(), "element");
}

TEST_F(ConversionChain, SetComesBeforeTheBooleans)
{
    Host &host = Start();
    const auto allObjects = +[](id, SEL) { return [NSArray array]; };
    const id boolean = ClaimingToBe("NSSet", id(kCFBooleanTrue),
                                    {{"allObjects", reinterpret_cast<IMP>(allObjects), "@16@0:8"}});
    EXPECT_EQ(host.ArrayCount(Convert(boolean)), 0);
}

TEST_F(ConversionChain, BooleansComeBeforeNumber)
{
    Host &host = Start();
    for (const bool expected : {false, true}) {
        const id boolean = id(expected ? kCFBooleanTrue : kCFBooleanFalse);
        ASSERT_TRUE([boolean isKindOfClass:[NSNumber class]]);
        const Value variant = Convert(boolean);
        EXPECT_EQ(variant.Code(), code::Boolean);
        EXPECT_EQ(variant.AsBoolean(), expected);
    }
    EXPECT_EQ(host.CallsOf("BooleanToVariant"), 2);
}

TEST_F(ConversionChain, BooleansAreRecognisedByIdentityWhateverTheirValue)
{
    Start();
    const auto inverted = +[](id, SEL) -> BOOL { return NO; };
    AddMethods(id(kCFBooleanTrue), "QZLTestBoolean",
               {{"boolValue", reinterpret_cast<IMP>(inverted), "C16@0:8"}});
    ASSERT_FALSE([id(kCFBooleanTrue) boolValue]);
    const Value variant = Convert(id(kCFBooleanTrue));
    EXPECT_EQ(variant.Code(), code::Boolean);
    EXPECT_TRUE(variant.AsBoolean());
}

TEST_F(ConversionChain, NumberComesBeforeDate)
{
    Start();
    const Value variant = Convert(ClaimingToBe("NSDate", MakeNumber()));
    EXPECT_EQ(variant.Code(), code::Int64);
    EXPECT_EQ(variant.AsInteger(), 123456);
}

TEST_F(ConversionChain, DateComesBeforeDictionary)
{
    Host &host = Start();
    const id date = ClaimingToBe("NSDictionary",
                                 [[[NSDate alloc] initWithTimeIntervalSinceReferenceDate:1e9] autorelease]);
    EXPECT_EQ(host.ClassOf(Convert(date)), "Date");
}

TEST_F(ConversionChain, DictionaryComesBeforeTheClassRows)
{
    Host &host = Start();
    DefineWrapperClass(host, "NSPipeQZL");
    const id dictionary = ClaimingToBe("NSPipe", [NSMutableDictionary dictionaryWithObject:@"value"
                                                                                    forKey:@"key"]);
    const Value converted = Convert(dictionary);
    EXPECT_EQ(host.ClassOf(converted), "Dictionary");
    EXPECT_EQ(host.DictionaryCount(converted), 1);
}

TEST_F(ConversionChain, ClassRowsComeBeforeValue)
{
    Host &host = Start();
    DefineWrapperClass(host, "NSPipeQZL");
    DefineWrapperClass(host, "NSSizeQZL");
    const id value = ClaimingToBe("NSPipe", [NSValue valueWithSize:NSMakeSize(1, 2)]);
    EXPECT_EQ(host.ClassOf(Convert(value)), "NSPipeQZL");
}

TEST_F(ConversionChain, StepThatGivesNullEndsTheChain)
{
    Host &host =
        StartLacking({"StringToVariant", "RuntimeArrayCreateSingleDimBoundedArray", "IntegerToVariant"});
    DefineWrapperClass(host, "NSObjectQZL");
    DefineCFWrapperClass(host, "CFObjectQZL");
    const id objects[] = {[NSData data],
                          @"text",
                          [NSArray array],
                          [NSSet set],
                          MakeNumber(),
                          [NSValue valueWithPointer:nullptr],
                          [NSValue valueWithSize:NSMakeSize(1, 2)]};
    for (const id object : objects)
        EXPECT_EQ(NewVariantFromNSObject(object), nullptr) << [[object description] UTF8String];
}

namespace {

/// The conversions of host objects in the family's wrapper.
class WrappedHostObject : public ConversionChain {
protected:
    /// With a host class that could wrap any Cocoa object, and a host object of it.
    Host &StartWithInner()
    {
        Host &host = Start();
        DefineWrapperClass(host, "NSObjectQZL");
        inner_ = host.New("NSObjectQZL");
        family_.emplace(host);
        return host;
    }

    const Value &inner() const { return inner_; }
    Family &family() { return *family_; }

    /// An object of the family's class, or of a subclass, that holds the host object.
    id Wrap(Class wrapperClass = objc_getClass("QZLREALobjectWrapper")) const
    {
        return [wrapperClass wrap:ObjectOf(inner_)];
    }

    void TearDown() override
    {
        inner_ = Value();
        ConversionChain::TearDown();
    }

private:
    Value inner_;
    std::optional<Family> family_;
};

REALobject AnswerNothing(id, SEL)
{
    return nullptr;
}

} // namespace

TEST_F(WrappedHostObject, IsUnwrappedWithNoReferenceAdded)
{
    Host &host = StartWithInner();
    family().OfferObjectWrapper();
    const Registry registry;
    const id wrapper = Wrap();
    const NSUInteger retains = [wrapper retainCount];

    const Value result = Convert(wrapper);

    EXPECT_EQ(result.ObjectPointer(), inner().ObjectPointer());
    EXPECT_EQ(family().Unwraps(), 1);
    EXPECT_EQ(host.References(inner()), 3) << "the program's, the wrapper's, and the one that unwrap gives";
    EXPECT_EQ([wrapper retainCount], retains);
    EXPECT_EQ(registry.At(wrapper), nullptr);
}

TEST_F(WrappedHostObject, OfASubclassIsUnwrapped)
{
    StartWithInner();
    family().OfferObjectWrapper();
    const id wrapper = Wrap(MakeClass("QZLTestSubclass", objc_getClass("QZLREALobjectWrapper")));
    EXPECT_EQ(Convert(wrapper).ObjectPointer(), inner().ObjectPointer());
}

TEST_F(WrappedHostObject, ThatUnwrapsToNullIsNull)
{
    StartWithInner();
    family().OfferObjectWrapper();
    EXPECT_EQ(NewVariantFromNSObject([objc_getClass("QZLREALobjectWrapper") wrap:nullptr]), nullptr);
    EXPECT_EQ(family().Unwraps(), 1);
}

TEST_F(WrappedHostObject, IsRecognisedByAClassThatIsLookedUpEachTime)
{
    Host &host = StartWithInner();
    EXPECT_EQ(host.ClassOf(Convert(MakeObject([NSObject class]))), "NSObjectQZL");

    family().OfferObjectWrapper();

    EXPECT_EQ(Convert(Wrap()).ObjectPointer(), inner().ObjectPointer());
    EXPECT_EQ(host.ClassOf(Convert(MakeObject([NSObject class]))), "NSObjectQZL");
    EXPECT_EQ(family().Unwraps(), 1);
}

TEST_F(WrappedHostObject, ComesAfterTheClassRows)
{
    Host &host = StartWithInner();
    family().OfferObjectWrapper();
    DefineWrapperClass(host, "NSPipeQZL");
    EXPECT_EQ(host.ClassOf(Convert(ClaimingToBe("NSPipe", Wrap()))), "NSPipeQZL");
    EXPECT_EQ(family().Unwraps(), 0);
}

TEST_F(WrappedHostObject, ComesBeforeValue)
{
    Host &host = StartWithInner();
    family().OfferObjectWrapper();
    DefineWrapperClass(host, "NSSizeQZL");
    const id value = ClaimingToBe("QZLREALobjectWrapper", [NSValue valueWithSize : NSMakeSize(1, 2)],
                                  { {"unwrap", reinterpret_cast<IMP>(AnswerNothing), "^v16@0:8"} });
    EXPECT_EQ(NewVariantFromNSObject(value), nullptr);
    EXPECT_EQ(host.CallsOf("PluginNewInstance"), 0);
}

TEST_F(WrappedHostObject, IsNotAnObjectThatOnlyHasTheMethod)
{
    Host &host = StartWithInner();
    family().OfferObjectWrapper();
    const id object = MakeObject(MakeClass("QZLTestUnwraps", [NSObject class],
                                           { {"unwrap", reinterpret_cast<IMP>(AnswerNothing), "^v16@0:8"} }));
    EXPECT_EQ(host.ClassOf(Convert(object)), "NSObjectQZL");
}
