// Calls of members as a program makes them, and members that a program implements.
#pragma once

#include <memory>
#include <vector>

#include "host/calls/class.h"
#include "host/calls/class_definition.h"

namespace qzlhost {

/// A new instance whose Constructor has not run. Throws as CallFunction does.
Value NewByProgram(const Class &type);

/// Calls a member as a program does; `self` is null for a shared one. Throws ProgramException if an exception
/// is recorded meanwhile.
Value CallFunction(void *function, const Declaration &declaration, Instance *self,
                   const std::vector<Value> &arguments);

/// Reads and writes a property as a program does. Both throw as CallFunction does; writing a read-only
/// property throws UsageError.
Value ReadProperty(const Property &property, Instance *self);
void WriteProperty(const Property &property, Instance *self, const Value &value);

/// Throws the thread's recorded exception as a ProgramException, if there is one.
void ThrowRecorded();

/// A native function for a member that a program implements. A ProgramException out of `body` is recorded;
/// other C++ exceptions pass through.
std::unique_ptr<NativeCallback> MakeCallback(const Declaration &declaration, ProgramBody body);

} // namespace qzlhost
