// Host exceptions: their classes, and the one that is recorded on a thread.
#pragma once

#include <string_view>

#include "host/calls/builtin.h"
#include "host/values/counted.h"

namespace qzlhost {

/// Records the exception on the calling thread, in place of one that was recorded before.
void RecordException(Instance *exception);
/// As above, with a new instance of this class.
void RaiseHostException(const char *className, std::string_view message);

/// Ends the record and gives what it was; null where nothing is recorded.
Held<Instance> TakeException();

/// Puts aside what is recorded on the thread, and records it again at the end unless something else is
/// recorded.
class ExceptionScope {
public:
    ExceptionScope() : outer_(TakeException()) {}
    ~ExceptionScope();
    ExceptionScope(const ExceptionScope &) = delete;
    ExceptionScope &operator=(const ExceptionScope &) = delete;

private:
    Held<Instance> outer_;
};

/// Throws what is recorded on the thread as a ProgramException, if anything is.
void ThrowRecorded();

/// RuntimeException and the classes that derive from it.
std::vector<BuiltInClass> ExceptionClasses();

} // namespace qzlhost
