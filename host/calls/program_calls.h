// Calls of members, and what surrounds a call into the library.
#pragma once

#include <vector>

#include "host/calls/class.h"
#include "host/calls/marshalling.h"
#include "host/values/value.h"

namespace qzlhost {

/// Makes Cocoa usable on the calling thread: knows the thread and has a pool.
class CocoaScope {
public:
    CocoaScope();
    ~CocoaScope();
    CocoaScope(const CocoaScope &) = delete;
    CocoaScope &operator=(const CocoaScope &) = delete;

private:
    void *pool_;
};

/// How many pools of the host's the thread has.
int &PoolDepth();

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

/// Calls `void (self)`; recorded exceptions stay recorded.
void CallNativeProcedure(void *function, Instance *self);

/// A native function for a member that a program implements. A ProgramException out of `body` is recorded;
/// other C++ exceptions pass.
using ProgramBody = std::function<Value(const Value &self, const std::vector<Value> &arguments)>;
std::unique_ptr<NativeCallback> MakeCallback(const Declaration &declaration, ProgramBody body);

} // namespace qzlhost
