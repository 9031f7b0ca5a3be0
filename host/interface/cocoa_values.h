// Strings and files as Cocoa and the platform have them, for files in plain C++.
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
int32_t FSRefMakePath(const FSRef *reference, uint8_t *path, uint32_t size);
}

namespace qzlhost {

static_assert(sizeof(FSRef) == 80 && sizeof(HFSUniStr255) == 512);

/// A new string with one retain.
CFStringRef NewCFString(std::u16string_view text) __attribute__((cf_returns_retained));

/// Returns false if nothing exists at the path.
bool FSRefOfPath(const std::string &path, FSRef *out);
/// The path in UTF-8; nothing for an invalid reference.
std::optional<std::string> PathOfFSRef(const FSRef *reference);

} // namespace qzlhost
