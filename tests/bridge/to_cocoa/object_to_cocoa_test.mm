// Host objects other than wrappers become Cocoa objects by the first test that they pass.
#include <array>
#include <cstring>
#include <numeric>

#include "family/family.h"
#include "tests/bridge/to_cocoa/member_conversion.h"
#include "tests/support/host_declarations.h"
#include "tests/support/values.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

/// Instance data of one kind of numbers.
template <typename Number, size_t Count>
using Numbers = std::array<Number, Count>;

qzlhost::Method FolderItemMethod()
{
    return {kTrueItem, [](const Value &, const std::vector<Value> &) { return Value(); }};
}

void DefineClass(Host &host, const std::string &name, const std::string &super, uint64_t dataSize = 0,
                 std::vector<qzlhost::Method> methods = {})
{
    host.DefineClass({.name = name, .super = super, .dataSize = dataSize, .methods = std::move(methods)});
}

/// An object of a new host class with this instance data.
template <typename Data>
Value NewWithData(Host &host, const char *className, const Data &data)
{
    DefineClass(host, className, "", sizeof data);
    const Value object = host.New(className);
    *static_cast<Data *>(host.InstanceData(object)) = data;
    return object;
}

using ObjectToCocoa = MemberConversion;

/// Where the host lacks this function.
class ObjectToCocoaWithout : public MemberConversion, public ::testing::WithParamInterface<const char *> {};

} // namespace

TEST_F(ObjectToCocoa, DictionaryIsADictionary)
{
    Host &host = Start();
    NSDictionary *const converted = Convert(NewDictionary(host, {{"a", 1}}));
    ASSERT_TRUE([converted isKindOfClass:[NSDictionary class]]);
    EXPECT_EQ([converted count], 1u);
    EXPECT_TRUE([[converted objectForKey:@"a"] isEqual:@1]);
}

TEST_F(ObjectToCocoa, GeometryComesFromTheInstanceData)
{
    Host &host = Start();
    // Equal values have equal types.
    const id size = Convert(NewWithData(host, "NSSizeQZL", Numbers<double, 2>{1.5, -2}));
    EXPECT_TRUE([size isEqual:[NSValue valueWithSize:NSMakeSize(1.5, -2)]]);
    const id rect = Convert(NewWithData(host, "NSRectQZL", Numbers<double, 4>{1, 2, 3, 4}));
    EXPECT_TRUE([rect isEqual:[NSValue valueWithRect:NSMakeRect(1, 2, 3, 4)]]);
    const id range = Convert(NewWithData(host, "NSRangeQZL", Numbers<uint64_t, 2>{NSNotFound, 7}));
    EXPECT_TRUE([range isEqual:[NSValue valueWithRange:NSMakeRange(NSNotFound, 7)]]);
    const id point = Convert(NewWithData(host, "NSPointQZL", Numbers<double, 2>{-0.25, 1e300}));
    EXPECT_TRUE([point isEqual:[NSValue valueWithPoint:NSMakePoint(-0.25, 1e300)]]);
}

TEST_F(ObjectToCocoa, TimesAreWhatTheFamilyMakesOfTheHostObject)
{
    Host &host = Start();
    Family family(host);
    std::array<uint8_t, 96> bytes;
    std::iota(bytes.begin(), bytes.end(), uint8_t{1});
    for (const FamilyTime &time : kFamilyTimes) {
        SCOPED_TRACE(time.hostClass);
        family.OfferTimeClass(time);
        family.OfferTimeToCocoa(time);
        const Value object = host.New(time.hostClass);
        std::memcpy(host.InstanceData(object), bytes.data(), time.size);
        EXPECT_TRUE([Convert(object) isEqual:[NSValue valueWithBytes:bytes.data() objCType:time.objCType]]);
        EXPECT_EQ(host.References(object), 1);
    }
    EXPECT_EQ(family.TimesMade(), 5);
}

TEST_F(ObjectToCocoa, ValueClassThatComesLaterIsFound)
{
    Host &host = Start();
    DefineClass(host, "Unrelated", "");
    ASSERT_EQ(Convert(host.New("Unrelated")), nil);
    NSValue *const size = Convert(NewWithData(host, "NSSizeQZL", Numbers<double, 2>{3, 4}));
    EXPECT_TRUE(NSEqualSizes([size sizeValue], NSMakeSize(3, 4)));
}

TEST_F(ObjectToCocoa, AnyOtherObjectIsNilUntilTheFamilyWrapsIt)
{
    Host &host = Start();
    DefineClass(host, "Unrelated", "");
    const Value object = host.New("Unrelated");
    EXPECT_EQ(Convert(object), nil);

    Family family(host);
    family.OfferObjectWrapper();

    EXPECT_EQ(family.Wrapped(Convert(object)), object.ObjectPointer());
    EXPECT_EQ(host.References(object), 2) << "the program's and the wrapper's";
}

TEST_P(ObjectToCocoaWithout, AllButFolderItemsAreOtherObjects)
{
    Host &host = Start({}, [](Host &unloaded) { unloaded.Lack(GetParam()); });
    Family family(host);
    family.OfferObjectWrapper();
    EXPECT_NE(family.Wrapped(Convert(host.NewMemoryBlock("abc"))), nullptr);
    EXPECT_NE(family.Wrapped(Convert(host.NewDictionary())), nullptr);
    EXPECT_NE(family.Wrapped(Convert(NewWithData(host, "NSSizeQZL", Numbers<double, 2>{}))), nullptr);
    EXPECT_TRUE([Convert(host.NewFolderItem("/tmp")) isFileURL]);
}

INSTANTIATE_TEST_SUITE_P(Functions, ObjectToCocoaWithout,
                         ::testing::Values("RuntimeObjectIsa", "pluginObjectType"));

TEST_F(ObjectToCocoa, MemoryBlockComesBeforeFolderItem)
{
    Host &host = Start();
    DefineClass(host, "Odd", "MemoryBlock", 0, {FolderItemMethod()});
    const Value block = host.New("Odd", {3});
    EXPECT_TRUE([Convert(block) isEqual:[NSMutableData dataWithLength:3]]);
}

TEST_F(ObjectToCocoa, DictionaryComesBeforeWrappers)
{
    Host &host = Start();
    DefineClass(host, "NSTimerQZL", "Dictionary", sizeof(id));
    EXPECT_TRUE([Convert(host.New("NSTimerQZL")) isEqual:[NSDictionary dictionary]]);
}

TEST_F(ObjectToCocoa, WrappersComeBeforeValues)
{
    Host &host = Start();
    NSObject *const handle = [[[NSObject alloc] init] autorelease];
    DefineClass(host, "NSTimerQZL", "", sizeof(Numbers<double, 2>));
    DefineClass(host, "NSSizeQZL", "NSTimerQZL");
    DefineClass(host, "WebUIDelegateQZL", "", sizeof(Numbers<double, 2>));
    DefineClass(host, "NSPointQZL", "WebUIDelegateQZL");
    for (const char *className : {"NSSizeQZL", "NSPointQZL"}) {
        const Value object = host.New(className);
        *static_cast<id *>(host.InstanceData(object)) = handle;
        EXPECT_EQ(Convert(object), handle) << className;
    }
}

TEST_F(ObjectToCocoa, ValuesComeBeforeCoreFoundationWrappers)
{
    Host &host = Start();
    DefineClass(host, "CFObjectQZL", "", sizeof(Numbers<double, 2>));
    DefineClass(host, "NSSizeQZL", "CFObjectQZL");
    const Value object = host.New("NSSizeQZL");
    *static_cast<Numbers<double, 2> *>(host.InstanceData(object)) = {3, 4};
    EXPECT_TRUE(NSEqualSizes([(NSValue *)Convert(object) sizeValue], NSMakeSize(3, 4)));
}

TEST_F(ObjectToCocoa, EarlierValueClassDecides)
{
    Host &host = Start();
    DefineClass(host, "NSSizeQZL", "", sizeof(Numbers<double, 2>));
    DefineClass(host, "NSPointQZL", "NSSizeQZL");
    const Value object = host.New("NSPointQZL");
    *static_cast<Numbers<double, 2> *>(host.InstanceData(object)) = {3, 4};
    EXPECT_TRUE([Convert(object) isEqual:[NSValue valueWithSize:NSMakeSize(3, 4)]]);
}
