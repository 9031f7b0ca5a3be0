// On arm64, code for macOS passes variable arguments on the stack alone, and trusts that constructors and
// destructors return the object.
#include "platform/macho/call_adapters.h"

#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstring>

#include "platform/macho/adapters.h"

extern "C" {

// In assembly: each has the arguments of its name and calls the function below with one more, the address of
// those on the stack.
void machoLog();
void machoFormat();
void machoFormatChecked();
void machoFormatCheckedUnbounded();

void NSLogv(void *format, va_list arguments);
int CheckedFormat(char *buffer, size_t size, int flag, size_t room, const char *format,
                  va_list arguments) __asm__("__vsnprintf_chk");
int CheckedUnboundedFormat(char *buffer, int flag, size_t room, const char *format,
                           va_list arguments) __asm__("__vsprintf_chk");

void DestroyLogicError(void *object) __asm__("_ZNSt11logic_errorD2Ev");
void DestroyRuntimeError(void *object) __asm__("_ZNSt13runtime_errorD2Ev");
void DestroyBadAlloc(void *object) __asm__("_ZNSt9bad_allocD1Ev");
void DestroyException(void *object) __asm__("_ZNSt9exceptionD2Ev");
}

namespace macho {

namespace {

/// A list of the arguments that lie on the stack from `stack` on.
class StackArguments {
public:
    explicit StackArguments(void *stack)
    {
        // As the processor's calling convention lays a list out; offsets of 0 say that no registers are left.
        const struct {
            void *stack, *generalEnd, *vectorEnd;
            int generalOffset, vectorOffset;
        } layout = {stack, nullptr, nullptr, 0, 0};
        static_assert(sizeof layout == sizeof(va_list));
        std::memcpy(static_cast<void *>(&list), &layout, sizeof layout);
    }

    va_list list;
};

template <void (*Function)(void *)>
void *ReturningObject(void *object)
{
    Function(object);
    return object;
}

template <typename Function>
const void *AddressOf(Function *function)
{
    return reinterpret_cast<const void *>(function);
}

} // namespace

const std::map<std::string_view, const void *> &CallAdapters()
{
    static const auto &adapters = *new std::map<std::string_view, const void *>{
        {"_NSLog", AddressOf(machoLog)},
        {"_snprintf", AddressOf(machoFormat)},
        {"___snprintf_chk", AddressOf(machoFormatChecked)},
        {"___sprintf_chk", AddressOf(machoFormatCheckedUnbounded)},
        {"__ZNSt11logic_errorD2Ev", AddressOf(ReturningObject<DestroyLogicError>)},
        {"__ZNSt13runtime_errorD2Ev", AddressOf(ReturningObject<DestroyRuntimeError>)},
        {"__ZNSt9bad_allocC1Ev", AddressOf(ReturningObject<machoConstructBadAlloc>)},
        {"__ZNSt9bad_allocD1Ev", AddressOf(ReturningObject<DestroyBadAlloc>)},
        {"__ZNSt9exceptionD2Ev", AddressOf(ReturningObject<DestroyException>)},
    };
    return adapters;
}

} // namespace macho

using macho::StackArguments;

extern "C" {

void machoLogFromStack(void *format, void *stack)
{
    NSLogv(format, StackArguments(stack).list);
}

int machoFormatFromStack(char *buffer, size_t size, const char *format, void *stack)
{
    return std::vsnprintf(buffer, size, format, StackArguments(stack).list);
}

int machoFormatCheckedFromStack(char *buffer, size_t size, int flag, size_t room, const char *format,
                                void *stack)
{
    return CheckedFormat(buffer, size, flag, room, format, StackArguments(stack).list);
}

int machoFormatCheckedUnboundedFromStack(char *buffer, int flag, size_t room, const char *format, void *stack)
{
    return CheckedUnboundedFormat(buffer, flag, room, format, StackArguments(stack).list);
}
}
