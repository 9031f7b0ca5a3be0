// Calls by a signature known at run time, checked against functions that the compiler calls.
#include "host/calls/native_call.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cfloat>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

namespace qzlhost {
namespace {

template <typename Function>
void *Address(Function *function)
{
    return reinterpret_cast<void *>(function);
}

template <typename T>
NativeValue Pack(T value)
{
    NativeValue packed{};
    if constexpr (std::is_same_v<T, float>)
        packed.single = value;
    else if constexpr (std::is_same_v<T, double>)
        packed.number = value;
    else if constexpr (std::is_pointer_v<T>)
        packed.pointer = value;
    else
        packed.integer = static_cast<int64_t>(value); // NOLINT(bugprone-signed-char-misuse): its sign counts
    return packed;
}

template <typename T>
T Unpack(const NativeValue &value)
{
    if constexpr (std::is_same_v<T, float>)
        return value.single;
    else if constexpr (std::is_same_v<T, double>)
        return value.number;
    else if constexpr (std::is_pointer_v<T>)
        return static_cast<T>(value.pointer);
    else
        return static_cast<T>(value.integer);
}

/// Compares the bits, so that a NaN equals itself and 0.0 differs from -0.0.
template <typename T>
bool SameBits(T a, T b)
{
    using Bytes = std::array<std::byte, sizeof(T)>;
    return std::bit_cast<Bytes>(a) == std::bit_cast<Bytes>(b);
}

// Every type, as a parameter and as a result

template <typename T, NativeType Native>
struct TypeCase {
    using Value = T;
    static constexpr NativeType kNative = Native;
};

using EveryType = testing::Types<TypeCase<bool, NativeType::Boolean>, TypeCase<int8_t, NativeType::Int8>,
                                 TypeCase<uint8_t, NativeType::UInt8>, TypeCase<int16_t, NativeType::Int16>,
                                 TypeCase<uint16_t, NativeType::UInt16>, TypeCase<int32_t, NativeType::Int32>,
                                 TypeCase<uint32_t, NativeType::UInt32>, TypeCase<int64_t, NativeType::Int64>,
                                 TypeCase<uint64_t, NativeType::UInt64>, TypeCase<float, NativeType::Single>,
                                 TypeCase<double, NativeType::Double>, TypeCase<void *, NativeType::Pointer>>;

template <typename T>
std::vector<T> Extremes()
{
    using Limits = std::numeric_limits<T>;
    if constexpr (std::is_floating_point_v<T>) {
        return {0,
                T{-0.0F},
                1,
                T{-1.5F},
                Limits::min(),
                Limits::max(),
                Limits::lowest(),
                Limits::denorm_min(),
                Limits::infinity(),
                -Limits::infinity(),
                Limits::quiet_NaN()};
    } else if constexpr (std::is_pointer_v<T>) {
        static int anything;
        return {nullptr, &anything, reinterpret_cast<T>(~uintptr_t{0})};
    } else if constexpr (std::is_same_v<T, bool>) {
        return {false, true};
    } else {
        return {0,
                1,
                Limits::min(),
                Limits::max(),
                static_cast<T>(Limits::max() - 1),
                static_cast<T>(Limits::max() / 2 + 1)};
    }
}

template <typename T>
T gReceived;

template <typename T>
T KeepAndReturn(T value)
{
    gReceived<T> = value;
    return value;
}

/// Six integers and eight floating-point numbers fill the registers, so that `value` is on the stack.
template <typename T>
T ReturnFromStack(int64_t, int64_t, int64_t, int64_t, int64_t, int64_t, double, double, double, double,
                  double, double, double, double, T value)
{
    gReceived<T> = value;
    return value;
}

NativeSignature StackSignature(NativeType type)
{
    NativeSignature signature{type, std::vector<NativeType>(6, NativeType::Int64)};
    signature.parameters.insert(signature.parameters.end(), 8, NativeType::Double);
    signature.parameters.push_back(type);
    return signature;
}

template <typename Case>
class NativeCall : public testing::Test {};
TYPED_TEST_SUITE(NativeCall, EveryType);

TYPED_TEST(NativeCall, PassesExtremeValuesAndTheirResults)
{
    using T = typename TypeParam::Value;
    for (const T value : Extremes<T>()) {
        gReceived<T> = T{};
        const NativeValue argument = Pack(value);

        const NativeValue result =
            CallNative(Address(KeepAndReturn<T>), {TypeParam::kNative, {TypeParam::kNative}}, &argument);

        EXPECT_TRUE(SameBits(gReceived<T>, value));
        EXPECT_TRUE(SameBits(Unpack<T>(result), value));
        if constexpr (std::is_integral_v<T>)
            EXPECT_EQ(result.integer, static_cast<int64_t>(value)) << "extended as the type asks";
    }
}

TYPED_TEST(NativeCall, PassesValuesOnTheStack)
{
    using T = typename TypeParam::Value;
    for (const T value : Extremes<T>()) {
        gReceived<T> = T{};
        std::vector<NativeValue> arguments(6, Pack(int64_t{-1}));
        arguments.insert(arguments.end(), 8, Pack(-1.0));
        arguments.push_back(Pack(value));

        const NativeValue result =
            CallNative(Address(ReturnFromStack<T>), StackSignature(TypeParam::kNative), arguments.data());

        EXPECT_TRUE(SameBits(gReceived<T>, value));
        EXPECT_TRUE(SameBits(Unpack<T>(result), value));
    }
}

TYPED_TEST(NativeCall, CallbackReceivesExtremeValuesAndReturnsThem)
{
    using T = typename TypeParam::Value;
    NativeValue seen{};
    const NativeCallback callback({TypeParam::kNative, {TypeParam::kNative}},
                                  [&](const NativeValue *arguments) { return seen = arguments[0]; });
    auto *const function = reinterpret_cast<T (*)(T)>(callback.Function());
    for (const T value : Extremes<T>()) {
        seen = {};

        const T result = function(value);

        EXPECT_TRUE(SameBits(result, value));
        EXPECT_TRUE(SameBits(Unpack<T>(seen), value));
        if constexpr (std::is_integral_v<T>)
            EXPECT_EQ(seen.integer, static_cast<int64_t>(value)) << "extended as the type asks";
    }
}

TYPED_TEST(NativeCall, CallbackReceivesValuesFromTheStack)
{
    using T = typename TypeParam::Value;
    const NativeCallback callback(StackSignature(TypeParam::kNative),
                                  [](const NativeValue *arguments) { return arguments[14]; });
    auto *const function = reinterpret_cast<decltype(&ReturnFromStack<T>)>(callback.Function());
    for (const T value : Extremes<T>())
        EXPECT_TRUE(SameBits(function(-1, -1, -1, -1, -1, -1, 9, 9, 9, 9, 9, 9, 9, 9, value), value));
}

TYPED_TEST(NativeCall, CallsACallback)
{
    using T = typename TypeParam::Value;
    const NativeSignature signature{TypeParam::kNative, {TypeParam::kNative}};
    const NativeCallback callback(signature, [](const NativeValue *arguments) { return arguments[0]; });
    for (const T value : Extremes<T>()) {
        const NativeValue argument = Pack(value);
        EXPECT_TRUE(SameBits(Unpack<T>(CallNative(callback.Function(), signature, &argument)), value));
    }
}

// Widths

uint64_t gRegisterContent;

uint64_t ReturnRegister()
{
    return gRegisterContent;
}

int64_t ResultRead(NativeType type, uint64_t content)
{
    gRegisterContent = content;
    return CallNative(Address(ReturnRegister), {type, {}}, nullptr).integer;
}

TEST(NativeResult, OnlyTheLowByteOfABooleanCounts)
{
    EXPECT_EQ(ResultRead(NativeType::Boolean, 0xFFFFFFFFFFFFFF00), 0);
    EXPECT_EQ(ResultRead(NativeType::Boolean, 0x100), 0);
    EXPECT_EQ(ResultRead(NativeType::Boolean, 0xFFFFFFFFFFFFFF01), 1);
    EXPECT_EQ(ResultRead(NativeType::Boolean, 0x02), 1);
    EXPECT_EQ(ResultRead(NativeType::Boolean, 0x80), 1);
}

TEST(NativeResult, NarrowNumbersAreReadFromTheLowPartOfTheRegister)
{
    EXPECT_EQ(ResultRead(NativeType::Int8, 0xFFFFFFFFFFFFFF7F), 127);
    EXPECT_EQ(ResultRead(NativeType::Int8, 0x80), -128);
    EXPECT_EQ(ResultRead(NativeType::UInt8, 0xFFFFFFFFFFFFFF80), 128);
    EXPECT_EQ(ResultRead(NativeType::Int16, 0x18000), -32768);
    EXPECT_EQ(ResultRead(NativeType::UInt16, 0xFFFFFFFFFFFF8000), 32768);
    EXPECT_EQ(ResultRead(NativeType::Int32, 0x180000000), INT32_MIN);
    EXPECT_EQ(ResultRead(NativeType::UInt32, 0xFFFFFFFF80000000), int64_t{1} << 31);
    EXPECT_EQ(ResultRead(NativeType::Int64, UINT64_MAX), -1);
    EXPECT_EQ(ResultRead(NativeType::Nothing, UINT64_MAX), 0);
}

uint64_t KeepRegister(uint64_t content)
{
    return content;
}

int64_t ArgumentSeen(NativeType type, int64_t value)
{
    const NativeValue argument = Pack(value);
    return CallNative(Address(KeepRegister), {NativeType::Int64, {type}}, &argument).integer;
}

TEST(NativeArgument, IsCutToItsWidthAndExtendedToItsRegister)
{
    EXPECT_EQ(ArgumentSeen(NativeType::Boolean, 0x100) & 0xFF, 0);
    EXPECT_EQ(ArgumentSeen(NativeType::Boolean, 2) & 0xFF, 1);
    EXPECT_EQ(ArgumentSeen(NativeType::UInt8, 0x1FF) & 0xFFFFFFFF, 255);
    EXPECT_EQ(static_cast<int32_t>(ArgumentSeen(NativeType::Int8, 0x1FF)), -1);
    EXPECT_EQ(ArgumentSeen(NativeType::UInt16, 0x12345) & 0xFFFFFFFF, 0x2345);
    EXPECT_EQ(static_cast<int32_t>(ArgumentSeen(NativeType::Int16, 0x1FFFE)), -2);
    EXPECT_EQ(static_cast<uint32_t>(ArgumentSeen(NativeType::UInt32, -1)), UINT32_MAX);
}

TEST(NativeCallback, CutsItsResultToItsWidth)
{
    const NativeCallback boolean({NativeType::Boolean, {}}, [](const NativeValue *) { return Pack(0x102); });
    const NativeCallback byte({NativeType::UInt8, {}}, [](const NativeValue *) { return Pack(0x1FE); });

    EXPECT_TRUE(reinterpret_cast<bool (*)()>(boolean.Function())());
    EXPECT_EQ(reinterpret_cast<uint8_t (*)()>(byte.Function())(), 0xFE);
}

// Many arguments of all sorts

struct Mixture {
    int8_t a;
    float b;
    uint16_t c;
    double d;
    bool e;
    int32_t f;
    uint32_t g;
    int64_t h;
    uint8_t i;
    float j;
    int16_t k;
    void *l;
    double m, n, o, p, q, r, s, t;
    float u;
    bool v;
    uint64_t w;
};

Mixture gMixture;

double TakeMixture(int8_t a, float b, uint16_t c, double d, bool e, int32_t f, uint32_t g, int64_t h,
                   uint8_t i, float j, int16_t k, void *l, double m, double n, double o, double p, double q,
                   double r, double s, double t, float u, bool v, uint64_t w)
{
    gMixture = {a, b, c, d, e, f, g, h, i, j, k, l, m, n, o, p, q, r, s, t, u, v, w};
    return 0.25;
}

NativeSignature MixtureSignature()
{
    using T = NativeType;
    return {T::Double,
            {T::Int8,   T::Single, T::UInt16, T::Double,  T::Boolean, T::Int32,   T::UInt32, T::Int64,
             T::UInt8,  T::Single, T::Int16,  T::Pointer, T::Double,  T::Double,  T::Double, T::Double,
             T::Double, T::Double, T::Double, T::Double,  T::Single,  T::Boolean, T::UInt64}};
}

std::vector<NativeValue> MixtureArguments()
{
    return {Pack(-1),   Pack(0.5F),      Pack(65535),      Pack(1e300),
            Pack(true), Pack(INT32_MIN), Pack(UINT32_MAX), Pack(INT64_MIN),
            Pack(200),  Pack(-FLT_MAX),  Pack(-300),       Pack(static_cast<void *>(&gMixture)),
            Pack(1.0),  Pack(2.0),       Pack(3.0),        Pack(4.0),
            Pack(5.0),  Pack(6.0),       Pack(7.0),        Pack(8.0),
            Pack(9.0F), Pack(true),      Pack(UINT64_MAX)};
}

void ExpectWholeMixture()
{
    EXPECT_EQ(gMixture.a, -1);
    EXPECT_EQ(gMixture.b, 0.5F);
    EXPECT_EQ(gMixture.c, 65535);
    EXPECT_EQ(gMixture.d, 1e300);
    EXPECT_TRUE(gMixture.e);
    EXPECT_EQ(gMixture.f, INT32_MIN);
    EXPECT_EQ(gMixture.g, UINT32_MAX);
    EXPECT_EQ(gMixture.h, INT64_MIN);
    EXPECT_EQ(gMixture.i, 200);
    EXPECT_EQ(gMixture.j, -FLT_MAX);
    EXPECT_EQ(gMixture.k, -300);
    EXPECT_EQ(gMixture.l, &gMixture);
    const std::vector<double> numbers = {gMixture.m, gMixture.n, gMixture.o, gMixture.p,
                                         gMixture.q, gMixture.r, gMixture.s, gMixture.t};
    EXPECT_THAT(numbers, testing::ElementsAre(1, 2, 3, 4, 5, 6, 7, 8));
    EXPECT_EQ(gMixture.u, 9.0F);
    EXPECT_TRUE(gMixture.v);
    EXPECT_EQ(gMixture.w, UINT64_MAX);
}

TEST(NativeArguments, OfAllSortsFillRegistersAndStack)
{
    gMixture = {};

    const NativeValue result =
        CallNative(Address(TakeMixture), MixtureSignature(), MixtureArguments().data());

    ExpectWholeMixture();
    EXPECT_EQ(result.number, 0.25);
}

TEST(NativeArguments, OfAllSortsReachACallback)
{
    gMixture = {};
    const NativeCallback callback(MixtureSignature(), [](const NativeValue *arguments) {
        return CallNative(Address(TakeMixture), MixtureSignature(), arguments);
    });
    auto *const function = reinterpret_cast<decltype(&TakeMixture)>(callback.Function());

    const double result = function(-1, 0.5F, 65535, 1e300, true, INT32_MIN, UINT32_MAX, INT64_MIN, 200,
                                   -FLT_MAX, -300, &gMixture, 1, 2, 3, 4, 5, 6, 7, 8, 9, true, UINT64_MAX);

    ExpectWholeMixture();
    EXPECT_EQ(result, 0.25);
}

int gCalls;

void CountCall()
{
    ++gCalls;
}

TEST(NativeArguments, MayBeNone)
{
    gCalls = 0;

    CallNative(Address(CountCall), {NativeType::Nothing, {}}, nullptr);

    EXPECT_EQ(gCalls, 1);
}

TEST(NativeArguments, CannotBeNothing)
{
    const NativeValue argument{};
    EXPECT_THROW(CallNative(Address(CountCall), {NativeType::Nothing, {NativeType::Nothing}}, &argument),
                 std::invalid_argument);
    EXPECT_THROW(NativeCallback({NativeType::Nothing, {NativeType::Nothing}},
                                [](const NativeValue *) { return NativeValue{}; }),
                 std::invalid_argument);
}

// Exceptions

int64_t Throw(int64_t value)
{
    throw std::out_of_range(std::to_string(value));
}

const NativeSignature kIntegerToInteger{NativeType::Int64, {NativeType::Int64}};

/// The text of the exception that `run` throws; "nothing" for none.
template <typename Run>
std::string Thrown(Run run)
{
    try {
        run();
    } catch (const std::out_of_range &error) {
        return error.what();
    }
    return "nothing";
}

TEST(NativeException, OfACalleeArrivesAtTheCaller)
{
    const NativeValue argument = Pack(7);

    EXPECT_EQ(Thrown([&] { CallNative(Address(Throw), kIntegerToInteger, &argument); }), "7");
}

TEST(NativeException, OfACallbackArrivesAtItsCaller)
{
    const NativeCallback callback(kIntegerToInteger, [](const NativeValue *arguments) -> NativeValue {
        throw std::out_of_range(std::to_string(arguments[0].integer));
    });
    auto *const function = reinterpret_cast<int64_t (*)(int64_t)>(callback.Function());

    EXPECT_EQ(Thrown([&] { function(8); }), "8");
    EXPECT_EQ(Thrown([&] { function(9); }), "9") << "the callback can be called again";
}

TEST(NativeException, PassesThroughCallsAndCallbacksAndDestroysWhatIsOnTheWay)
{
    struct Witness {
        int &destroyed;
        ~Witness() { ++destroyed; }
    };
    int destroyed = 0;
    const NativeCallback inner(kIntegerToInteger, [&](const NativeValue *arguments) {
        const Witness witness{destroyed};
        return CallNative(Address(Throw), kIntegerToInteger, arguments);
    });
    const NativeCallback outer(kIntegerToInteger, [&](const NativeValue *arguments) {
        const Witness witness{destroyed};
        return CallNative(inner.Function(), kIntegerToInteger, arguments);
    });
    const NativeValue argument = Pack(10);

    EXPECT_EQ(Thrown([&] { CallNative(outer.Function(), kIntegerToInteger, &argument); }), "10");
    EXPECT_EQ(destroyed, 2);
}

// Callbacks

TEST(NativeCallback, EachCallsItsOwnBody)
{
    std::vector<std::unique_ptr<NativeCallback>> callbacks;
    for (int i = 0; i < 1000; ++i) {
        callbacks.push_back(std::make_unique<NativeCallback>(NativeSignature{NativeType::Int32, {}},
                                                             [i](const NativeValue *) { return Pack(i); }));
    }
    for (int i = 0; i < 1000; ++i) {
        auto *const function = reinterpret_cast<int32_t (*)()>(callbacks[static_cast<size_t>(i)]->Function());
        EXPECT_EQ(function(), i);
    }
}

TEST(NativeCallback, CanCallItself)
{
    void *function = nullptr;
    const NativeCallback factorial(kIntegerToInteger, [&](const NativeValue *arguments) {
        const int64_t n = arguments[0].integer;
        const NativeValue less = Pack(n - 1);
        return n == 0 ? Pack(1) : Pack(n * CallNative(function, kIntegerToInteger, &less).integer);
    });
    function = factorial.Function();
    const NativeValue argument = Pack(20);

    EXPECT_EQ(CallNative(function, kIntegerToInteger, &argument).integer, 2432902008176640000);
}

TEST(NativeCallback, CanBeCalledOnSeveralThreadsAtOnce)
{
    const NativeCallback twice(kIntegerToInteger,
                               [](const NativeValue *arguments) { return Pack(arguments[0].integer * 2); });
    auto *const function = reinterpret_cast<int64_t (*)(int64_t)>(twice.Function());
    std::vector<int> wrong(4);
    std::vector<std::thread> threads;
    for (int &count : wrong) {
        threads.emplace_back([&count, function] {
            for (int64_t i = 0; i < 10000; ++i) {
                const NativeValue argument = Pack(i);
                const bool right =
                    function(i) == 2 * i &&
                    CallNative(reinterpret_cast<void *>(function), kIntegerToInteger, &argument).integer ==
                        2 * i;
                count += right ? 0 : 1;
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();

    EXPECT_THAT(wrong, testing::Each(0));
}

} // namespace
} // namespace qzlhost
