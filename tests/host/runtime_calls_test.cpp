// Members of classes as programs use them: construction, overloads, properties.
#include "tests/host/runtime_test.h"

namespace qzlhost {

using testing::HasSubstr;
using Calls = ExampleTest;

TEST_F(Calls, ConstructionRunsHooksTopmostFirstAndThenTheConstructor)
{
    {
        const Value derived = host.New("DerivedEX");
    }
    EXPECT_EQ(
        host.CallShared("BaseEX", "TakeLog").AsString(),
        "BaseInit DerivedInit BaseConstructor DerivedDestructor BaseDestructor DerivedFinal BaseFinal ");
}

TEST_F(Calls, ASubclassMayBeRegisteredBeforeItsSuperclass)
{
    ASSERT_EQ(host.RegisteredClasses().size(), 2u);
    EXPECT_EQ(host.RegisteredClasses()[0].name, "DerivedEX");
    EXPECT_TRUE(host.IsA(host.New("DerivedEX"), "baseex"));
    EXPECT_FALSE(host.IsA(host.New("BaseEX"), "DerivedEX"));
}

TEST_F(Calls, ConstructorTakesItsDefault)
{
    EXPECT_EQ(host.Get(host.New("BaseEX"), "Handle").AsInteger(), 5);
    EXPECT_EQ(host.Get(host.New("BaseEX", {8}), "Handle").AsInteger(), 8);
    EXPECT_EQ(host.Get(host.New("DerivedEX", {9}), "Handle").AsInteger(), 9);
}

TEST_F(Calls, NewRefusesArgumentsThatNoConstructorTakes)
{
    EXPECT_THROW(host.New("BaseEX", {"text"}), UsageError);
    EXPECT_THROW(host.New("Dictionary", {1}), UsageError);
    EXPECT_THROW(host.New("NoSuchClass"), UsageError);
}

TEST_F(Calls, TheOverloadIsChosenByTheArguments)
{
    const Value base = host.New("BaseEX");
    EXPECT_EQ(host.Call(base, "Pick", {1}).AsString(), "integer");
    EXPECT_EQ(host.Call(base, "Pick", {1.5}).AsString(), "double");
    EXPECT_EQ(host.Call(base, "Pick", {1.5f}).AsString(), "double");
    EXPECT_EQ(host.Call(base, "Pick", {"text"}).AsString(), "string");
    EXPECT_EQ(host.Call(base, "Pick", {Value::EmptyString()}).AsString(), "string");
    EXPECT_EQ(host.Call(base, "Pick", {Value::TextOf("text")}).AsString(), "string");
    EXPECT_EQ(host.Call(base, "Pick", {true}).AsString(), "variant");
    EXPECT_EQ(host.Call(base, "Pick", {host.NewDictionary()}).AsString(), "variant");
    EXPECT_EQ(host.Call(base, "Pick", {base}).AsString(), "base");
    EXPECT_EQ(host.Call(base, "Pick", {Value()}).AsString(), "nothing");
    EXPECT_EQ(host.Call(base, "Pick", {"text", true}).AsString(), "true");
    EXPECT_EQ(host.Call(base, "Pick", {"text", 3}).AsString(), "3");
    EXPECT_EQ(host.Call(base, "pick", {"text", uint32_t{4294967295u}}).AsString(), "4294967295");
}

TEST_F(Calls, ASubclassOverridesItsOverloadOnly)
{
    const Value derived = host.New("DerivedEX");
    EXPECT_EQ(host.Call(derived, "Pick", {1}).AsString(), "derived integer");
    EXPECT_EQ(host.Call(derived, "Pick", {"text"}).AsString(), "string");
    EXPECT_EQ(host.CallAs("BaseEX", derived, "Pick", {1}).AsString(), "integer");
    EXPECT_EQ(host.Call(derived, "Pick", {derived}).AsString(), "base");
}

TEST_F(Calls, ArgumentsThatNothingTakesListTheOverloads)
{
    const Value base = host.New("BaseEX");
    try {
        host.Call(base, "Pick", {"text", -1});
        FAIL() << "a negative number is no UInt32";
    } catch (const UsageError &error) {
        EXPECT_THAT(error.what(), HasSubstr("BaseEX: Pick(s As String, options As UInt32) As String"));
    }
    EXPECT_THROW(host.Call(base, "Pick", {1, 2, 3}), UsageError);
    EXPECT_THROW(host.Call(base, "NoSuchMethod"), UsageError);
    EXPECT_THROW(host.Call(Value(3), "Pick"), UsageError);
    EXPECT_THROW(host.CallShared("BaseEX", "Pick", {1}), UsageError);
}

TEST_F(Calls, AnAmbiguousCallIsRefused)
{
    const Value base = host.New("BaseEX");
    try {
        host.Call(base, "Pair", {1, 2});
        FAIL() << "both overloads fit equally well";
    } catch (const UsageError &error) {
        EXPECT_THAT(error.what(), HasSubstr("ambiguous"));
    }
    EXPECT_EQ(host.Call(base, "Pair", {"a", 2}).AsInteger(), 1);
    EXPECT_EQ(host.Call(base, "Pair", {1, "b"}).AsInteger(), 2);
}

TEST_F(Calls, AnEmptyStringIsTheNullString)
{
    const Value base = host.New("BaseEX");
    EXPECT_TRUE(host.Call(base, "IsNull").AsBoolean());
    EXPECT_TRUE(host.Call(base, "IsNull", {""}).AsBoolean());
    EXPECT_TRUE(host.Call(base, "IsNull", {Value::EmptyString()}).AsBoolean());
    EXPECT_FALSE(host.Call(base, "IsNull", {Value::StringOfBytes("", encoding::UTF8)}).AsBoolean());
}

TEST_F(Calls, NumbersOfEveryWidthArrive)
{
    const Value base = host.New("BaseEX");
    EXPECT_EQ(host.Call(base, "Sum", {-1, 255, -300, 65535, -70000, uint32_t{4294967295u}}).AsInteger(),
              -1 + 255 - 300 + 65535 - 70000 + 4294967295);
    EXPECT_EQ(host.Call(base, "Half", {5}).AsDouble(), 2.5);
    EXPECT_EQ(host.Call(base, "HalfSingle", {5.0}).AsDouble(), 2.5);
    EXPECT_EQ(host.Call(base, "HalfSingle", {5.0}).Code(), code::Single);
}

TEST_F(Calls, VariantsTravelBothWays)
{
    const Value base = host.New("BaseEX");
    EXPECT_EQ(host.Call(base, "Echo", {42}).AsInteger(), 42);
    EXPECT_EQ(host.Call(base, "Echo", {42}).Code(), code::Int64);
    EXPECT_EQ(host.Call(base, "Echo", {true}).Code(), code::Boolean);
    EXPECT_EQ(host.Call(base, "Echo", {"text"}).AsString(), "text");
    EXPECT_EQ(host.Call(base, "Echo", {base}).ObjectPointer(), base.ObjectPointer());
    EXPECT_TRUE(host.Call(base, "Echo", {Value()}).IsNil());
}

TEST_F(Calls, FieldsAreReadAndWrittenInTheirWidth)
{
    const Value base = host.New("BaseEX");
    host.Set(base, "Handle", int64_t{-5000000000});
    EXPECT_EQ(host.Get(base, "Handle").AsInteger(), -5000000000);
    host.Set(base, "Small", -2);
    EXPECT_EQ(host.Get(base, "Small").AsInteger(), -2);
    EXPECT_EQ(static_cast<const uint16_t *>(host.InstanceData(base))[4], 0xFFFE);
    EXPECT_EQ(static_cast<const uint16_t *>(host.InstanceData(base))[5], 0);
    EXPECT_THROW(host.Set(base, "Small", 70000), UsageError);
}

TEST_F(Calls, GettersAndSettersGetTheirParameter)
{
    const Value base = host.New("BaseEX", {4});
    EXPECT_EQ(host.Get(base, "tick").AsInteger(), 12);
    host.Set(base, "Tick", 30);
    EXPECT_EQ(host.Get(base, "Handle").AsInteger(), 10);
    EXPECT_EQ(host.Get(base, "Title").AsString(), "the title");
    EXPECT_THROW(host.Set(base, "Title", "another"), UsageError);
    EXPECT_THROW(host.Set(base, "Tick", "text"), UsageError);
    EXPECT_THROW(host.Get(base, "NoSuchProperty"), UsageError);
}

TEST_F(Calls, ComputedPropertiesAreReadAndWritten)
{
    const Value derived = host.New("DerivedEX");
    EXPECT_FALSE(host.Get(derived, "on").AsBoolean());
    host.Set(derived, "On", true);
    EXPECT_TRUE(host.Get(derived, "on").AsBoolean());
    EXPECT_EQ(host.CallShared("DerivedEX", "Kind").AsString(), "an example");
}

TEST_F(Calls, SharedMethodsGetNoInstance)
{
    const Value made = host.CallShared("BaseEX", "Make", {77});
    EXPECT_EQ(host.ClassOf(made), "BaseEX");
    EXPECT_EQ(host.Get(made, "Handle").AsInteger(), 77);
    EXPECT_EQ(host.References(made), 1);
}

TEST_F(Calls, ConstantsAreFoundAlongTheClassChain)
{
    EXPECT_EQ(host.Constant("BaseEX", "Answer"), 42);
    EXPECT_EQ(host.Constant("DerivedEX", "below"), -1);
    EXPECT_THROW(host.Constant("BaseEX", "Question"), UsageError);
}

TEST_F(Calls, ACppExceptionOfTheLibraryPasses)
{
    const Value base = host.New("BaseEX");
    EXPECT_THROW(host.Call(base, "ThrowStandard"), std::string);
    EXPECT_EQ(host.Call(base, "Pick", {1}).AsString(), "integer");
}

} // namespace qzlhost
