// Exceptions in code of an image: what its handlers call, and how they are found.
#pragma once

#include <unwind.h>

#include <string_view>

namespace macho {

/// The type that an image's handlers use for exceptions of this class: its `OBJC_EHTYPE_$_name`. "id" stands
/// for every class. Null if there is no such class. Kept for ever; any thread.
const void *ExceptionTypeOf(std::string_view className);

/// The vtable of such types that an image brings along itself.
const void *ExceptionTypeVtable();

} // namespace macho

// What an image calls under macOS's names: `__objc_personality_v0`, `objc_begin_catch` and so on.
extern "C" {

/// Finds the handler in a function with Objective-C handlers.
_Unwind_Reason_Code machoObjcPersonality(int version, _Unwind_Action actions, _Unwind_Exception_Class kind,
                                         _Unwind_Exception *exception, _Unwind_Context *context);
/// Begins a handler; returns the object that was thrown.
void *machoObjcBeginCatch(void *exception);
void machoObjcEndCatch();
/// Rethrows what the innermost handler caught.
[[noreturn]] void machoObjcRethrow();
[[noreturn]] void machoObjcTerminate();
}
