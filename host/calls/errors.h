// The exceptions that a program's use of the host throws.
#pragma once

#include <stdexcept>
#include <string>

#include "host/values/value.h"

namespace qzlhost {

/// A member or class that does not exist, or arguments that no overload takes.
class UsageError : public std::logic_error {
public:
    using std::logic_error::logic_error;
};

/// A host exception that reached the program.
class ProgramException : public std::runtime_error {
public:
    /// Reads the exception's properties, as a program would.
    explicit ProgramException(Value exception);
    /// The instance of the exception class.
    const Value &Exception() const { return exception_; }
    const std::string &ClassName() const { return className_; }
    /// The property Message, UTF-8; empty for the empty string.
    const std::string &Message() const { return message_; }
    int64_t ErrorNumber() const { return errorNumber_; }

private:
    Value exception_;
    std::string className_;
    std::string message_;
    int64_t errorNumber_ = 0;
};

} // namespace qzlhost
