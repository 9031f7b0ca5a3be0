// Exceptions that the host raises, and their classes.
#include "host/interface/exceptions.h"

#include <mutex>

#include "host/calls/exceptions.h"
#include "host/interface/thunk.h"

namespace qzlhost {

namespace {

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

void RaiseHostException(const char *className, std::string_view message)
{
    Instance *const exception = NewBuiltIn(className, nullptr);
    PayloadOf<ExceptionPayload>(exception)->message =
        Held<String>::Adopt(NewString(std::string(message), encoding::UTF8));
    RecordException(Held<Instance>::Adopt(exception));
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
