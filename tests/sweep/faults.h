// One fault in one call of a host function that the library makes.
#pragma once

#include <map>
#include <string>

#include "host/host.h"

enum class Fault {
    /// The function does nothing and returns its empty result.
    Fails,
    /// It throws std::bad_alloc.
    ThrowsStandard,
    /// It throws an int.
    ThrowsOther,
    /// It raises an NSException.
    RaisesCocoa,
    /// It calls the library before it does its work.
    ComesBack,
};

struct FaultyCall {
    std::string function;
    /// From 1 on, in the order in which the library calls the function.
    int number = 0;
    Fault fault = Fault::Fails;
};

/// Whether the function gives a reference back. Such a function throws only after it has done so.
bool GivesBack(const std::string &function);

/// Counts the library's calls of each host function from now on, and makes this one faulty.
void MakeFaulty(qzlhost::Host &host, const FaultyCall &call);

/// Stops that. Returns the number of calls of each function.
std::map<std::string, int> EndFaults(qzlhost::Host &host);
