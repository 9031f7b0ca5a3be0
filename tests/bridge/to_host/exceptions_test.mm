// Exceptions while an object becomes a host value pass to the caller and leave nothing behind.
#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include "family/family.h"
#include "tests/support/conversion_doubles.h"
#include "tests/support/raising.h"
#include "tests/support/row_names.h"
#include "tests/support/throwing.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

using ConversionException = LinkedTest;

/// Replaces any method.
RuntimeMethod Raising(const char *selector, const char *types = "@16@0:8")
{
    return {selector, reinterpret_cast<IMP>(RaiseInHost), types};
}

/// The object with this method.
id ThatRaises(id object, const RuntimeMethod &method)
{
    AddMethods(object, "QZLTestRaising", {method});
    return object;
}

id ObjectThatRaises()
{
    return ThatRaises(MakeObject([NSObject class]), Raising("isKindOfClass:", "C24@0:8#16"));
}

/// An object that raises in a step of its conversion.
struct RaisingStep {
    const char *name;
    id (*make)();
};

const RaisingStep kRaisingSteps[] = {
    {"AnyKind", ObjectThatRaises},
    {"URL",
     [] { return ThatRaises([NSURL URLWithString:@"http://www.example.com/"], Raising("absoluteString")); }},
    {"Array", [] { return ThatRaises([NSMutableArray array], Raising("objectEnumerator")); }},
    {"ElementOfAnArray",
     [] { return id([NSArray arrayWithObjects:@"before", ObjectThatRaises(), @"after", nil]); }},
    {"ElementOfAnArrayInAnArray",
     [] {
         return id([NSArray arrayWithObjects:@"before", [NSArray arrayWithObject:ObjectThatRaises()], nil]);
     }},
    {"Set", [] { return ThatRaises([NSMutableSet set], Raising("allObjects")); }},
    {"ElementOfASet", [] { return id([NSSet setWithObject:ObjectThatRaises()]); }},
    {"Number", [] { return ThatRaises([NSNumber numberWithInt:123456], Raising("objCType")); }},
    {"Date",
     [] {
         return ThatRaises([[[NSDate alloc] initWithTimeIntervalSinceReferenceDate:1e9] autorelease],
                           Raising("timeIntervalSinceReferenceDate", "d16@0:8"));
     }},
    {"ValueOfADictionary",
     [] {
         return id(
             [NSDictionary dictionaryWithObjectsAndKeys:ObjectThatRaises(), @"one", @"text", @"two", nil]);
     }},
    {"Unwrapping",
     [] { return ThatRaises(MakeObject(objc_getClass("QZLREALobjectWrapper")), Raising("unwrap")); }},
    {"Value", [] { return ThatRaises([NSValue valueWithPointer:nullptr], Raising("objCType")); }},
    {"ClassOfTheFallback",
     [] { return ThatRaises(MakeObject([NSObject class]), Raising("class", "#16@0:8")); }},
};

/// A host function that does not return while a text, a number, a dictionary and arrays are converted.
struct FailingFunction {
    const char *name;
    bool isCocoa;
};

const FailingFunction kFailingFunctions[] = {
    {"StringToVariant", true},
    {"StringToVariant", false},
    {"IntegerToVariant", true},
    {"IntegerToVariant", false},
    {"PluginNewInstance", true},
    {"PluginNewInstance", false},
    {"REALLoadObjectMethod", true},
    {"REALLoadObjectMethod", false},
    {"PluginObjectArrayInsertProc", true},
    {"PluginObjectArrayInsertProc", false},
    {"RuntimeArrayCreateSingleDimBoundedArray", true},
    {"RuntimeArrayCreateSingleDimBoundedArray", false},
};

class FailingHost : public ConversionException, public testing::WithParamInterface<FailingFunction> {};

class RaisingStepOfTheChain : public ConversionException, public testing::WithParamInterface<RaisingStep> {};

} // namespace

TEST_P(RaisingStepOfTheChain, PassesTheExceptionToTheCallerAndLeavesNothing)
{
    Host &host = Start();
    Family family(host);
    family.OfferObjectWrapper();
    DefineWrapperClass(host, "NSObjectQZL");
    const Registry registry;
    const id object = GetParam().make();
    const NSUInteger retains = [object retainCount];

    {
        const qzlhost::AutoreleasePool pool;
        NSString *const raised = ExceptionRaisedBy([&] { NewVariantFromNSObject(object); });
        EXPECT_TRUE([raised isEqualToString:kRaised]);
    }
    EXPECT_TRUE(host.TakeException().IsNil()) << "a Cocoa exception, not yet a host exception";
    EXPECT_EQ([object retainCount], retains);
    EXPECT_EQ(registry.At(object), nullptr);
    // The accounts at the end would show an unfinished array or Dictionary.
}

INSTANTIATE_TEST_SUITE_P(Cocoa, RaisingStepOfTheChain, testing::ValuesIn(kRaisingSteps), kNameOfRow);

TEST_P(FailingHost, PassesTheExceptionToTheCallerAndLeavesNothing)
{
    Start(2024.01, [](Host &unloaded) {
        unloaded.Replace(GetParam().name,
                         reinterpret_cast<void *>(GetParam().isCocoa ? RaiseInHost : ThrowInHost));
    });
    NSArray *const array = @[ @{@"key" : @[ @1 ]} ];
    {
        const qzlhost::AutoreleasePool pool;
        if (GetParam().isCocoa)
            EXPECT_TRUE([ExceptionRaisedBy([&] { NewVariantFromNSObject(array); }) isEqualToString:kRaised]);
        else
            EXPECT_TRUE(EndsThrown([&] { NewVariantFromNSObject(array); }));
    }
    EXPECT_EQ([array retainCount], 1u);
    // The accounts at the end would show a value that was not given back.
}

INSTANTIATE_TEST_SUITE_P(Host, FailingHost, testing::ValuesIn(kFailingFunctions),
                         [](const testing::TestParamInfo<FailingFunction> &info) {
                             return std::string(info.param.name) + (info.param.isCocoa ? "Raises" : "Throws");
                         });

TEST_F(ConversionException, NextConversionWorksAsBefore)
{
    Host &host = Start();
    const id object = [NSArray arrayWithObjects:@"before", ObjectThatRaises(), nil];
    EXPECT_NE(ExceptionRaisedBy([&] { NewVariantFromNSObject(object); }), nil);
    const Value array = Convert([NSArray arrayWithObject:@"text"]);
    ASSERT_EQ(host.ArrayCount(array), 1);
    EXPECT_EQ(host.ArrayElement(array, 0).AsString(), "text");
}
