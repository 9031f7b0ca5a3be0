// Exceptions in code of an image: what its handlers call, and how they are found.
#pragma once

#include <unwind.h>

#include <string_view>

namespace macho {

/// What a handler for exceptions of this class is known by: the image's `OBJC_EHTYPE_$_name`. "id" stands for
/// every class. Null where there is no such class. Kept for ever; any thread.
const void *ExceptionTypeOf(std::string_view className);

/// The table of functions that such types begin with when an image brings its own.
const void *ExceptionTypeVtable();

} // namespace macho

// The image's own names for these are without "macho".
extern "C" {

/// Finds the handler in a function with Objective-C handlers.
_Unwind_Reason_Code machoObjcPersonality(int version, _Unwind_Action actions, _Unwind_Exception_Class kind,
                                         _Unwind_Exception *exception, _Unwind_Context *context);
/// Begins a handler; answers the object that was thrown.
void *machoObjcBeginCatch(void *exception);
void machoObjcEndCatch();
/// Throws on what the innermost handler caught.
[[noreturn]] void machoObjcRethrow();
[[noreturn]] void machoObjcTerminate();
}
