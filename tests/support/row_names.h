// Names of parameterised tests.
#pragma once

#include <string>

/// The name of a test whose parameter is a row with a `name`.
inline constexpr auto kNameOfRow = [](const auto &info) { return std::string(info.param.name); };

/// The name of a test whose parameter is a text.
inline constexpr auto kParameterItself = [](const auto &info) { return std::string(info.param); };
