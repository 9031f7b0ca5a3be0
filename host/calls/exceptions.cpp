// The host exception that is recorded on a thread.
#include "host/calls/exceptions.h"

namespace qzlhost {

namespace {

thread_local Held<Instance> gRecorded;

} // namespace

void RecordException(Held<Instance> exception)
{
    gRecorded = std::move(exception);
}

Held<Instance> TakeException()
{
    return std::exchange(gRecorded, Held<Instance>());
}

ExceptionScope::~ExceptionScope()
{
    if (outer_ && !gRecorded)
        gRecorded = std::move(outer_);
}

} // namespace qzlhost
