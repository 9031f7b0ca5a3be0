// The Cocoa objects that conversions make are autoreleased.
#include "tests/bridge/to_cocoa/member_conversion.h"
#include "tests/support/row_names.h"
#include "tests/support/values.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

namespace code = qzlhost::code;

/// A host value for which a new Cocoa object is made, and the class of that object.
struct Kind {
    const char *name;
    Value (*make)(Host &host);
    const char *cocoaClass;
};

Value NewGeometry(Host &host, const char *className)
{
    host.DefineClass({className, "", 4 * sizeof(double)});
    return host.New(className);
}

/// The numbers and texts are ones without a shared Cocoa object.
constexpr Kind kKinds[] = {
    {"Integer", [](Host &) { return Value(123456789); }, "NSNumber"},
    {"Single", [](Host &) { return Value(1.25f); }, "NSNumber"},
    {"Double", [](Host &) { return Value(1.25); }, "NSNumber"},
    {"String", [](Host &) { return Value("a text of some length"); }, "NSString"},
    {"Text", [](Host &) { return Value::TextOf("a text of some length"); }, "NSString"},
    {"Date", [](Host &host) { return host.NewDate(2024, 2, 29, 14, 5, 9); }, "NSCalendarDate"},
    {"Block", [](Host &host) { return host.NewMemoryBlock("block"); }, "NSData"},
    {"FolderItem", [](Host &host) { return host.NewFolderItem("/tmp"); }, "NSURL"},
    {"MissingFolderItem", [](Host &host) { return host.NewFolderItem("/missing"); }, "NSURL"},
    {"Dictionary", [](Host &host) { return NewDictionary(host, {{"key", "value"}}); }, "NSMutableDictionary"},
    {"Array", [](Host &host) { return host.NewArray(code::Int64, {1, 2}); }, "NSMutableArray"},
    {"EmptyArray", [](Host &host) { return host.NewArray(code::Object, {}); }, "NSMutableArray"},
    {"Size", [](Host &host) { return NewGeometry(host, "NSSizeQZL"); }, "NSValue"},
    {"Rect", [](Host &host) { return NewGeometry(host, "NSRectQZL"); }, "NSValue"},
    {"Range", [](Host &host) { return NewGeometry(host, "NSRangeQZL"); }, "NSValue"},
    {"Point", [](Host &host) { return NewGeometry(host, "NSPointQZL"); }, "NSValue"},
};

class MadeObject : public MemberConversion, public ::testing::WithParamInterface<Kind> {};

/// An object that is made as an array's element.
class MadeElement : public MadeObject {};

} // namespace

TEST_P(MadeObject, BelongsToThePool)
{
    Host &host = Start();
    const Value value = GetParam().make(host);
    id made = nil;
    {
        const qzlhost::AutoreleasePool pool;
        made = [Convert(value) retain];
    }
    ASSERT_TRUE([made isKindOfClass:NSClassFromString(@(GetParam().cocoaClass))]);
    EXPECT_EQ([made retainCount], 1u);
    [made release];
}

TEST_P(MadeElement, BelongsToTheArrayAloneOnceThePoolEnds)
{
    Host &host = Start();
    const Value array = host.NewArray(code::Object, {GetParam().make(host)});
    NSArray *made = nil;
    {
        const qzlhost::AutoreleasePool pool;
        made = [Convert(array) retain];
    }
    const id element = [made lastObject];
    ASSERT_TRUE([element isKindOfClass:NSClassFromString(@(GetParam().cocoaClass))]);
    EXPECT_EQ([element retainCount], 1u);
    [made release];
}

INSTANTIATE_TEST_SUITE_P(Kinds, MadeObject, ::testing::ValuesIn(kKinds), kNameOfRow);
INSTANTIATE_TEST_SUITE_P(Kinds, MadeElement, ::testing::ValuesIn(kKinds), kNameOfRow);
