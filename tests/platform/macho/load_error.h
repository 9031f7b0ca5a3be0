// The errors with which the loader refuses dylibs.
#pragma once

#include <string>

#include "platform/macho/bytes.h"

/// The text of the LoadError that the body throws; empty for none.
template <typename Body>
std::string ErrorFrom(Body body)
{
    try {
        body();
    } catch (const macho::LoadError &error) {
        return error.what();
    }
    return "";
}
