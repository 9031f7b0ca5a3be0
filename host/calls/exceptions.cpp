// The host exception that is recorded on a thread.
#include "host/calls/exceptions.h"

namespace qzlhost {

namespace {

thread_local Held<Instance> recorded;

} // namespace

void RecordException(Held<Instance> exception)
{
    recorded = std::move(exception);
}

Held<Instance> TakeException()
{
    return std::exchange(recorded, Held<Instance>());
}

ExceptionScope::~ExceptionScope()
{
    if (outer_ && !recorded)
        recorded = std::move(outer_);
}

} // namespace qzlhost
