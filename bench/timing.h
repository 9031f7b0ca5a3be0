// What every measurement needs: a clock, and memory that does not wait for the kernel.
#pragma once

#include <malloc.h>
#include <time.h>

#include <limits>

/// The clock's time in nanoseconds.
inline double Now(clockid_t clock)
{
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
}

/// Keeps freed memory in the process, so that no batch waits for the kernel's new pages.
inline void KeepMemory()
{
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
}
