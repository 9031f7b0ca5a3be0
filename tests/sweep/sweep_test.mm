// Makes each call of a host function faulty, one at a time, and checks how the program ends.
#import <Foundation/Foundation.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "family/family.h"
#include "tests/support/cocoa_objects.h"
#include "tests/support/library_under_test.h"
#include "tests/sweep/child.h"

using qzlhost::Host;

namespace {

/// The most calls of one function that are made faulty, spread from the first to the last.
int MostCalls()
{
    const char *const number = std::getenv("QZL_SWEPT_CALLS");
    return number != nullptr ? std::atoi(number) : 200;
}

std::vector<int> CallNumbers(int calls)
{
    const int count = std::min(calls, MostCalls());
    std::vector<int> numbers;
    for (int index = 0; index < count; ++index)
        numbers.push_back(count == 1 ? 1 : 1 + static_cast<int>(int64_t{index} * (calls - 1) / (count - 1)));
    return numbers;
}

/// Whether the host itself calls the function, to report an exception to a program.
bool IsTheHostsOwn(const std::string &function)
{
    return function.compare(0, 17, "RuntimeException.") == 0;
}

class Sweep : public testing::TestWithParam<std::pair<const char *, Fault>> {
protected:
    Sweep() : family(host), program(host, family) { host.Load(LibraryPath()); }

    /// What is wrong in one case.
    std::vector<std::string> Try(const FaultyCall &call, const Sight &sound)
    {
        std::string end;
        const std::optional<Sight> seen = SightOf(host, program, call, end);
        return seen ? Complaints(call, *seen, sound) : std::vector<std::string>{"the process ended: " + end};
    }

    Host host;
    Family family;
    SweptProgram program;
};

} // namespace

TEST_P(Sweep, FaultInAnyCallEndsWhereItShouldAndTheProgramRunsOn)
{
    std::string end;
    const std::optional<Sight> sound = SightOf(host, program, {}, end);
    ASSERT_TRUE(sound) << end;
    ASSERT_TRUE(sound->leaks.empty() && sound->mistakes.empty());
    for (const Outcome &outcome : sound->first)
        ASSERT_NE(outcome.result, kNoInstance) << outcome.step;

    int cases = 0;
    for (const auto &[function, calls] : sound->calls) {
        if (IsTheHostsOwn(function))
            continue;
        for (const int number : CallNumbers(calls)) {
            ++cases;
            for (const std::string &complaint : Try({function, number, GetParam().second}, *sound))
                ADD_FAILURE() << function << ", call " << number << ": " << complaint;
        }
    }
    EXPECT_GE(sound->calls.size(), 70u) << "functions that the program makes the library call";
    std::printf("%d cases of %zu functions\n", cases, sound->calls.size());
}

INSTANTIATE_TEST_SUITE_P(, Sweep,
                         testing::Values(std::pair("Fails", Fault::Fails),
                                         std::pair("ThrowsStandard", Fault::ThrowsStandard),
                                         std::pair("ThrowsOther", Fault::ThrowsOther),
                                         std::pair("RaisesCocoa", Fault::RaisesCocoa),
                                         std::pair("ComesBack", Fault::ComesBack)),
                         [](const auto &row) { return std::string(row.param.first); });
