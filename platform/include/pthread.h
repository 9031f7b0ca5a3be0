// The system's threads, and macOS's test for the main one.
#include_next <pthread.h>

#ifndef QZL_PTHREAD_H
#define QZL_PTHREAD_H

#ifdef __cplusplus
extern "C" {
#endif

/// 1 on the process's main thread, 0 on every other.
int pthread_main_np(void);

#ifdef __cplusplus
}
#endif

#endif
