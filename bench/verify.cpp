// Compares what both sides of a work give, and the calls that they make of the host, arguments and all.
#include "bench/verify.h"

#include <regex>
#include <sstream>

#include "host/host.h"

using qzlhost::Host;

namespace {

struct Observed {
    std::string outcome;
    std::vector<std::string> calls;
};

/// A call as text, without what differs between equal calls: serial numbers, addresses and the names of the
/// floor's classes.
std::string Neutral(const qzlhost::TraceEntry &call)
{
    static const std::regex numbers("#[0-9]+|0x[0-9a-f]+");
    static const std::regex classes("Floor(\\w+)");
    const std::string arguments = std::regex_replace(call.arguments, numbers, "#");
    return call.function + "(" + std::regex_replace(arguments, classes, "NS$1QZL") + ")";
}

Observed Observe(Side &side)
{
    // The first run finds functions and keeps them.
    side.Outcome();
    Host &host = Host::Current();
    Observed observed;
    host.ClearTrace();
    {
        const qzlhost::AutoreleasePool pool;
        side.Prepare(1);
        side.Run(1);
    }
    for (const qzlhost::TraceEntry &call : host.Trace())
        observed.calls.push_back(Neutral(call));
    side.GiveBack();
    observed.outcome = side.Outcome();
    return observed;
}

std::string At(const std::vector<std::string> &calls, size_t index)
{
    return index < calls.size() ? calls[index] : "nothing";
}

} // namespace

std::string DifferencesOf(const Sides &sides)
{
    const Observed ours = Observe(*sides.ours);
    const Observed floor = Observe(*sides.floor);
    std::ostringstream differences;
    if (ours.outcome != floor.outcome)
        differences << "  the outcome is " << ours.outcome << "\n  of the floor      " << floor.outcome
                    << '\n';
    if (ours.calls != floor.calls) {
        size_t first = 0;
        while (At(ours.calls, first) == At(floor.calls, first))
            ++first;
        differences << "  of " << ours.calls.size() << " host calls number " << first + 1 << " is "
                    << At(ours.calls, first) << "\n  of the floor's " << floor.calls.size() << " it is "
                    << At(floor.calls, first) << '\n';
    }
    return differences.str();
}
