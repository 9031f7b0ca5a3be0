// What the imports of an image are bound to: an explicit table, since the process has many names that macOS
// lacks.
#include "platform/macho/imports.h"

#include <dlfcn.h>
#include <objc/runtime.h>

#include <algorithm>
#include <map>

#include "platform/macho/adapters.h"
#include "platform/macho/call_adapters.h"
#include "platform/macho/dispatch.h"
#include "platform/macho/dynamic_loading.h"
#include "platform/macho/exceptions.h"

namespace macho {

namespace {

constexpr std::string_view kClass = "_OBJC_CLASS_$_", kMetaclass = "_OBJC_METACLASS_$_",
                           kExceptionType = "_OBJC_EHTYPE_$_", kSanitizer = "___asan_";

/// The process has each of these under the same name, without the underscore of Mach-O. Some are called
/// through an adapter, all the same.
constexpr std::string_view kSameNames[] = {
    // Core Foundation
    "_CFArrayGetTypeID",
    "_CFAttributedStringGetTypeID",
    "_CFBagGetTypeID",
    "_CFBooleanGetTypeID",
    "_CFBundleGetTypeID",
    "_CFCharacterSetGetTypeID",
    "_CFCopyTypeIDDescription",
    "_CFDataGetTypeID",
    "_CFDateGetTypeID",
    "_CFDictionaryCreateMutable",
    "_CFDictionaryGetTypeID",
    "_CFDictionaryGetValue",
    "_CFDictionaryGetValueIfPresent",
    "_CFDictionaryRemoveValue",
    "_CFDictionarySetValue",
    "_CFErrorGetTypeID",
    "_CFGetTypeID",
    "_CFNumberGetTypeID",
    "_CFRelease",
    "_CFRetain",
    "_CFSetGetTypeID",
    "_CFStringCreateMutableCopy",
    "_CFStringCreateWithBytes",
    "_CFStringCreateWithCharacters",
    "_CFStringGetCString",
    "_CFStringGetCharacters",
    "_CFStringGetLength",
    "_CFStringGetTypeID",
    "_CFStringNormalize",
    "_CFTimeZoneGetTypeID",
    "_CFURLCopyLastPathComponent",
    "_CFURLCreateCopyAppendingPathComponent",
    "_CFURLCreateCopyDeletingLastPathComponent",
    "_CFURLCreateFromFSRef",
    "_CFURLGetFSRef",
    "_CFURLGetTypeID",
    "_CFUUIDCreate",
    "_CFUUIDGetTypeID",
    "_kCFAllocatorDefault",
    "_kCFBooleanFalse",
    "_kCFBooleanTrue",
    // Core Text, the File Manager, Foundation
    "_CTFontCollectionGetTypeID",
    "_CTFontGetTypeID",
    "_CTFrameGetTypeID",
    "_CTFramesetterGetTypeID",
    "_CTGlyphInfoGetTypeID",
    "_CTLineGetTypeID",
    "_CTParagraphStyleGetTypeID",
    "_CTRunDelegateGetTypeID",
    "_CTRunGetTypeID",
    "_CTTypesetterGetTypeID",
    "_FSGetCatalogInfo",
    "_FSRefMakePath",
    "_NSClassFromString",
    "_NSDefaultRunLoopMode",
    "_NSHomeDirectory",
    "_NSLocalNotificationCenterType",
    "_NSLog",
    "_NSStringFromClass",
    "_NSTemporaryDirectory",
    // The Objective-C runtime
    "_class_addMethod",
    "_class_getName",
    "_class_getSuperclass",
    "_objc_allocateClassPair",
    "_objc_disposeClassPair",
    "_objc_enumerationMutation",
    "_objc_exception_throw",
    "_objc_getClass",
    "_objc_registerClassPair",
    "_object_getClassName",
    "_sel_registerName",
    // The C++ library, of which a process has one
    "__ZNKSt11logic_error4whatEv",
    "__ZNKSt13runtime_error4whatEv",
    "__ZNKSt9exception4whatEv",
    "__ZNSt11logic_errorD2Ev",
    "__ZNSt13runtime_errorD2Ev",
    "__ZNSt9bad_allocD1Ev",
    "__ZNSt9exceptionD2Ev",
    "__ZSt9terminatev",
    "__ZTISt11logic_error",
    "__ZTISt11range_error",
    "__ZTISt12out_of_range",
    "__ZTISt13runtime_error",
    "__ZTISt14overflow_error",
    "__ZTISt15underflow_error",
    "__ZTISt8bad_cast",
    "__ZTISt9bad_alloc",
    "__ZTISt9exception",
    "__ZTVN10__cxxabiv117__class_type_infoE",
    "__ZTVN10__cxxabiv120__si_class_type_infoE",
    "__ZdaPv",
    "__ZdlPv",
    "__Znam",
    "__ZnamRKSt9nothrow_t",
    "__Znwm",
    "__ZnwmRKSt9nothrow_t",
    "___cxa_allocate_exception",
    "___cxa_bad_cast",
    "___cxa_begin_catch",
    "___cxa_call_unexpected",
    "___cxa_current_exception_type",
    "___cxa_end_catch",
    "___cxa_free_exception",
    "___cxa_get_exception_ptr",
    "___cxa_guard_abort",
    "___cxa_guard_acquire",
    "___cxa_guard_release",
    "___cxa_pure_virtual",
    "___cxa_rethrow",
    "___cxa_throw",
    "___dynamic_cast",
    "___gxx_personality_v0",
    // The C library and the unwinder
    "__Unwind_Resume",
    "___cxa_atexit",
    "___snprintf_chk",
    "___sprintf_chk",
    "___stack_chk_fail",
    "__exit",
    "_abort",
    "_alarm",
    "_bzero",
    "_calloc",
    "_exit",
    "_free",
    "_getpid",
    "_isatty",
    "_malloc",
    "_memcmp",
    "_memcpy",
    "_memmove",
    "_memset",
    "_pthread_main_np",
    "_realloc",
    "_snprintf",
    "_strcmp",
    "_strlen",
    "_strncmp",
    "_usleep",
};

template <typename Function>
const void *AddressOf(Function *function)
{
    return reinterpret_cast<const void *>(function);
}

/// What the process lacks, or has under another name or with another meaning.
const std::map<std::string_view, const void *> &Adapters()
{
    static const auto &adapters = *new std::map<std::string_view, const void *>{
        {"_objc_msgSend", AddressOf(machoMsgSend)},
        {"_objc_msgSend_stret", AddressOf(machoMsgSendStret)},
        {"_objc_msgSendSuper2", AddressOf(machoMsgSendSuper2)},
        {"___objc_personality_v0", AddressOf(machoObjcPersonality)},
        {"_objc_begin_catch", AddressOf(machoObjcBeginCatch)},
        {"_objc_end_catch", AddressOf(machoObjcEndCatch)},
        {"_objc_exception_rethrow", AddressOf(machoObjcRethrow)},
        {"_objc_terminate", AddressOf(machoObjcTerminate)},
        {"_objc_ehtype_vtable", ExceptionTypeVtable()},
        {"_OBJC_EHTYPE_id", ExceptionTypeOf("id")},
        {"_objc_alloc", AddressOf(machoAlloc)},
        {"_objc_alloc_init", AddressOf(machoAllocInit)},
        {"_object_getClass", AddressOf(machoGetClass)},
        {"_objc_retain", AddressOf(machoRetain)},
        {"_objc_release", AddressOf(machoRelease)},
        {"_objc_autorelease", AddressOf(machoAutorelease)},
        {"_objc_autoreleasePoolPush", AddressOf(machoPushPool)},
        {"_objc_autoreleasePoolPop", AddressOf(machoPopPool)},
        {"__objc_empty_cache", &machoUnused},
        {"__objc_empty_vtable", &machoUnused},
        // Nobody reads it: the constant strings that it marks are replaced.
        {"___CFConstantStringClassReference", &machoUnused},
        {"__ZNSt9bad_allocC1Ev", AddressOf(machoConstructBadAlloc)},
        {"___bzero", AddressOf(machoBzero)},
        {"___stack_chk_guard", &machoStackGuard},
        {"_atexit", AddressOf(machoAtExit)},
        {"_dlerror", AddressOf(machoDlerror)},
        {"_dlopen", AddressOf(machoDlopen)},
        {"_dladdr", AddressOf(machoDladdr)},
        {"_dlsym", AddressOf(machoDlsym)},
        {"_memset_pattern16", AddressOf(machoMemsetPattern16)},
        {"_strlcpy", AddressOf(machoStrlcpy)},
        {"dyld_stub_binder", AddressOf(machoStubBinder)},
    };
    return adapters;
}

bool StartsWith(std::string_view text, std::string_view beginning)
{
    return text.substr(0, beginning.size()) == beginning;
}

uint64_t InProcess(std::string_view symbol)
{
    return reinterpret_cast<uint64_t>(dlsym(RTLD_DEFAULT, std::string(symbol.substr(1)).c_str()));
}

uint64_t ClassNamed(std::string_view name)
{
    return reinterpret_cast<uint64_t>(objc_getClass(std::string(name).c_str()));
}

uint64_t MetaclassNamed(std::string_view name)
{
    const uint64_t type = ClassNamed(name);
    return type == 0 ? 0 : reinterpret_cast<uint64_t>(object_getClass(reinterpret_cast<id>(type)));
}

/// The address that a symbol is bound to; 0 if it has no counterpart here.
uint64_t AddressFor(std::string_view symbol)
{
    if (StartsWith(symbol, kClass))
        return ClassNamed(symbol.substr(kClass.size()));
    if (StartsWith(symbol, kMetaclass))
        return MetaclassNamed(symbol.substr(kMetaclass.size()));
    if (StartsWith(symbol, kExceptionType))
        return reinterpret_cast<uint64_t>(ExceptionTypeOf(symbol.substr(kExceptionType.size())));
    for (const auto *const adapters : {&CallAdapters(), &Adapters()}) {
        if (const auto found = adapters->find(symbol); found != adapters->end())
            return reinterpret_cast<uint64_t>(found->second);
    }
    if (std::find(std::begin(kSameNames), std::end(kSameNames), symbol) != std::end(kSameNames))
        return InProcess(symbol);
    return 0;
}

bool IsExported(std::string_view library, std::string_view symbol)
{
    const std::vector<StubExport> &exports = StubExports();
    return std::any_of(exports.begin(), exports.end(),
                       [&](const StubExport &one) { return one.library == library && one.symbol == symbol; });
}

} // namespace

uint64_t ResolveImport(const Bind &bind, const Image &image)
{
    const std::string symbol(bind.symbol);
    uint64_t address = 0;
    if (bind.ordinal == kBindFlat) {
        // Only what code that was compiled with the sanitizer calls.
        address = StartsWith(symbol, kSanitizer) ? InProcess(symbol) : 0;
        if (address == 0 && !bind.isWeakImport)
            throw LoadError("import " + symbol + ": flat lookup is not supported");
        return address;
    }
    if (bind.ordinal <= 0)
        throw LoadError("import " + symbol + ": library ordinal " + std::to_string(bind.ordinal) +
                        " is not supported");
    const std::string &library = image.dylibs[static_cast<size_t>(bind.ordinal) - 1];
    if (!IsExported(library, symbol)) {
        if (bind.isWeakImport)
            return 0;
        throw LoadError("import " + symbol + ": " + library + " does not export it");
    }
    address = AddressFor(symbol);
    if (address == 0 && !bind.isWeakImport)
        throw LoadError("import " + symbol + " from " + library + ": it has no counterpart here");
    return address;
}

uint64_t FindInLibraries(const std::string &symbol, const Image &image)
{
    const bool isExported =
        std::any_of(image.dylibs.begin(), image.dylibs.end(),
                    [&](const std::string &library) { return IsExported(library, symbol); });
    return isExported ? AddressFor(symbol) : 0;
}

std::vector<std::string_view> BoundSymbols()
{
    std::vector<std::string_view> symbols(std::begin(kSameNames), std::end(kSameNames));
    for (const auto &[symbol, address] : Adapters())
        symbols.push_back(symbol);
    return symbols;
}

const std::vector<StubExport> &StubExports()
{
    static const auto &exports = *new std::vector<StubExport>{
#include "stub_exports.inc"
    };
    return exports;
}

} // namespace macho
