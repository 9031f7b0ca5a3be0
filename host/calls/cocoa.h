// What the host needs of Cocoa and of the platform, for files in plain C++.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

extern "C" {
typedef const struct __CFString *CFStringRef;
typedef const struct __CFURL *CFURLRef;

struct FSRef {
    uint8_t hidden[80];
};

struct HFSUniStr255 {
    uint16_t length;
    uint16_t unicode[255];
};

CFStringRef CFStringCreateWithCharacters(const void *allocator, const uint16_t *characters, int64_t count)
    __attribute__((cf_returns_retained));
unsigned char CFURLGetFSRef(CFURLRef url, FSRef *out);
CFURLRef CFURLCreateFromFSRef(const void *allocator, const FSRef *reference);
int32_t FSRefMakePath(const FSRef *reference, uint8_t *path, uint32_t size);
}

namespace qzlhost {

static_assert(sizeof(FSRef) == 80 && sizeof(HFSUniStr255) == 512);

/// Uses the run loop and the notification centre once, so that their first use is not on two threads at a
/// time.
void WarmUpCocoa();

/// A program's arguments are its own: Cocoa would take them for the user's defaults. Before anything else of
/// Cocoa.
void HideArgumentsFromCocoa(const char *program);

/// Makes Cocoa know the calling thread. Does nothing for one that it knows.
void RegisterThreadWithCocoa();

void *PushPool();
void PopPool(void *pool);

/// Runs the run loop of the calling thread until something happened, or for at most so many seconds.
void RunRunLoop(double seconds);

/// The workspace's notification centre, with one retain.
void *NewWorkspaceCenter();

/// With one retain.
CFStringRef NewCFString(std::u16string_view text) __attribute__((cf_returns_retained));

/// False where nothing exists at the path.
bool FSRefOfPath(const std::string &path, FSRef *out);
/// UTF-8; nothing for a reference to nothing.
std::optional<std::string> PathOfFSRef(const FSRef *reference);

} // namespace qzlhost
