// What calls need of Cocoa, for files in plain C++.
#pragma once

namespace qzlhost {

/// Uses the run loop and the notification centre once, so that their first use is not on two threads at a
/// time.
void WarmUpCocoa();

/// A program's arguments are its own: Cocoa would take them for the user's defaults. Before anything else of
/// Cocoa.
void HideArgumentsFromCocoa(const char *program);

/// Registers the calling thread with Cocoa, unless it is.
void RegisterThreadWithCocoa();

/// A new autorelease pool, and its end. While a thread has one of the host's, a CocoaScope adds none.
void *PushPool();
void PopPool(void *pool);

/// Makes Cocoa usable on the calling thread: registers the thread and has a pool.
class CocoaScope {
public:
    CocoaScope();
    ~CocoaScope();
    CocoaScope(const CocoaScope &) = delete;
    CocoaScope &operator=(const CocoaScope &) = delete;

private:
    void *pool_ = nullptr;
};

/// Runs the run loop of the calling thread until something happened, or for at most so many seconds.
void RunRunLoop(double seconds);

} // namespace qzlhost
