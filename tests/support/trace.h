// The calls of host functions, from the host's trace.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "host/host.h"

/// The names of the functions that were called, in order.
inline std::vector<std::string> FunctionsCalled(const qzlhost::Host &host)
{
    std::vector<std::string> functions;
    for (const qzlhost::TraceEntry &entry : host.Trace())
        functions.push_back(entry.function);
    return functions;
}

/// The same for the functions with one of these names alone.
inline std::vector<std::string> FunctionsCalled(const qzlhost::Host &host,
                                                const std::vector<std::string> &among)
{
    std::vector<std::string> functions;
    for (const std::string &function : FunctionsCalled(host))
        if (std::find(among.begin(), among.end(), function) != among.end())
            functions.push_back(function);
    return functions;
}

/// The calls with their arguments, in order, without the host's own.
inline std::vector<std::string> CallsWithArguments(const qzlhost::Host &host)
{
    std::vector<std::string> calls;
    for (const qzlhost::TraceEntry &entry : host.Trace())
        if (entry.function.find('.') == std::string::npos)
            calls.push_back(entry.function + "(" + entry.arguments + ")");
    return calls;
}

/// The arguments of each call of a function, in order.
inline std::vector<std::string> ArgumentsOf(const qzlhost::Host &host, std::string_view function)
{
    std::vector<std::string> arguments;
    for (const qzlhost::TraceEntry &entry : host.Trace())
        if (entry.function == function)
            arguments.push_back(entry.arguments);
    return arguments;
}

/// How often the method was loaded from an instance.
inline int64_t LoadsOf(const qzlhost::Host &host, const std::string &declaration)
{
    const std::vector<std::string> loads = ArgumentsOf(host, "REALLoadObjectMethod");
    return std::count_if(loads.begin(), loads.end(), [&](const std::string &arguments) {
        return arguments.find('"' + declaration + '"') != std::string::npos;
    });
}
