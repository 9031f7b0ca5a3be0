// Strings and files as Cocoa and the platform have them, for files in plain C++.
#include "host/interface/cocoa_values.h"

#import <Foundation/Foundation.h>

namespace qzlhost {

CFStringRef NewCFString(std::u16string_view text)
{
    return CFStringCreateWithCharacters(nullptr, reinterpret_cast<const uint16_t *>(text.data()),
                                        static_cast<int64_t>(text.size()));
}

bool FSRefOfPath(const std::string &path, FSRef *out)
{
    NSString *const string = [NSString stringWithUTF8String:path.c_str()];
    NSURL *const url = string ? [NSURL fileURLWithPath:string] : nil;
    return url && CFURLGetFSRef(reinterpret_cast<CFURLRef>(url), out) != 0;
}

std::optional<std::string> PathOfFSRef(const FSRef *reference)
{
    uint8_t path[4096] = {};
    if (FSRefMakePath(reference, path, sizeof path) != 0)
        return std::nullopt;
    return std::string(reinterpret_cast<const char *>(path));
}

} // namespace qzlhost
