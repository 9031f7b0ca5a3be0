// Catches the host exception that a member raises in a program.
#include <functional>

#include "host/host.h"

qzlhost::Value ExceptionOutOf(const std::function<void()> &member)
{
    try {
        member();
        return {};
    } catch (const qzlhost::ProgramException &raised) {
        return raised.Exception();
    }
}
