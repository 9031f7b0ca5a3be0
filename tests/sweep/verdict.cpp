// Whether a program with one faulty call of a host function ended as it should.
#include "tests/sweep/verdict.h"

#include <algorithm>
#include <initializer_list>

namespace {

using Results = std::vector<std::string>;

bool IsOneOf(const std::string &function, std::initializer_list<const char *> names)
{
    return std::find(names.begin(), names.end(), function) != names.end();
}

bool StartsWith(const std::string &text, const std::string &beginning)
{
    return text.compare(0, beginning.size(), beginning) == 0;
}

/// Only the string builder calls these, and its guard ends their exceptions.
bool IsOfTheStringBuilder(const std::string &function)
{
    return IsOneOf(function, {"REALBuildString", "REALBuildStringWithEncoding", "REALSetStringEncoding",
                              "REALConvertString"});
}

/// The library keeps the first result of these, even a failure.
bool IsKeptWhenItFails(const std::string &function)
{
    return IsOneOf(function, {"pluginObjectType", "REALLoadGlobalMethod"});
}

/// Without the function's work there is a reference too many or too few, or an array with a hole.
bool UnsettlesAccountsWhenItFails(const std::string &function)
{
    return GivesBack(function) ||
           IsOneOf(function, {"REALLockObject", "REALLockString", "PluginLockText", "insert an object"});
}

/// The outcomes by step, with those of the steps inside it.
std::map<std::string, Results> ByStep(const std::vector<Outcome> &outcomes)
{
    std::map<std::string, Results> steps;
    for (const Outcome &outcome : outcomes)
        steps[outcome.step.substr(0, outcome.step.find(','))].push_back(outcome.step + ": " + outcome.result);
    return steps;
}

std::vector<std::string> StepsThatDiffer(const std::vector<Outcome> &one, const std::vector<Outcome> &other)
{
    const std::map<std::string, Results> expected = ByStep(other);
    std::vector<std::string> names;
    for (const auto &[name, results] : ByStep(one))
        if (expected.count(name) == 0 || expected.at(name) != results)
            names.push_back(name);
    return names;
}

bool AnyEndsWith(const Results &results, const std::string &end)
{
    return std::any_of(results.begin(), results.end(), [&](const std::string &result) {
        return result.size() >= end.size() &&
               result.compare(result.size() - end.size(), end.size(), end) == 0;
    });
}

/// Whether the step with the fault ended where an exception of its kind must end.
bool EndsWhereItShould(const FaultyCall &call, const std::string &step, const Results &results,
                       const Results &sound)
{
    const bool raises = call.fault != Fault::Fails && call.fault != Fault::ComesBack;
    if (raises && IsOfTheStringBuilder(call.function)) {
        const bool isStandard = call.fault == Fault::ThrowsStandard;
        const std::string guarded = isStandard
                                        ? "OutOfMemoryException: Failed to allocate memory."
                                        : "RuntimeException: Sorry, but there was an unnamed C++ Exception.";
        // An exception whose message cannot be built has none.
        const std::string exception = sound.front().substr(0, sound.front().rfind(": ") + 2);
        return AnyEndsWith(results, kHostException + guarded) || results.front() == exception;
    }
    switch (call.fault) {
    case Fault::ThrowsOther:
        return AnyEndsWith(results, kOtherException);
    case Fault::ThrowsStandard:
        return AnyEndsWith(results, kStandardException) ||
               AnyEndsWith(results,
                           "OutOfMemoryException: Failed to allocate a memoryblock with 5 bytes in size.");
    case Fault::RaisesCocoa:
        // A delivery has no caller to raise it in: it is logged, and the rest of the delivery is skipped.
        if (StartsWith(step, "delivery") && results.size() < sound.size())
            return true;
        // The report of another exception has none either.
        if (IsOneOf(call.function, {"PluginNewInstance", "REALSetPropValueString", "REALSetPropValueInteger",
                                    "RuntimeRaiseException", "REALUnlockObject"}) &&
            StartsWith(sound.front(), step + ": " + kHostException))
            return true;
        return AnyEndsWith(results, std::string(kHostException) + "NSExceptionQZL: raised by the host");
    case Fault::Fails:
    case Fault::ComesBack:
        break;
    }
    return std::none_of(results.begin(), results.end(), [](const std::string &result) {
        return AnyEndsWith({result}, kOtherException) || AnyEndsWith({result}, kStandardException);
    });
}

} // namespace

std::vector<std::string> Complaints(const FaultyCall &call, const Sight &seen, const Sight &sound)
{
    std::vector<std::string> complaints;
    const std::map<std::string, Results> results = ByStep(seen.first);
    const std::map<std::string, Results> expected = ByStep(sound.first);
    const bool keeps = call.fault == Fault::Fails && IsKeptWhenItFails(call.function);
    const std::vector<std::string> differing = StepsThatDiffer(seen.first, sound.first);

    for (const Outcome &outcome : seen.first)
        if (outcome.result == kCocoaException || StartsWith(outcome.result, "the test itself"))
            complaints.push_back(outcome.step + " ended with: " + outcome.result);
    const size_t mostSteps = call.fault == Fault::ComesBack ? 0 : 1;
    if (differing.size() > mostSteps && !keeps)
        for (const std::string &step : differing)
            complaints.push_back("differs: " + step + ": " + results.at(step).front());
    else if (!keeps)
        for (const std::string &step : differing)
            if (!EndsWhereItShould(call, step, results.at(step), expected.at(step)))
                complaints.push_back("ended elsewhere: " + results.at(step).front());
    if (differing.empty() && (call.fault == Fault::ThrowsOther || call.fault == Fault::ThrowsStandard))
        complaints.push_back("the exception was lost");
    if (!keeps)
        for (const std::string &step : StepsThatDiffer(seen.second, sound.second))
            complaints.push_back("differs the next time: " + step + ": " +
                                 ByStep(seen.second).at(step).front());

    if (call.fault != Fault::Fails || !UnsettlesAccountsWhenItFails(call.function)) {
        for (const std::string &leak : seen.leaks)
            complaints.push_back("left over: " + leak);
        for (const std::string &mistake : seen.mistakes)
            complaints.push_back("mistake: " + mistake);
        // Cocoa's frames release nothing when a C++ exception passes them, or wait for ever.
        const bool passesCocoa = (call.fault == Fault::ThrowsOther || call.fault == Fault::ThrowsStandard) &&
                                 !differing.empty() && StartsWith(differing.front(), "delivery");
        for (const auto &[name, count] : seen.cocoaObjects)
            if (!passesCocoa && count > sound.cocoaObjects.at(name))
                complaints.push_back("left over: " + std::to_string(count) + " of " + name + " instead of " +
                                     std::to_string(sound.cocoaObjects.at(name)));
    }
    for (const std::string &line : seen.log)
        if (StartsWith(line, "Problem posting"))
            complaints.push_back("an exception left the delivery: " + line);
    return complaints;
}
