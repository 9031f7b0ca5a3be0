// Core Foundation objects and conversions of text for the tests of the port.
#pragma once

#import <Foundation/Foundation.h>

#include <CoreFoundation/CoreFoundation.h>

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

namespace port_testing {

struct CFReleaser {
    void operator()(CFTypeRef object) const { CFRelease(object); }
};

/// A Core Foundation object that the test owns.
template <typename Reference>
using Owned = std::unique_ptr<std::remove_pointer_t<Reference>, CFReleaser>;

using OwnedString = Owned<CFStringRef>;
using OwnedURL = Owned<CFURLRef>;

inline OwnedString StringOf(std::u16string_view units)
{
    return OwnedString(CFStringCreateWithCharacters(nullptr, reinterpret_cast<const UniChar *>(units.data()),
                                                    static_cast<CFIndex>(units.size())));
}

inline std::u16string UnitsOf(CFStringRef string)
{
    std::u16string units(static_cast<size_t>(CFStringGetLength(string)), u'\0');
    CFStringGetCharacters(string, CFRangeMake(0, CFStringGetLength(string)),
                          reinterpret_cast<UniChar *>(units.data()));
    return units;
}

/// The text of bytes; none if they are refused.
inline std::optional<std::u16string> Decode(std::string_view bytes, CFStringEncoding encoding,
                                            bool external = true)
{
    const OwnedString string(CFStringCreateWithBytes(nullptr, reinterpret_cast<const UInt8 *>(bytes.data()),
                                                     static_cast<CFIndex>(bytes.size()), encoding, external));
    return string ? std::optional(UnitsOf(string.get())) : std::nullopt;
}

/// The bytes that CFStringGetCString writes, without the NUL at their end; none if it fails. Not for texts
/// whose own last byte is a NUL.
inline std::optional<std::string> Encode(std::u16string_view units, CFStringEncoding encoding)
{
    std::string buffer(units.size() * 8 + 64, '\x7F');
    const OwnedString string = StringOf(units);
    if (!CFStringGetCString(string.get(), buffer.data(), static_cast<CFIndex>(buffer.size()), encoding))
        return std::nullopt;
    buffer.resize(buffer.rfind('\0'));
    return buffer;
}

} // namespace port_testing
