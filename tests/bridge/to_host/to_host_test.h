// What the tests of values that go to the host share.
#pragma once

#include <string>
#include <vector>

#include "tests/bridge/to_host/conversion_doubles.h"

/// The arguments of each call of a host function, in order.
inline std::vector<std::string> ArgumentsOf(const qzlhost::Host &host, const std::string &function)
{
    std::vector<std::string> arguments;
    for (const qzlhost::TraceEntry &entry : host.Trace())
        if (entry.function == function)
            arguments.push_back(entry.arguments);
    return arguments;
}
