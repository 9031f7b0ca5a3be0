// Keeps the leak checker from reporting what other code loses.
#pragma once

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#include <sanitizer/lsan_interface.h>
#define QZL_HAS_LEAK_CHECKER 1
#endif
#endif

/// While it lives, the thread's allocations may leak.
class LeakCheckPause {
public:
#ifdef QZL_HAS_LEAK_CHECKER
    LeakCheckPause() { __lsan_disable(); }
    ~LeakCheckPause() { __lsan_enable(); }
#else
    LeakCheckPause() {}
    ~LeakCheckPause() {}
#endif
    LeakCheckPause(const LeakCheckPause &) = delete;
    LeakCheckPause &operator=(const LeakCheckPause &) = delete;
};
