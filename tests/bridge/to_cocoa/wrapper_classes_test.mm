// Host objects of the family's wrapper classes become the Cocoa objects that they hold.
#include "tests/bridge/to_cocoa/chain_classes.h"
#include "tests/bridge/to_cocoa/member_conversion.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

static_assert(std::size(kRememberedNames) == 108);

class WrapperClasses : public MemberConversion {
protected:
    /// Expects that an instance of the class becomes the object that it holds, with no retain added.
    void ExpectHandle(const char *className)
    {
        SCOPED_TRACE(className);
        NSObject *const handle = [[[NSObject alloc] init] autorelease];
        const Value wrapper = WrapperOf(host(), className, handle);
        const NSUInteger retains = [handle retainCount];
        {
            const qzlhost::AutoreleasePool pool;
            EXPECT_EQ(Convert(wrapper), handle);
        }
        EXPECT_EQ([handle retainCount], retains);
        EXPECT_EQ(host().References(wrapper), 1);
    }
};

/// Where the host lacks this function.
class WrapperClassesWithout : public WrapperClasses, public ::testing::WithParamInterface<const char *> {};

} // namespace

TEST_F(WrapperClasses, EveryRememberedClassGivesItsObject)
{
    Host &host = Start();
    std::vector<const char *> names;
    for (const char *className : kRememberedNames) {
        // Other tests convert the library's own.
        if (host.HasClass(className))
            continue;
        DefineWrapperClass(host, className);
        names.push_back(className);
    }
    EXPECT_EQ(names.size(), 105u);
    for (const char *className : names)
        ExpectHandle(className);
}

TEST_F(WrapperClasses, EveryOtherWrapperClassGivesItsObject)
{
    Host &host = Start();
    for (const char *className : kDelegateNames) {
        DefineWrapperClass(host, className);
        ExpectHandle(className);
    }
    for (const char *className : kOtherNames) {
        DefineWrapperClass(host, className);
        ExpectHandle(className);
    }
}

TEST_F(WrapperClasses, WrapperWithoutAnObjectIsNil)
{
    Host &host = Start();
    DefineWrapperClass(host, "NSTimerQZL");
    EXPECT_EQ(Convert(WrapperOf(host, "NSTimerQZL", nil)), nil);
}

TEST_F(WrapperClasses, ProgramsOwnSubclassGivesTheObject)
{
    Host &host = Start();
    DefineWrapperClass(host, "NSTimerQZL");
    host.DefineClass({"ProgramTimer", "NSTimerQZL"});
    ExpectHandle("ProgramTimer");
}

TEST_F(WrapperClasses, OtherWrapperClassThatComesLaterIsFound)
{
    Host &host = Start();
    host.DefineClass({"Unrelated", ""});
    ASSERT_EQ(Convert(host.New("Unrelated")), nil);
    for (const char *className : {"WebUIDelegateQZL", "PDFActionQZL", "WebPolicyDelegateQZL", "CGLayerQZL"}) {
        DefineWrapperClass(host, className);
        ExpectHandle(className);
    }
}

TEST_P(WrapperClassesWithout, NoObjectIsAWrapper)
{
    Host &host = Start({}, [](Host &unloaded) { unloaded.Lack(GetParam()); });
    NSObject *const handle = [[[NSObject alloc] init] autorelease];
    for (const char *className : {"NSTimerQZL", "PDFActionQZL", "CFObjectQZL"}) {
        DefineWrapperClass(host, className);
        EXPECT_EQ(Convert(WrapperOf(host, className, handle)), nil) << className;
    }
}

INSTANTIATE_TEST_SUITE_P(Functions, WrapperClassesWithout,
                         ::testing::Values("RuntimeObjectIsa", "pluginObjectType"));
