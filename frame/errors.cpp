// Raises host exceptions by class name, for indexes out of range and for C++ exceptions.
#include "frame/errors.h"

#include <cstdio>
#include <cstring>
#include <exception>
#include <new>
#include <stdexcept>
#include <typeinfo>

#include "frame/heap_buffer.h"
#include "frame/host_ref.h"
#include "frame/host_strings.h"

namespace {

/// Raises with a host string as the message, which may be null and is borrowed.
void RaiseExceptionWithMessage(const char *className, REALstring message)
{
    HostRef<REALobject> exception(REALnewInstance(className));
    HostRef<REALobject> fallback(exception ? nullptr : REALnewInstance("RuntimeException"));
    const REALobject raised = exception ? exception.Get() : fallback.Get();
    if (raised == nullptr)
        return;
    REALSetPropValueString(raised, "Message", message);
    REALSetPropValueInteger(raised, "ErrorNumber", 0);
    REALRaiseException(raised);
}

/// Raises for a failure inside the string builder: were its guard at work here too, it would come back to us.
void RaiseStandardException(const char *className, const char *message)
{
    REALstring text = nullptr;
    try {
        text = BuildUnicodeStringUnguarded(message, static_cast<int64_t>(std::strlen(message)),
                                           kCFStringEncodingASCII);
    } catch (...) {
        text = nullptr;
    }
    const HostRef<REALstring> owner(text);
    RaiseExceptionWithMessage(className, text);
}

constexpr size_t kBoundsMessageSize = 205;

} // namespace

void RaiseException(const char *className, const char *message, uint32_t, int64_t)
{
    const HostRef<REALstring> text(
        message == nullptr ? nullptr
                           : REALBuildUnicodeString(message, static_cast<int64_t>(std::strlen(message)),
                                                    kCFStringEncodingASCII));
    RaiseExceptionWithMessage(className, text.Get());
}

void RaiseOutOfBoundsException(int64_t value, int64_t count)
{
    const HeapBuffer text = AllocateZeroedBuffer(kBoundsMessageSize);
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

void RaiseCurrentStandardException()
{
    // First match wins. Overflow and underflow count as out of bounds, not as runtime errors.
    try {
        throw;
    } catch (const std::bad_alloc &) {
        RaiseStandardException("OutOfMemoryException", "Failed to allocate memory.");
    } catch (const std::range_error &error) {
        RaiseStandardException("OutOfBoundsException", error.what());
    } catch (const std::out_of_range &error) {
        RaiseStandardException("OutOfBoundsException", error.what());
    } catch (const std::overflow_error &error) {
        RaiseStandardException("OutOfBoundsException", error.what());
    } catch (const std::underflow_error &error) {
        RaiseStandardException("OutOfBoundsException", error.what());
    } catch (const std::logic_error &error) {
        RaiseStandardException("RuntimeException", error.what());
    } catch (const std::runtime_error &error) {
        RaiseStandardException("RuntimeException", error.what());
    } catch (const std::bad_cast &error) {
        RaiseStandardException("IllegalCastException", error.what());
    } catch (const std::exception &error) {
        RaiseStandardException("RuntimeException", error.what());
    } catch (...) {
        RaiseStandardException("RuntimeException", "Sorry, but there was an unnamed C++ Exception.");
    }
}

REALobjectStruct *DummyException(REALobjectStruct *)
{
    return nullptr;
}
