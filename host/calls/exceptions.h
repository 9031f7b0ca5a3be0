// The host exception that is recorded on a thread.
#pragma once

#include "host/values/object.h"

namespace qzlhost {

/// Records the exception on the calling thread. It replaces one that was recorded before.
void RecordException(Held<Instance> exception);

/// Removes and returns the calling thread's exception; null if there is none.
Held<Instance> TakeException();

/// Sets the thread's exception aside while this lives, and records it again at the end unless there is
/// another.
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
