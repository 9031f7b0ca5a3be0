// Recognises the main thread.
#include <pthread.h>
#include <unistd.h>

int pthread_main_np()
{
    return gettid() == getpid() ? 1 : 0;
}
