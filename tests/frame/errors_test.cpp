// Host exceptions by class name, for indexes and for C++ exceptions.
#include "frame/errors.h"

#include <new>

#include "frame/host_strings.h"
#include "tests/support/linked_test.h"
#include "tests/support/row_names.h"
#include "tests/support/standard_exceptions.h"
#include "tests/support/trace.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

using Errors = LinkedTest;

/// Runs `body` as a member that the host calls, so that what it raises reaches the program.
void AsMember(Host &host, const std::function<void()> &body)
{
    static int callers = 0;
    const std::string className = "Caller" + std::to_string(++callers);
    qzlhost::ClassDefinition definition;
    definition.name = className;
    definition.methods.push_back({"Run()", [&](const Value &, const std::vector<Value> &) {
                                      body();
                                      return Value();
                                  }});
    host.DefineClass(std::move(definition));
    host.Call(host.New(className), "Run");
}

void ExpectRaisedBy(Host &host, const std::function<void()> &body, const std::string &className,
                    const std::string &message)
{
    ExpectException([&] { AsMember(host, body); }, className, message);
}

/// A function that the host lacks.
struct LackRow {
    const char *function;
    bool losesMessage;
};

class ErrorsWithout : public LinkedTest, public ::testing::WithParamInterface<LackRow> {};

struct BoundsRow {
    int64_t value;
    int64_t count;
    const char *message;
};

class OutOfBounds : public LinkedTest, public ::testing::WithParamInterface<BoundsRow> {};

class StandardExceptions : public LinkedTest, public ::testing::WithParamInterface<StandardRow> {};

} // namespace

TEST_F(Errors, RaiseTheNamedClassWithItsMessage)
{
    Host &host = Start();
    for (const char *className :
         {"RuntimeException", "OutOfBoundsException", "OutOfMemoryException", "IllegalCastException",
          "NilObjectException", "UnsupportedOperationException"}) {
        SCOPED_TRACE(className);
        ExpectRaisedBy(
            host, [&] { RaiseException(className, "Handle is zero"); }, className, "Handle is zero");
    }
}

TEST_F(Errors, NullMessageIsTheEmptyString)
{
    Host &host = Start();
    ExpectRaisedBy(host, [] { RaiseException("NilObjectException", nullptr); }, "NilObjectException", "");
}

TEST_F(Errors, ErrorNumberIsZeroWhateverIsPassed)
{
    Host &host = Start();
    ExpectRaisedBy(
        host, [] { RaiseException("RuntimeException", "text", 42, 77); }, "RuntimeException", "text");
}

TEST_F(Errors, AreMadeRaisedAndGivenBackInThisOrder)
{
    Host &host = Start();
    RaiseException("NilObjectException", "text", 42, 77);
    const Value exception = host.TakeException();
    EXPECT_EQ(CallsWithArguments(host),
              (std::vector<std::string>{
                  "REALBuildString(\"text\", 4)",
                  "REALSetStringEncoding(\"text\" (String #1), 1536)",
                  "PluginNewInstance(\"NilObjectException\")",
                  "REALSetPropValueString(NilObjectException #2, \"Message\", \"text\" (String #1))",
                  "REALSetPropValueInteger(NilObjectException #2, \"ErrorNumber\", 0)",
                  "RuntimeRaiseException(NilObjectException #2)",
                  "REALUnlockObject(NilObjectException #2)",
                  "REALUnlockString(\"text\" (String #1))",
              }));
}

TEST_F(Errors, OfAnUnknownClassAreMadeOfRuntimeExceptionInThisOrder)
{
    Host &host = Start();
    RaiseException("NoSuchException", nullptr);
    const Value exception = host.TakeException();
    EXPECT_EQ(CallsWithArguments(host),
              (std::vector<std::string>{
                  "PluginNewInstance(\"NoSuchException\")",
                  "PluginNewInstance(\"RuntimeException\")",
                  "REALSetPropValueString(RuntimeException #1, \"Message\", the empty string)",
                  "REALSetPropValueInteger(RuntimeException #1, \"ErrorNumber\", 0)",
                  "RuntimeRaiseException(RuntimeException #1)",
                  "REALUnlockObject(RuntimeException #1)",
              }));
}

TEST_F(Errors, OfAnUnknownClassAreRuntimeExceptionsWithTheirMessage)
{
    Host &host = Start();
    ExpectRaisedBy(host, [] { RaiseException("NoSuchException", "kept"); }, "RuntimeException", "kept");
}

TEST_F(Errors, WithoutInstancesNothingIsRaised)
{
    Host &host = StartLacking({"PluginNewInstance"});
    RaiseException("NilObjectException", "unheard");
    EXPECT_EQ(host.AsksFor("PluginNewInstance"), 2);
    EXPECT_EQ(CallsWithArguments(host), (std::vector<std::string>{
                                            "REALBuildString(\"unheard\", 7)",
                                            "REALSetStringEncoding(\"unheard\" (String #1), 1536)",
                                            "REALUnlockString(\"unheard\" (String #1))",
                                        }));
}

TEST_P(ErrorsWithout, AHostFunctionSkipOnlyItsStep)
{
    Host &host = StartLacking({GetParam().function});
    const std::string message = GetParam().losesMessage ? "" : "text";
    ExpectRaisedBy(host, [] { RaiseException("NilObjectException", "text"); }, "NilObjectException", message);
}

INSTANTIATE_TEST_SUITE_P(Functions, ErrorsWithout,
                         ::testing::Values(LackRow{"REALBuildString", true},
                                           LackRow{"REALSetStringEncoding", false},
                                           LackRow{"REALSetPropValueString", true},
                                           LackRow{"REALSetPropValueInteger", false}),
                         [](const auto &info) { return std::string(info.param.function); });

TEST_F(Errors, WithoutAWayToRaiseEverythingIsGivenBack)
{
    Host &host = StartLacking({"RuntimeRaiseException"});
    RaiseException("NilObjectException", "unheard");
    EXPECT_TRUE(host.TakeException().IsNil());
    EXPECT_EQ(host.CallsOf("REALUnlockObject"), 1);
    EXPECT_EQ(host.CallsOf("REALUnlockString"), 1);
}

TEST_F(Errors, ThatTheHostEndsWithAnExceptionGiveEverythingBack)
{
    using SetString = bool (*)(REALobject, const char *, REALstring);
    static constexpr SetString kThrows = [](REALobject, const char *, REALstring) -> bool { throw 42; };
    Host &host = StartReplacing("REALSetPropValueString", reinterpret_cast<void *>(kThrows));
    EXPECT_THROW(RaiseException("NilObjectException", "unheard"), int);
    EXPECT_EQ(host.CallsOf("REALUnlockObject"), 1);
    EXPECT_EQ(host.CallsOf("REALUnlockString"), 1);
}

TEST_F(Errors, MessageIsTaggedASCII)
{
    Host &host = Start();
    try {
        AsMember(host, [] { RaiseException("RuntimeException", "text"); });
        ADD_FAILURE() << "nothing was raised";
    } catch (const qzlhost::ProgramException &exception) {
        EXPECT_EQ(host.Get(exception.Exception(), "Message").StringEncoding(), qzlhost::encoding::ASCII);
    }
}

TEST_P(OutOfBounds, NamesTheRangeAndTheValue)
{
    Host &host = Start();
    ExpectRaisedBy(
        host, [] { RaiseOutOfBoundsException(GetParam().value, GetParam().count); }, "OutOfBoundsException",
        GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, OutOfBounds,
    ::testing::Values(
        BoundsRow{5, 3, "Parameter index  is too big. Range is 0 to 2, but value is 5."},
        BoundsRow{-1, 10, "Parameter index  is too small. Range is 0 to 9, but value is -1."},
        BoundsRow{10, 10, "Parameter index  is too big. Range is 0 to 9, but value is 10."},
        BoundsRow{0, 0, "Parameter index  is too big. Range is 0 to -1, but value is 0."},
        BoundsRow{INT64_MIN, INT64_MAX,
                  "Parameter index  is too small. Range is 0 to 9223372036854775806, but value is "
                  "-9223372036854775808."},
        BoundsRow{INT64_MAX, 1,
                  "Parameter index  is too big. Range is 0 to 0, but value is 9223372036854775807."}));

TEST_P(StandardExceptions, BecomeHostExceptions)
{
    Host &host = Start(2024.01, ThrowingBuilder::Install);
    ThrowingBuilder::ThrowNext(GetParam().thrower);
    REALstring result = reinterpret_cast<REALstring>(this);
    ExpectRaisedBy(
        host, [&] { result = REALBuildUnicodeString("text", 4, kCFStringEncodingUTF8); },
        GetParam().className, GetParam().message);
    EXPECT_EQ(result, nullptr);
    EXPECT_EQ(host.CallsOf("RuntimeRaiseException"), 1);
}

INSTANTIATE_TEST_SUITE_P(Rows, StandardExceptions, ::testing::ValuesIn(kStandardRows), kNameOfRow);

TEST_F(Errors, TextOfAStandardExceptionIsTaggedASCII)
{
    Host &host = Start(2024.01, ThrowingBuilder::Install);
    ThrowingBuilder::ThrowNext([] { throw std::runtime_error("text"); });
    EXPECT_EQ(REALBuildUnicodeString("bytes", 5, kCFStringEncodingUTF8), nullptr);
    const Value message = host.Get(host.TakeException(), "Message");
    EXPECT_EQ(message.StringBytes(), "text");
    EXPECT_EQ(message.StringEncoding(), qzlhost::encoding::ASCII);
}

TEST_F(Errors, StringBuilderThatKeepsThrowingEndsWithAnEmptyMessage)
{
    using BuildString = REALstring (*)(const char *, int32_t);
    static constexpr BuildString kThrows = [](const char *, int32_t) -> REALstring {
        throw std::bad_alloc();
    };
    Host &host = StartReplacing("REALBuildString", reinterpret_cast<void *>(kThrows));
    ExpectRaisedBy(
        host, [] { REALBuildUnicodeString("text", 4, kCFStringEncodingUTF8); }, "OutOfMemoryException", "");
}

TEST_F(Errors, DummyExceptionIsNilForAnyInstance)
{
    Host &host = Start();
    const Value instance = host.New("RuntimeException");
    EXPECT_EQ(DummyException(ObjectOf(instance)), nullptr);
    EXPECT_TRUE(host.Trace().empty());
}
