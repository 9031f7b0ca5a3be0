// Handles exceptions in code of an image. Objective-C exceptions are the platform's own, thrown by its
// runtime; the image's handlers are described in Mach-O's way.
#include "platform/macho/exceptions.h"

#include <cxxabi.h>
#include <objc/runtime.h>

#include <cstdint>
#include <cstring>
#include <exception>
#include <map>
#include <mutex>
#include <string>
#include <typeinfo>
#include <vector>

#include "platform/macho/handler_table.h"

extern "C" _Unwind_Reason_Code CxxPersonality(int version, _Unwind_Action actions,
                                              _Unwind_Exception_Class kind, _Unwind_Exception *exception,
                                              _Unwind_Context *context) __asm__("__gxx_personality_v0");

namespace macho {

namespace {

/// The mark of the exceptions of the platform's Objective-C runtime.
constexpr _Unwind_Exception_Class kObjcException = 0x474E55434F424A43; // GNUCOBJC
/// The mark of the C++ library's exceptions, apart from the lowest byte.
constexpr _Unwind_Exception_Class kCxxException = 0x474E5543432B2B00; // GNUCC++
constexpr _Unwind_Exception_Class kCxxMask = ~_Unwind_Exception_Class{0xFF};

/// How the platform's runtime lays out its exceptions.
struct ObjcException {
    _Unwind_Exception header;
    id object;
};

/// The type of a handler: the vtable, a name, and a class, which is null for id. The C++ library may call
/// `__do_catch` of one of these for a C++ exception.
class ExceptionType : public std::type_info {
public:
    ExceptionType(const char *name, Class type) : std::type_info(name), class_(type) {}

    bool __do_catch(const std::type_info *, void **, unsigned) const override { return false; }

    bool Catches(id object) const
    {
        if (class_ == nullptr)
            return true;
        for (Class type = object_getClass(object); type != nullptr; type = class_getSuperclass(type)) {
            if (type == class_)
                return true;
        }
        return false;
    }

private:
    Class class_;
};

/// The exceptions that a thread's handlers have caught and not ended, the innermost last.
struct Caught {
    _Unwind_Exception *exception;
    bool isCxx;
    bool isRethrown;
};
thread_local std::vector<Caught> gCaught;

bool IsCxx(_Unwind_Exception_Class kind)
{
    return (kind & kCxxMask) == kCxxException;
}

} // namespace

const void *ExceptionTypeOf(std::string_view className)
{
    static std::mutex mutex;
    static auto &types = *new std::map<std::string, ExceptionType, std::less<>>;
    const std::lock_guard lock(mutex);
    if (const auto known = types.find(className); known != types.end())
        return &known->second;
    const std::string name(className);
    const Class type = name == "id" ? nullptr : objc_getClass(name.c_str());
    if (type == nullptr && name != "id")
        return nullptr;
    return &types.try_emplace(name, nullptr, type).first->second;
}

const void *ExceptionTypeVtable()
{
    // The pointer in an object points past the first two words of the vtable.
    const void *const *const vtable = *static_cast<const void *const *const *>(ExceptionTypeOf("id"));
    return vtable - 2;
}

} // namespace macho

using namespace macho;

_Unwind_Reason_Code machoObjcPersonality(int version, _Unwind_Action actions, _Unwind_Exception_Class kind,
                                         _Unwind_Exception *exception, _Unwind_Context *context)
{
    if (kind != kObjcException)
        return CxxPersonality(version, actions, kind, exception, context);
    const auto *const table = static_cast<const uint8_t *>(_Unwind_GetLanguageSpecificData(context));
    if (table == nullptr)
        return _URC_CONTINUE_UNWIND;
    int isBeforeCall = 0;
    uintptr_t place = _Unwind_GetIPInfo(context, &isBeforeCall);
    if (isBeforeCall == 0)
        --place;

    const id object = reinterpret_cast<ObjcException *>(exception)->object;
    const bool isForced = (actions & _UA_FORCE_UNWIND) != 0;
    const Handler handler = FindHandler(table, _Unwind_GetRegionStart(context), place, [&](const void *type) {
        return !isForced && (type == nullptr || static_cast<const ExceptionType *>(type)->Catches(object));
    });
    if (handler.landingPad == 0)
        return _URC_CONTINUE_UNWIND;
    if ((actions & _UA_SEARCH_PHASE) != 0)
        return handler.selector != 0 ? _URC_HANDLER_FOUND : _URC_CONTINUE_UNWIND;
    _Unwind_SetGR(context, __builtin_eh_return_data_regno(0), reinterpret_cast<uintptr_t>(exception));
    _Unwind_SetGR(context, __builtin_eh_return_data_regno(1), static_cast<uintptr_t>(handler.selector));
    _Unwind_SetIP(context, handler.landingPad);
    return _URC_INSTALL_CONTEXT;
}

void *machoObjcBeginCatch(void *exception)
{
    auto *const header = static_cast<_Unwind_Exception *>(exception);
    const bool isCxx = IsCxx(header->exception_class);
    gCaught.push_back({header, isCxx, false});
    return isCxx ? abi::__cxa_begin_catch(exception) : reinterpret_cast<ObjcException *>(header)->object;
}

void machoObjcEndCatch()
{
    const Caught caught = gCaught.back();
    gCaught.pop_back();
    if (caught.isCxx)
        abi::__cxa_end_catch();
    else if (!caught.isRethrown)
        _Unwind_DeleteException(caught.exception);
}

void machoObjcRethrow()
{
    Caught &caught = gCaught.back();
    if (caught.isCxx)
        abi::__cxa_rethrow();
    caught.isRethrown = true;
    _Unwind_Resume_or_Rethrow(caught.exception);
    std::terminate(); // returns only if nobody catches it
}

void machoObjcTerminate()
{
    std::terminate();
}
