// Host exceptions: by class name, for indexes, for C++ exceptions.
#include "frame/errors.h"

#include <new>
#include <stdexcept>
#include <typeinfo>

#include "frame/host_strings.h"
#include "tests/support/linked_test.h"

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

void ExpectRaised(Host &host, const std::function<void()> &body, const std::string &className,
                  const std::string &message)
{
    ExpectException([&] { AsMember(host, body); }, className, message);
}

struct BoundsRow {
    int64_t value;
    int64_t count;
    const char *message;
};

class OutOfBounds : public LinkedTest, public ::testing::WithParamInterface<BoundsRow> {};

struct Derived : std::out_of_range {
    using std::out_of_range::out_of_range;
};

/// The exception that the host's string builder throws next time; it then works again.
std::function<void()> gThrow;
REALstring (*gRealBuildString)(const char *, int32_t);

REALstring ThrowingBuildString(const char *bytes, int32_t length)
{
    if (gThrow) {
        const std::function<void()> thrower = std::move(gThrow);
        gThrow = nullptr;
        thrower();
    }
    return gRealBuildString(bytes, length);
}

struct StandardRow {
    const char *name;
    std::function<void()> thrower;
    const char *className;
    std::string message;
};

class StandardExceptions : public LinkedTest, public ::testing::WithParamInterface<StandardRow> {};

std::string RowName(const ::testing::TestParamInfo<StandardRow> &info)
{
    return info.param.name;
}

} // namespace

TEST_F(Errors, RaiseTheNamedClassWithItsMessage)
{
    Host &host = Start();
    for (const char *className :
         {"RuntimeException", "OutOfBoundsException", "OutOfMemoryException", "IllegalCastException",
          "NilObjectException", "UnsupportedOperationException"}) {
        SCOPED_TRACE(className);
        ExpectRaised(
            host, [&] { RaiseException(className, "Handle is zero"); }, className, "Handle is zero");
    }
}

TEST_F(Errors, NullMessageIsTheEmptyString)
{
    Host &host = Start();
    ExpectRaised(
        host, [] { RaiseException("NilObjectException", nullptr); }, "NilObjectException", "");
}

TEST_F(Errors, ErrorNumberIsZeroWhateverIsPassed)
{
    Host &host = Start();
    ExpectRaised(
        host, [] { RaiseException("RuntimeException", "text", 42, 77); }, "RuntimeException", "text");
    // Set, not only left at what a new exception has.
    EXPECT_EQ(host.CallsOf("REALSetPropValueInteger"), 1);
}

TEST_F(Errors, UnknownClassFallsBackToRuntimeException)
{
    Host &host = Start();
    ExpectRaised(
        host, [] { RaiseException("NoSuchException", "kept"); }, "RuntimeException", "kept");
}

TEST_F(Errors, WithoutInstancesNothingIsRaised)
{
    Host &host = Start(2024.01, [](Host &unloaded) { unloaded.Lack("PluginNewInstance"); });
    EXPECT_NO_THROW(RaiseException("RuntimeException", "unheard"));
    EXPECT_EQ(host.CallsOf("RuntimeRaiseException"), 0);
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
    ExpectRaised(
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
    Host &host = Start(2024.01, [](Host &unloaded) {
        gRealBuildString =
            reinterpret_cast<decltype(gRealBuildString)>(unloaded.Resolver()("REALBuildString"));
        unloaded.Replace("REALBuildString", reinterpret_cast<void *>(ThrowingBuildString));
    });
    gThrow = GetParam().thrower;
    REALstring result = nullptr;
    ExpectRaised(
        host, [&] { result = REALBuildUnicodeString("text", 4, kCFStringEncodingUTF8); },
        GetParam().className, GetParam().message);
    EXPECT_EQ(result, nullptr);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, StandardExceptions,
    ::testing::Values(
        StandardRow{"BadAlloc", [] { throw std::bad_alloc(); }, "OutOfMemoryException",
                    "Failed to allocate memory."},
        StandardRow{"BadArrayNewLength", [] { throw std::bad_array_new_length(); }, "OutOfMemoryException",
                    "Failed to allocate memory."},
        StandardRow{"RangeError", [] { throw std::range_error("range"); }, "OutOfBoundsException", "range"},
        StandardRow{"OutOfRange", [] { throw std::out_of_range("out"); }, "OutOfBoundsException", "out"},
        StandardRow{"DerivedOutOfRange", [] { throw Derived("derived"); }, "OutOfBoundsException", "derived"},
        StandardRow{"OverflowError", [] { throw std::overflow_error("over"); }, "OutOfBoundsException",
                    "over"},
        StandardRow{"UnderflowError", [] { throw std::underflow_error("under"); }, "OutOfBoundsException",
                    "under"},
        StandardRow{"LogicError", [] { throw std::logic_error("logic"); }, "RuntimeException", "logic"},
        StandardRow{"LengthError", [] { throw std::length_error("length"); }, "RuntimeException", "length"},
        StandardRow{"RuntimeError", [] { throw std::runtime_error("runtime"); }, "RuntimeException",
                    "runtime"},
        StandardRow{"BadCast", [] { throw std::bad_cast(); }, "IllegalCastException", std::bad_cast().what()},
        StandardRow{"Exception", [] { throw std::exception(); }, "RuntimeException", std::exception().what()},
        StandardRow{"AnythingElse", [] { throw 42; }, "RuntimeException",
                    "Sorry, but there was an unnamed C++ Exception."}),
    RowName);

TEST_F(Errors, StringBuilderThatKeepsThrowingEndsWithAnEmptyMessage)
{
    using BuildString = REALstring (*)(const char *, int32_t);
    static constexpr BuildString kThrows = [](const char *, int32_t) -> REALstring {
        throw std::bad_alloc();
    };
    Host &host = Start(2024.01, [](Host &unloaded) {
        unloaded.Replace("REALBuildString", reinterpret_cast<void *>(kThrows));
    });
    ExpectRaised(
        host, [] { REALBuildUnicodeString("text", 4, kCFStringEncodingUTF8); }, "OutOfMemoryException", "");
}

TEST_F(Errors, DummyExceptionIsNil)
{
    EXPECT_EQ(DummyException(nullptr), nullptr);
}
