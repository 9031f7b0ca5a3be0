// The host exception that is recorded on a thread.
#pragma once

#include "host/values/object.h"

namespace qzlhost {

/// Records the exception on the calling thread, in place of one that was recorded before.
void RecordException(Held<Instance> exception);

/// Ends the record and returns what it was; null where nothing is recorded.
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

} // namespace qzlhost
