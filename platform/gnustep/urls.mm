// Core Foundation URLs, which are NSURLs.
#include <climits>
#include <unistd.h>

#include "platform/gnustep/file_references.h"
#include "platform/gnustep/objects.h"
#include "platform/gnustep/string_text.h"
#include "platform/gnustep/url_text.h"

using namespace cocoaport;

namespace {

/// A string of UTF-8, owned by the caller; null if that is not valid.
CFStringRef NewUTF8String(std::string_view text)
{
    return CFStringCreateWithBytes(nullptr, reinterpret_cast<const UInt8 *>(text.data()),
                                   static_cast<CFIndex>(text.size()), kCFStringEncodingUTF8, false);
}

/// The parts of a URL; none for null and for a URL without a path.
std::optional<URLText> TextOf(CFURLRef url)
{
    @autoreleasepool {
        const std::optional<std::string> text = UTF8Text([ObjectOf<NSURL>(url) absoluteString]);
        return text ? ParseURL(*text) : std::nullopt;
    }
}

/// A URL, owned by the caller; null for a text that is no URL.
CFURLRef NewURL(const URLText &text)
{
    const CFStringRef whole = NewUTF8String(text.Whole());
    if (whole == nullptr)
        return nullptr;
    NSURL *const url = [[NSURL alloc] initWithString:ObjectOf<NSString>(whole)];
    CFRelease(whole);
    return ReferenceOf<CFURLRef>(url);
}

/// The path from the root; none if the working folder is gone.
std::optional<std::string> AbsolutePath(const std::string &path)
{
    if (path.front() == '/')
        return path;
    char folder[PATH_MAX];
    if (getcwd(folder, sizeof folder) == nullptr)
        return std::nullopt;
    return std::string(folder) + "/" + path;
}

} // namespace

CFURLRef CFURLCreateWithFileSystemPath(CFAllocatorRef, CFStringRef path, CFURLPathStyle style,
                                       Boolean isDirectory)
{
    const std::optional<std::string> text = UTF8Text(ObjectOf<NSString>(path));
    if (style != kCFURLPOSIXPathStyle || !text || text->empty())
        return nullptr;
    const std::optional<std::string> absolute = AbsolutePath(*text);
    return absolute ? NewURL(FileURL(*absolute, isDirectory)) : nullptr;
}

CFURLRef CFURLCreateCopyDeletingLastPathComponent(CFAllocatorRef, CFURLRef url)
{
    std::optional<URLText> text = TextOf(url);
    if (!text)
        return nullptr;
    const std::string_view last = LastComponent(text->path);
    if (last == "/" || last == "." || last == "..") {
        if (text->path.back() != '/')
            text->path += '/';
        text->path += "../";
    } else {
        text->path.resize(WithoutTrailingSlashes(text->path).size() - last.size());
    }
    return NewURL(*text);
}

CFURLRef CFURLCreateCopyAppendingPathComponent(CFAllocatorRef, CFURLRef url, CFStringRef pathComponent,
                                               Boolean isDirectory)
{
    std::optional<URLText> text = TextOf(url);
    const std::optional<std::string> component = UTF8Text(ObjectOf<NSString>(pathComponent));
    if (!text || pathComponent == nullptr || !component)
        return nullptr;
    if (text->path.back() != '/')
        text->path += '/';
    text->path += EscapePath(*component);
    if (isDirectory && text->path.back() != '/')
        text->path += '/';
    return NewURL(*text);
}

CFStringRef CFURLCopyLastPathComponent(CFURLRef url)
{
    const std::optional<URLText> text = TextOf(url);
    return text ? NewUTF8String(Unescape(LastComponent(text->path))) : nullptr;
}

Boolean CFURLGetFSRef(CFURLRef url, FSRef *fsRef)
{
    const std::optional<URLText> text = TextOf(url);
    const std::optional<std::string> path = text ? FilePath(*text) : std::nullopt;
    const std::optional<std::string> canonical = path ? CanonicalPath(*path) : std::nullopt;
    if (!canonical || fsRef == nullptr)
        return false;
    *fsRef = ReferenceOfPath(*canonical);
    return true;
}

CFURLRef CFURLCreateFromFSRef(CFAllocatorRef, const FSRef *fsRef)
{
    const FileItem item = FindItem(fsRef);
    return item.error == noErr ? NewURL(FileURL(item.path, item.IsDirectory())) : nullptr;
}
