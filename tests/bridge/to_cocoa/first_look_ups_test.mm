// When the remembered wrapper classes are looked up: all at once, for the first object that needs them.
#include <algorithm>

#include "tests/bridge/to_cocoa/chain_classes.h"
#include "tests/bridge/to_cocoa/member_conversion.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

class FirstLookUps : public MemberConversion {
protected:
    /// The classes that the host is asked for while the object is converted.
    std::vector<std::string> AskedFor(const Value &object)
    {
        host().ClearTrace();
        Convert(object);
        return ClassesAskedFor(host());
    }

    /// Expects that a class that appears now is found.
    void ExpectNothingRemembered()
    {
        DefineWrapperClass(host(), "NSPathComponentCellQZL");
        NSObject *const handle = [[[NSObject alloc] init] autorelease];
        EXPECT_EQ(Convert(WrapperOf(host(), "NSPathComponentCellQZL", handle)), handle);
    }
};

using Names = std::vector<std::string>;

} // namespace

TEST_F(FirstLookUps, AreNotMadeForABlock)
{
    Host &host = Start();
    EXPECT_EQ(AskedFor(host.NewMemoryBlock("block")), Names{"MemoryBlock"});
    ExpectNothingRemembered();
}

TEST_F(FirstLookUps, AreNotMadeForAFolderItem)
{
    Host &host = Start();
    EXPECT_EQ(AskedFor(host.NewFolderItem("/tmp")), Names{"MemoryBlock"});
    ExpectNothingRemembered();
}

TEST_F(FirstLookUps, AreNotMadeForADictionary)
{
    Host &host = Start();
    EXPECT_EQ(AskedFor(host.NewDictionary()), (Names{"MemoryBlock", "Dictionary"}));
    ExpectNothingRemembered();
}

TEST_F(FirstLookUps, AreAllMadeForAnObjectOfTheFirstClass)
{
    Host &host = Start();
    DefineWrapperClass(host, "NSPathComponentCellQZL");
    const Value object = WrapperOf(host, "NSPathComponentCellQZL", @"handle");
    EXPECT_EQ(AskedFor(object), AndRemembered({"MemoryBlock", "Dictionary"}));
    EXPECT_EQ(AskedFor(object), (Names{"MemoryBlock", "Dictionary"}));
}

TEST_F(FirstLookUps, AreAllMadeForAnyOtherObject)
{
    Host &host = Start();
    host.DefineClass({"Unrelated", ""});
    const Value object = host.New("Unrelated");
    EXPECT_EQ(AskedFor(object), AndOthers(AndRemembered({"MemoryBlock", "Dictionary"})));
    EXPECT_EQ(AskedFor(object), AndOthers({"MemoryBlock", "Dictionary"}));
}

TEST_F(FirstLookUps, AreNotMadeAgainForClassesThatWereNotThere)
{
    Host &host = Start();
    host.DefineClass({"Unrelated", ""});
    Convert(host.New("Unrelated"));
    for (const char *className : kRememberedNames) {
        // The library's own classes are there.
        if (host.HasClass(className))
            continue;
        DefineWrapperClass(host, className);
        const Value object = WrapperOf(host, className, @"handle");
        EXPECT_EQ(AskedFor(object), AndOthers({"MemoryBlock", "Dictionary"})) << className;
        EXPECT_EQ(Convert(object), nil) << className;
    }
}

TEST_F(FirstLookUps, LeaveOutTheTestForClassesThatTheHostLacks)
{
    Host &host = Start();
    host.DefineClass({"Unrelated", ""});
    const Value object = host.New("Unrelated");
    const std::vector<std::string> asked = AskedFor(object);
    const auto present = std::count_if(asked.begin(), asked.end(),
                                       [&](const std::string &name) { return host.HasClass(name); });
    EXPECT_EQ(present, 5) << "the host's two and the library's three";
    EXPECT_EQ(host.CallsOf("RuntimeObjectIsa"), present);
}
