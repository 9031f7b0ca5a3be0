// What the host needs of Cocoa, for files in plain C++.
#pragma once

namespace qzlhost {

/// Uses the run loop and the notification centre once: two threads that first use them at the same time can
/// deadlock.
void WarmUpCocoa();

/// Keeps the program's arguments from Cocoa, which would take them for the user's defaults. Call it before
/// Cocoa is used.
void HideArgumentsFromCocoa(const char *program);

/// Registers the calling thread with Cocoa unless it is registered.
void RegisterThreadWithCocoa();

/// Begins and ends an autorelease pool. While a thread has such a pool, a CocoaScope adds none.
void *PushPool();
void PopPool(void *pool);

/// Makes Cocoa usable on the calling thread: registers the thread and provides a pool.
class CocoaScope {
public:
    CocoaScope();
    ~CocoaScope();
    CocoaScope(const CocoaScope &) = delete;
    CocoaScope &operator=(const CocoaScope &) = delete;

private:
    void *pool_ = nullptr;
};

/// Runs the calling thread's run loop until it has handled an event, for at most `seconds`.
void RunRunLoop(double seconds);

} // namespace qzlhost
