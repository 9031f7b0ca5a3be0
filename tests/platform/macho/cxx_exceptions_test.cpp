// C++ exceptions between a dylib and code of this platform.
#include <new>
#include <stdexcept>
#include <thread>
#include <vector>

#include "tests/platform/macho/dylib_test.h"
#include "tests/platform/macho/dylibs/exceptions.h"

namespace {

class ThrowingTest : public DylibTest {
protected:
    static Callback Throwing(int &value)
    {
        return {[](void *context) { throw Thrown{*static_cast<int *>(context)}; }, &value};
    }
};

/// In functions with handlers for Objective-C exceptions.
class CxxExceptionsInObjc : public ThrowingTest {
protected:
    void SetUp() override { Load("objc_exceptions"); }
};

/// The same source, compiled with frame pointers and without.
class CxxExceptions : public ThrowingTest, public testing::WithParamInterface<const char *> {
protected:
    void SetUp() override { Load(GetParam()); }
};

/// The value that a call throws; -1 for none.
template <typename Call>
int ValueFrom(Call call)
{
    try {
        call();
    } catch (const Thrown &thrown) {
        return thrown.value;
    }
    return -1;
}

} // namespace

TEST_P(CxxExceptions, ThrownThereAreCaughtHere)
{
    EXPECT_EQ(ValueFrom([&] { Find<void(int)>("throwValue")(7); }), 7);
    EXPECT_THROW(Find<void()>("throwBadAlloc")(), std::bad_alloc);
}

TEST_P(CxxExceptions, ThrownHereAreCaughtThereByTheirType)
{
    const auto catchByType = Find<Outcome(const Callback &, int *)>("catchByType");
    int thrown = 8;
    int value = 0;
    EXPECT_EQ(catchByType(Throwing(thrown), &value), Outcome::OwnType);
    EXPECT_EQ(value, 8);
    EXPECT_EQ(catchByType({[](void *) { throw std::runtime_error("on purpose"); }, nullptr}, &value),
              Outcome::StandardException);
    EXPECT_EQ(catchByType({[](void *) { throw std::bad_alloc(); }, nullptr}, &value),
              Outcome::StandardException);
    EXPECT_EQ(catchByType({[](void *) { throw "text"; }, nullptr}, &value), Outcome::Anything);
    EXPECT_EQ(catchByType({[](void *) {}, nullptr}, &value), Outcome::Nothing);
}

TEST_P(CxxExceptions, OfATypeWithoutAHandlerGoThrough)
{
    const auto catchOwnType = Find<Outcome(const Callback &, int *)>("catchOwnType");
    int value = 0;
    EXPECT_THROW(catchOwnType({[](void *) { throw std::out_of_range("on purpose"); }, nullptr}, &value),
                 std::out_of_range);
}

TEST_P(CxxExceptions, RethrownStayTheSame)
{
    int thrown = 9;
    int count = 0;
    const auto rethrow = Find<void(const Callback &, int *)>("rethrowAnything");
    EXPECT_EQ(ValueFrom([&] { rethrow(Throwing(thrown), &count); }), 9);
    EXPECT_EQ(count, 1);
}

TEST_P(CxxExceptions, GoThroughFramesOfEachSizeAndKeepRegisters)
{
    for (const char *const function : {"letThroughFrames", "letThroughLargeFrame"}) {
        SCOPED_TRACE(function);
        const auto through = Find<long(const Callback &, int *, long, long, long, long)>(function);
        int thrown = 10;
        int living = 0;
        // Held in registers across the call, if the compiler keeps them there.
        const long a = thrown + 1, b = thrown + 2, c = thrown + 3, d = thrown + 4;
        EXPECT_EQ(ValueFrom([&] { through(Throwing(thrown), &living, a, b, c, d); }), 10);
        EXPECT_EQ(living, 0);
        EXPECT_EQ(a + b + c + d, 50);
        EXPECT_NE(through({[](void *) {}, nullptr}, &living, a, b, c, d), 0);
    }
}

TEST_F(CxxExceptionsInObjc, AreNoObjects)
{
    int thrown = 11;
    void *caught = nullptr;
    EXPECT_EQ(Find<Outcome(const Callback &, void **)>("catchByClass")(Throwing(thrown), &caught),
              Outcome::Anything);
    EXPECT_EQ(caught, nullptr);
    EXPECT_EQ(Find<Outcome(const Callback &)>("catchAnything")(Throwing(thrown)), Outcome::Anything);
}

TEST_F(CxxExceptionsInObjc, GoThroughHandlersOfObjects)
{
    int thrown = 12;
    int count = 0;
    EXPECT_EQ(ValueFrom([&] { Find<Outcome(const Callback &)>("catchExceptionsOnly")(Throwing(thrown)); }),
              12);
    EXPECT_EQ(
        ValueFrom([&] { Find<void(const Callback &, int *)>("finallyCounts")(Throwing(thrown), &count); }),
        12);
    EXPECT_EQ(count, 1);
}

TEST_P(CxxExceptions, OnSeveralThreadsStayApart)
{
    const auto throwAndCatch = Find<long(long)>("throwAndCatch");
    constexpr long kTimes = 15000;
    std::vector<long> sums(4);
    std::vector<std::thread> threads;
    for (long &sum : sums)
        threads.emplace_back([&sum, throwAndCatch] { sum = throwAndCatch(kTimes); });
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(sums, std::vector<long>(4, kTimes * (kTimes - 1) / 2));
}

INSTANTIATE_TEST_SUITE_P(Compiled, CxxExceptions,
                         testing::Values("cxx_exceptions", "cxx_exceptions_frameless"),
                         [](const auto &info) { return std::string(info.param); });
