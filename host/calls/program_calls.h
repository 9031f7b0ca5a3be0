// Calls of members as a program makes them, and members that a program implements.
#pragma once

#include <memory>
#include <vector>

#include "host/calls/class.h"
#include "host/calls/class_definition.h"

namespace qzlhost {

/// A new instance, without its Constructor. Throws as CallFunction.
Value NewByProgram(const Class &type);

/// Calls a member as a program does; `self` is null for a shared one. Throws ProgramException where an
/// exception was recorded meanwhile.
Value CallFunction(void *function, const Declaration &declaration, Instance *self,
                   const std::vector<Value> &arguments);

/// Reads and writes a property as a program does. Throw as CallFunction, and UsageError for a property that
/// is not for writing.
Value ReadProperty(const Property &property, Instance *self);
void WriteProperty(const Property &property, Instance *self, const Value &value);

/// Throws what is recorded on the thread as a ProgramException, if anything is.
void ThrowRecorded();

/// A native function for a member that a program implements. A ProgramException out of `body` is recorded;
/// other C++ exceptions pass.
std::unique_ptr<NativeCallback> MakeCallback(const Declaration &declaration, ProgramBody body);

} // namespace qzlhost
