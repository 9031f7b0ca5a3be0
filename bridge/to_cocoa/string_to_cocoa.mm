// Turns a host string into a Cocoa string.
#include "bridge/to_cocoa/string_to_cocoa.h"

#import <Foundation/Foundation.h>

#include "frame/cf_ref.h"
#include "frame/host_references.h"
#include "frame/host_strings.h"
#include "frame/kept_look_ups.h"
#include "frame/loaded_host.h"

namespace {

/// From this version on, hosts return Core Foundation strings.
constexpr double kFirstVersionWithCFStrings = 2012.0;

/// The host's "LenB", looked up until it is found; null if the host lacks it.
int64_t (*LoadLenB())(REALstring)
{
    static int64_t (*lenB)(REALstring);
    return KeepFound(lenB, [] { return REALLoadFrameworkMethod(nullptr, "LenB( s as string ) as integer"); });
}

/// A string of the host string's bytes, with one retain for the caller; null without bytes or length.
__attribute__((cf_returns_retained)) CFStringRef CreateFromLockedBytes(REALstring string, uint32_t encoding)
{
    const char *const bytes = REALGetStringContents(string);
    const auto lenB = LoadLenB();
    if (bytes == nullptr || lenB == nullptr)
        return nullptr;
    const CFIndex length = lenB(string);
    if (encoding == kCFStringEncodingUTF16)
        return CFStringCreateWithCharacters(kCFAllocatorDefault, reinterpret_cast<const UniChar *>(bytes),
                                            length / 2);
    return CFStringCreateWithBytes(kCFAllocatorDefault, reinterpret_cast<const UInt8 *>(bytes), length,
                                   encoding, true);
}

__attribute__((cf_returns_retained)) CFStringRef CreateFromBytes(REALstring string, uint32_t encoding)
{
    HostLock<REALstring> lock(string);
    CFRef<CFStringRef> text(CreateFromLockedBytes(string, encoding));
    lock.GiveBack();
    return text.Release();
}

__attribute__((cf_returns_retained)) CFStringRef CreateCFString(REALstring string)
{
    const uint32_t encoding = REALGetStringEncoding(string);
    if (encoding == kUnknownEncoding)
        return CreateFromBytes(string, kCFStringEncodingMacRoman);
    if (HostIsAtLeast(kFirstVersionWithCFStrings))
        if (const CFStringRef text = REALGetStringCFString(string, 0))
            return text;
    if (const CFStringRef text = REALCopyStringCFString(string, 0))
        return text;
    return CreateFromBytes(string, encoding);
}

} // namespace

NSString *NewNSString(REALstring string)
{
    if (string == nullptr)
        return nil;
    return [(NSString *)CreateCFString(string) autorelease];
}
