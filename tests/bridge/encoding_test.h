// A test of host strings in their encodings, on either route to the text.
#pragma once

#import <Foundation/Foundation.h>

#include <optional>

#include "bridge/to_cocoa/string_to_cocoa.h"
#include "frame/host_strings.h"
#include "tests/support/linked_test.h"
#include "tests/support/texts.h"

/// Where the text of a host string comes from.
enum class Route { HostsCFString, Bytes };

inline constexpr Route kRoutes[] = {Route::HostsCFString, Route::Bytes};

inline std::string NameOf(Route route)
{
    return route == Route::HostsCFString ? "HostsCFString" : "Bytes";
}

/// A test on a host with or without Core Foundation strings.
class EncodingTest : public LinkedTest {
protected:
    qzlhost::Host &StartOnRoute(Route route)
    {
        return Start(2024.01, [route](qzlhost::Host &unloaded) {
            if (route == Route::Bytes)
                unloaded.Lack("REALGetStringCFString");
        });
    }

    /// The text that the library reads from bytes in this encoding; nothing for nil.
    std::optional<std::u16string> Read(std::string_view bytes, uint32_t encoding)
    {
        const qzlhost::Value string = qzlhost::Value::StringOfBytes(bytes, encoding);
        NSString *const text = NewNSString(StringOf(string));
        EXPECT_EQ(host().References(string), 1);
        return text == nil ? std::nullopt : std::optional(UnitsOf(text));
    }

    qzlhost::Value Build(std::string_view bytes, uint32_t encoding)
    {
        return Owned(REALBuildUnicodeString(bytes.data(), static_cast<int64_t>(bytes.size()), encoding));
    }

    /// The bytes of the host string that the library makes of a Cocoa string.
    std::string Write(std::u16string_view text)
    {
        return Owned(CFString2RBString((CFStringRef)CocoaString(text))).StringBytes();
    }
};
