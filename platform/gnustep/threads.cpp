// Recognises the main thread.
#include <pthread.h>
#include <unistd.h>

namespace {

constexpr int kUnknown = -1;

/// This thread's answer, in the thread's static block: an access calls nothing and takes no lock.
[[gnu::tls_model("initial-exec")]] constinit thread_local int gAnswer = kUnknown;

/// In a forked child, the thread that forked is the main one.
void ForgetAnswer()
{
    gAnswer = kUnknown;
}

/// Whether a fork clears the answer, so that it can be kept.
const bool kIsClearedByForks = pthread_atfork(nullptr, nullptr, ForgetAnswer) == 0;

} // namespace

int pthread_main_np()
{
    if (gAnswer != kUnknown)
        return gAnswer;
    const int answer = gettid() == getpid() ? 1 : 0;
    if (kIsClearedByForks)
        gAnswer = answer;
    return answer;
}
