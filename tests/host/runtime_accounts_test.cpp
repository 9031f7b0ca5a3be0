// The host's account of references: leaks and misuse are named.
#include "tests/host/runtime_test.h"

namespace qzlhost {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

void UnlockObject(Instance *object)
{
    HostFunction<void(Instance *)>("REALUnlockObject")(object);
}

} // namespace

class ReferenceAccounts : public testing::Test {
protected:
    void SetUp() override { LoadExample(host); }

    Host host;
};

TEST_F(ReferenceAccounts, ALeakIsNamedWithItsMaker)
{
    const Value base = host.New("BaseEX");
    EXPECT_THAT(host.Leaks(), IsEmpty());
    host.Call(base, "Leak", {"Dictionary"});
    EXPECT_THAT(host.Leaks(), ElementsAre(AllOf(HasSubstr("Dictionary #"), HasSubstr("1 references, 0 held"),
                                                HasSubstr("made by PluginNewInstance"))));
    EXPECT_THAT(host.Mistakes(), IsEmpty());
}

TEST_F(ReferenceAccounts, AReferenceTooManyOfAHeldObjectIsALeak)
{
    const Value base = host.New("BaseEX");
    HostFunction<void(Instance *)>("REALLockObject")(base.ObjectPointer());
    EXPECT_THAT(host.Leaks(), ElementsAre(AllOf(HasSubstr("BaseEX #"), HasSubstr("2 references, 1 held"))));
    UnlockObject(base.ObjectPointer());
    EXPECT_THAT(host.Leaks(), IsEmpty());
}

TEST_F(ReferenceAccounts, StringsAndTextsAreCountedToo)
{
    String *const string = HostFunction<String *(const char *, int32_t)>("REALBuildString")("lost", 4);
    EXPECT_THAT(host.Leaks(),
                ElementsAre(AllOf(HasSubstr("\"lost\" (String #"), HasSubstr("REALBuildString"))));
    Value::Adopt(string);
    EXPECT_THAT(host.Leaks(), IsEmpty());
    const Value text = Value::TextOf("kept");
    HostFunction<void(Text *)>("PluginLockText")(text.TextPointer());
    EXPECT_THAT(host.Leaks(), ElementsAre(HasSubstr("\"kept\" (Text #")));
    HostFunction<void(Text *)>("PluginUnlockText")(text.TextPointer());
}

TEST_F(ReferenceAccounts, WhatContainersHoldIsNoLeak)
{
    const Value dictionary = host.NewDictionary();
    host.DictionarySet(dictionary, "key", host.NewArray(code::Object, {host.NewDictionary(), "text"}));
    EXPECT_THAT(host.Leaks(), IsEmpty());
}

TEST_F(ReferenceAccounts, ADoubleUnlockIsNamedAndSurvived)
{
    host.Call(host.New("BaseEX"), "ReleaseTwice");
    EXPECT_THAT(host.Mistakes(), ElementsAre(AllOf(HasSubstr("REALUnlockObject"), HasSubstr("Dictionary #"),
                                                   HasSubstr("dead"))));
    EXPECT_THAT(host.Leaks(), IsEmpty());
}

TEST_F(ReferenceAccounts, GivingBackTheCallersReferenceIsNamedAndSurvived)
{
    const Value base = host.New("BaseEX");
    const Value argument = host.NewDictionary();
    host.Call(base, "ReleaseArgument", {argument});
    EXPECT_THAT(host.Mistakes(), ElementsAre(AllOf(HasSubstr("REALUnlockObject"), HasSubstr("Dictionary #"),
                                                   HasSubstr("gave back a reference"))));
    EXPECT_EQ(host.References(argument), 1);
}

TEST_F(ReferenceAccounts, AResultWithoutItsReferenceIsNamedAndSurvived)
{
    const Value base = host.New("BaseEX");
    {
        const Value argument = host.NewDictionary();
        const Value result = host.Call(base, "Borrowed", {argument});
        EXPECT_EQ(result.ObjectPointer(), argument.ObjectPointer());
        EXPECT_EQ(host.References(argument), 2);
    }
    EXPECT_THAT(host.Mistakes(), ElementsAre(HasSubstr("without the reference")));
    EXPECT_THAT(host.Leaks(), IsEmpty());
}

TEST_F(ReferenceAccounts, ForeignPointersAndWrongKindsAreNamedAndSurvived)
{
    int64_t foreign[8] = {};
    UnlockObject(reinterpret_cast<Instance *>(foreign));
    const Value string = Value("text");
    UnlockObject(reinterpret_cast<Instance *>(string.StringPointer()));
    HostFunction<String *(Instance *)>("VariantToString")(reinterpret_cast<Instance *>(foreign));
    EXPECT_THAT(host.Mistakes(),
                ElementsAre(HasSubstr("is not the host's"), HasSubstr("wrong kind"),
                            AllOf(HasSubstr("VariantToString"), HasSubstr("is not the host's"))));
}

TEST_F(ReferenceAccounts, NullWhereNoneIsAllowedIsNamed)
{
    HostFunction<Instance *(const char *)>("PluginNewInstance")(nullptr);
    HostFunction<int64_t(Instance *)>("RuntimeUBound")(nullptr);
    HostFunction<void(Instance *)>("RuntimeRaiseException")(nullptr);
    EXPECT_THAT(host.Mistakes(), ElementsAre("PluginNewInstance: null where none is allowed",
                                             "RuntimeUBound: null where none is allowed",
                                             "RuntimeRaiseException: null where none is allowed"));
    UnlockObject(nullptr);
    EXPECT_EQ(host.Mistakes().size(), 3u);
}

TEST_F(ReferenceAccounts, ADeclarationThatIsNoneIsNamed)
{
    HostFunction<void *(void *, const char *)>("REALLoadGlobalMethod")(nullptr, "VarType(value As");
    EXPECT_THAT(host.Mistakes(), ElementsAre(HasSubstr("REALLoadGlobalMethod: ")));
}

TEST_F(ReferenceAccounts, TheTraceShowsCallsWithReadableArguments)
{
    host.ClearTrace();
    const Value dictionary = host.NewDictionary();
    HostFunction<void(Instance *)>("REALLockObject")(dictionary.ObjectPointer());
    UnlockObject(dictionary.ObjectPointer());
    HostFunction<uint32_t(String *)>("REALGetStringEncoding")(Value("text").StringPointer());
    HostFunction<const void *(const char *)>("pluginObjectType")("Date");
    const auto trace = host.Trace();
    ASSERT_EQ(trace.size(), 4u);
    EXPECT_EQ(trace[0].function, "REALLockObject");
    EXPECT_THAT(trace[0].arguments, testing::MatchesRegex("Dictionary #[0-9]+"));
    EXPECT_THAT(trace[2].arguments, testing::MatchesRegex("\"text\" .String #[0-9]+."));
    EXPECT_EQ(trace[3].arguments, "\"Date\"");
    EXPECT_EQ(host.CallsOf("REALLockObject"), 1);
    host.ClearTrace();
    EXPECT_EQ(host.CallsOf("REALLockObject"), 0);
}

TEST(AccountsOff, TheHostWorksWithoutThem)
{
    HostOptions options;
    options.accounts = false;
    Host host(options);
    LoadExample(host);
    {
        const Value base = host.New("DerivedEX", {3});
        EXPECT_EQ(host.Call(base, "Echo", {"text"}).AsString(), "text");
    }
    EXPECT_EQ(
        host.CallShared("BaseEX", "TakeLog").AsString(),
        "BaseInit DerivedInit BaseConstructor DerivedDestructor BaseDestructor DerivedFinal BaseFinal ");
    EXPECT_THAT(host.Trace(), IsEmpty());
    EXPECT_THAT(host.Leaks(), IsEmpty());
    EXPECT_THAT(host.Mistakes(), IsEmpty());
}

TEST(Hosts, MayFollowOneAnother)
{
    Value survivor;
    {
        Host first;
        LoadExample(first);
        EXPECT_THROW(Host second, UsageError);
        survivor = first.New("BaseEX");
        first.Call(survivor, "Leak", {"BaseEX"});
    }
    EXPECT_THROW(Host::Current(), UsageError);
    Host second;
    LoadExample(second);
    EXPECT_EQ(second.RegisteredClasses().size(), 2u);
    EXPECT_THAT(second.Mistakes(), IsEmpty());
    EXPECT_THAT(second.Leaks(), IsEmpty());
    EXPECT_EQ(second.Get(second.New("DerivedEX"), "Handle").AsInteger(), 5);
    survivor = Value();
    EXPECT_THAT(second.Mistakes(), IsEmpty());
}

} // namespace qzlhost
