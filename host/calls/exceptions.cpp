// Host exceptions: their classes, and the one that is recorded on a thread.
#include "host/calls/exceptions.h"

#include "host/interface/thunk.h"
#include "host/runtime.h"
#include "host/values/strings.h"

namespace qzlhost {

namespace {

thread_local Held<Instance> recorded;

struct ExceptionPayload : Payload {
    std::mutex mutex;
    Held<String> message;
    int64_t errorNumber = 0;
};

String *Message(Of<ExceptionPayload> self, int64_t)
{
    std::lock_guard lock(self->mutex);
    return Lock(self->message.Get());
}

void SetMessage(Of<ExceptionPayload> self, int64_t, String *message)
{
    Held<String> value = Held<String>::Share(message);
    std::lock_guard lock(self->mutex);
    std::swap(self->message, value);
}

int64_t ErrorNumber(Of<ExceptionPayload> self, int64_t)
{
    std::lock_guard lock(self->mutex);
    return self->errorNumber;
}

void SetErrorNumber(Of<ExceptionPayload> self, int64_t, int64_t number)
{
    std::lock_guard lock(self->mutex);
    self->errorNumber = number;
}

} // namespace

void RecordException(Instance *exception)
{
    recorded = Held<Instance>::Share(exception);
}

void RaiseHostException(const char *className, std::string_view message)
{
    Instance *const exception = NewInstance(*Runtime::Current()->classes.Find(className));
    ExceptionPayload &payload = *PayloadOf<ExceptionPayload>(exception);
    payload.message = Held<String>::Adopt(NewString(std::string(message), encoding::UTF8));
    recorded = Held<Instance>::Adopt(exception);
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

void ThrowRecorded()
{
    Held<Instance> exception = TakeException();
    if (exception)
        throw ProgramException(Value::Share(exception.Get()));
}

std::vector<BuiltInClass> ExceptionClasses()
{
    return {
        {"RuntimeException",
         nullptr,
         &MakePayloadOf<ExceptionPayload>,
         {
             {"Message", "String", Native<&Message>("RuntimeException.Message"),
              Native<&SetMessage>("RuntimeException.Message=")},
             {"ErrorNumber", "Integer", Native<&ErrorNumber>("RuntimeException.ErrorNumber"),
              Native<&SetErrorNumber>("RuntimeException.ErrorNumber=")},
         }},
        {"OutOfBoundsException", "RuntimeException"},
        {"OutOfMemoryException", "RuntimeException"},
        {"IllegalCastException", "RuntimeException"},
        {"NilObjectException", "RuntimeException"},
        {"UnsupportedOperationException", "RuntimeException"},
    };
}

} // namespace qzlhost
