// Builds host strings with the functions that the host's version has.
#include "frame/host_strings.h"

#include <algorithm>
#include <cstring>

#include "frame/errors.h"
#include "frame/heap_buffer.h"
#include "frame/host_references.h"
#include "frame/loaded_host.h"
#include "frame/tagged_string.h"

namespace {

/// From these versions on, the host accepts UTF-16 or UTF-32 for the bytes of a new string.
constexpr double kFirstVersionWithUTF16 = 2012.0;
constexpr double kFirstVersionWithUTF32 = 2013.0;

bool IsASCII(const void *bytes, int64_t length)
{
    const auto *first = static_cast<const unsigned char *>(bytes);
    return std::all_of(first, first + length, [](unsigned char byte) { return byte < 0x80; });
}

/// Takes over the reference of a string and returns the string in UTF-8, with one reference for the caller. A
/// null string is passed to the host, too.
REALstring ConvertToUTF8(REALstring owned)
{
    HostRef<REALstring> string(owned);
    HostRef<REALstring> converted(REALConvertString(string.Get(), kCFStringEncodingUTF8));
    string.GiveBack();
    return converted.Release();
}

/// Writes UTF-16 for `count` code points in the machine's byte order; `units` has room for two units each.
/// Surrogates are dropped, numbers beyond Unicode replaced. Returns how many units it wrote.
size_t ConvertUTF32(const void *bytes, size_t count, UniChar *units)
{
    UniChar *next = units;
    for (size_t index = 0; index < count; ++index) {
        uint32_t point;
        std::memcpy(&point, static_cast<const char *>(bytes) + index * sizeof point, sizeof point);
        if (point > 0x10FFFF) {
            *next++ = 0xFFFD;
        } else if (point > 0xFFFF) {
            *next++ = static_cast<UniChar>(((point - 0x10000) >> 10) + 0xD800);
            *next++ = static_cast<UniChar>(((point - 0x10000) & 0x3FF) | 0xDC00);
        } else if ((point & ~0x7FFu) != 0xD800) {
            *next++ = static_cast<UniChar>(point);
        }
    }
    return static_cast<size_t>(next - units);
}

/// Builds a string of UTF-32 for hosts that cannot. Null without memory. Not inlined: its buffer would lie on
/// every caller's stack.
__attribute__((noinline)) REALstring BuildFromUTF32(const void *bytes, int64_t length)
{
    constexpr int64_t kLongestOnStack = 799;
    UniChar onStack[2 * (kLongestOnStack / 4) + 1];
    HeapBuffer onHeap;

    const size_t count = static_cast<size_t>(length) / 4;
    UniChar *units = onStack;
    if (length > kLongestOnStack) {
        onHeap = AllocateBuffer((2 * count + 1) * sizeof(UniChar));
        if (onHeap == nullptr)
            return nullptr;
        units = reinterpret_cast<UniChar *>(onHeap.get());
    }
    const size_t written = ConvertUTF32(bytes, count, units);
    units[written] = 0;
    return REALBuildUnicodeStringUTF16(units, static_cast<int64_t>(written * sizeof(UniChar)));
}

/// `REALBuildUnicodeString` without its guard: C++ exceptions pass.
REALstring BuildUnicodeStringUnguarded(const void *bytes, int64_t length, uint32_t encoding)
{
    if (bytes == nullptr || length < 1 || length > kLongestString)
        return nullptr;

    switch (encoding) {
    case kCFStringEncodingMacRoman:
    case kCFStringEncodingWindowsLatin1:
    case kUnknownEncoding:
        return BuildTaggedString(bytes, length, IsASCII(bytes, length) ? kCFStringEncodingASCII : encoding);
    case kCFStringEncodingUTF16:
        return REALBuildUnicodeStringUTF16(bytes, length);
    case kCFStringEncodingUTF32:
        if (!HostIsAtLeast(kFirstVersionWithUTF32))
            return BuildFromUTF32(bytes, length);
        return ConvertToUTF8(REALBuildStringWithEncoding(
            static_cast<const char *>(bytes), static_cast<int32_t>(length), kCFStringEncodingUTF32));
    default:
        return BuildTaggedString(bytes, length, encoding);
    }
}

/// The host string of `string` up to its first NUL, converted in `buffer`; null if UTF-8 cannot hold it.
REALstring BuildThroughBuffer(CFStringRef string, char *buffer, CFIndex capacity)
{
    if (!CFStringGetCString(string, buffer, capacity, kCFStringEncodingUTF8))
        return nullptr;
    return REALBuildUnicodeString(buffer, static_cast<int64_t>(std::strlen(buffer)), kCFStringEncodingUTF8);
}

} // namespace

REALstring REALBuildUnicodeString(const void *bytes, int64_t length, uint32_t encoding)
{
    return GuardStandardExceptions([&] { return BuildUnicodeStringUnguarded(bytes, length, encoding); });
}

REALstring REALBuildUnicodeStringUTF16(const void *units, int64_t length)
{
    if (HostIsAtLeast(kFirstVersionWithUTF16))
        return ConvertToUTF8(REALBuildStringWithEncoding(
            static_cast<const char *>(units), static_cast<int32_t>(length), kCFStringEncodingUTF16));

    const REALstring string = BuildTaggedString(units, length, kCFStringEncodingUTF16);
    return string != nullptr ? ConvertToUTF8(string) : nullptr;
}

REALstring CFString2RBString(CFStringRef string)
{
    constexpr CFIndex kLongestOnStack = 99;
    constexpr CFIndex kBytesPerUnit = CFIndex{2} * 3;

    const CFIndex length = string == nullptr ? 0 : CFStringGetLength(string);
    if (length <= 0)
        return nullptr;
    // The buffers are not zeroed: the conversion ends its text with a NUL.
    if (length <= kLongestOnStack) {
        char onStack[600];
        return BuildThroughBuffer(string, onStack, sizeof onStack);
    }
    const CFIndex capacity = length * kBytesPerUnit;
    const HeapBuffer onHeap = AllocateBuffer(static_cast<size_t>(capacity));
    return onHeap == nullptr ? nullptr : BuildThroughBuffer(string, onHeap.get(), capacity);
}
