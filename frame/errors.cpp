// Raises host exceptions by class name, for indexes out of range and for C++ exceptions.
#include "frame/errors.h"

#include <cstdio>
#include <cstring>
#include <exception>
#include <new>
#include <stdexcept>
#include <typeinfo>

#include "frame/heap_buffer.h"
#include "frame/host_references.h"
#include "frame/tagged_string.h"

namespace {

/// An instance of the exception class of that name, or else of "RuntimeException"; null if the host has
/// neither.
REALobject NewException(const char *className)
{
    const REALobject exception = REALnewInstance(className);
    return exception != nullptr ? exception : REALnewInstance("RuntimeException");
}

/// Raises an exception whose message is a host string, which may be null.
void RaiseExceptionWithMessage(const char *className, HostRef<REALstring> &message)
{
    HostRef<REALobject> exception(NewException(className));
    if (exception) {
        REALSetPropValueString(exception.Get(), "Message", message.Get());
        REALSetPropValueInteger(exception.Get(), "ErrorNumber", 0);
        REALRaiseException(exception.Get());
        exception.GiveBack();
    }
    message.GiveBack();
}

/// A host string of ASCII text; null for no text and for one that is too long. Exceptions pass.
REALstring BuildMessage(const char *text)
{
    const auto length = text == nullptr ? 0 : static_cast<int64_t>(std::strlen(text));
    return length < 1 || length > kLongestString ? nullptr
                                                 : BuildTaggedString(text, length, kCFStringEncodingASCII);
}

/// The same; null after an exception, which would have nowhere to be reported.
REALstring BuildMessageQuietly(const char *text)
{
    try {
        return BuildMessage(text);
    } catch (...) {
        return nullptr;
    }
}

/// The failure with a copy of the exception's text, which itself ends with the handler; without memory, with
/// no text.
StandardFailure FailureOf(const char *className, const std::exception &error)
{
    const size_t size = std::strlen(error.what()) + 1;
    HeapBuffer copy = AllocateBuffer(size);
    if (copy != nullptr)
        std::memcpy(copy.get(), error.what(), size);
    const char *const message = copy.get();
    return {className, message, copy.release()};
}

constexpr size_t kBoundsMessageSize = 205;

} // namespace

void RaiseException(const char *className, const char *message, uint32_t, int64_t)
{
    HostRef<REALstring> text(GuardStandardExceptions([&] { return BuildMessage(message); }));
    RaiseExceptionWithMessage(className, text);
}

void RaiseOutOfBoundsException(int64_t value, int64_t count)
{
    const HeapBuffer text = AllocateBuffer(kBoundsMessageSize);
    if (text == nullptr) {
        RaiseException("OutOfBoundsException", "Out of Bounds");
        return;
    }
    const char *const format =
        value < 0 ? "Parameter %s %s%s is too small. Range is %lld to %lld, but value is %lld."
                  : "Parameter %s %s%s is too big. Range is %lld to %lld, but value is %lld.";
    std::snprintf(text.get(), kBoundsMessageSize, format, "index", "", "", 0LL,
                  static_cast<long long>(count) - 1, static_cast<long long>(value));
    RaiseException("OutOfBoundsException", text.get());
}

StandardFailure CurrentStandardFailure()
{
    // First match wins. Overflow and underflow count as out of bounds, not as runtime errors.
    try {
        throw;
    } catch (const std::bad_alloc &) {
        return {"OutOfMemoryException", "Failed to allocate memory.", nullptr};
    } catch (const std::range_error &error) {
        return FailureOf("OutOfBoundsException", error);
    } catch (const std::out_of_range &error) {
        return FailureOf("OutOfBoundsException", error);
    } catch (const std::overflow_error &error) {
        return FailureOf("OutOfBoundsException", error);
    } catch (const std::underflow_error &error) {
        return FailureOf("OutOfBoundsException", error);
    } catch (const std::logic_error &error) {
        return FailureOf("RuntimeException", error);
    } catch (const std::runtime_error &error) {
        return FailureOf("RuntimeException", error);
    } catch (const std::bad_cast &error) {
        return FailureOf("IllegalCastException", error);
    } catch (const std::exception &error) {
        return FailureOf("RuntimeException", error);
    } catch (...) {
        return {"RuntimeException", "Sorry, but there was an unnamed C++ Exception.", nullptr};
    }
}

void RaiseStandardFailure(const StandardFailure &failure)
{
    const HeapBuffer copy(failure.copy);
    HostRef<REALstring> text(BuildMessageQuietly(failure.message));
    RaiseExceptionWithMessage(failure.className, text);
}

REALobjectStruct *DummyException(REALobjectStruct *)
{
    return nullptr;
}
