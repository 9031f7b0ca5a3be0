// URLs as text: their parts, and percent escapes.
#include "platform/gnustep/url_text.h"

#include <cctype>
#include <strings.h>

namespace cocoaport {

namespace {

constexpr std::string_view kAuthorityMark = "://";
constexpr std::string_view kPathCharacters = "-._~!$&'()*+,=:@/";
constexpr char kHexDigits[] = "0123456789ABCDEF";

bool IsLetterOrDigit(char character)
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9');
}

/// The value of two hexadecimal digits; none of anything else.
std::optional<char> HexByte(std::string_view digits)
{
    if (digits.size() < 2 || !std::isxdigit(static_cast<unsigned char>(digits[0])) ||
        !std::isxdigit(static_cast<unsigned char>(digits[1])))
        return std::nullopt;
    return static_cast<char>(std::stoi(std::string(digits.substr(0, 2)), nullptr, 16));
}

} // namespace

std::optional<URLText> ParseURL(std::string_view url)
{
    url = url.substr(0, url.find_first_of("?#"));
    const size_t mark = url.find(kAuthorityMark);
    if (mark == std::string_view::npos)
        return std::nullopt;
    const size_t authority = mark + kAuthorityMark.size();
    const size_t path = url.find('/', authority);
    if (path == std::string_view::npos)
        return std::nullopt;
    return URLText{std::string(url.substr(0, mark)), std::string(url.substr(authority, path - authority)),
                   std::string(url.substr(path))};
}

URLText FileURL(std::string_view path, bool isDirectory)
{
    std::string escaped = EscapePath(path);
    if (isDirectory && escaped.back() != '/')
        escaped += '/';
    return {"file", "", std::move(escaped)};
}

std::optional<std::string> FilePath(const URLText &url)
{
    const bool isLocal = url.authority.empty() || strcasecmp(url.authority.c_str(), "localhost") == 0;
    if (!isLocal || strcasecmp(url.scheme.c_str(), "file") != 0)
        return std::nullopt;
    std::string path = Unescape(url.path);
    if (path.find('\0') != std::string::npos)
        return std::nullopt;
    return path;
}

std::string EscapePath(std::string_view text)
{
    std::string escaped;
    for (const char character : text) {
        if (IsLetterOrDigit(character) || kPathCharacters.find(character) != std::string_view::npos) {
            escaped += character;
            continue;
        }
        const auto byte = static_cast<unsigned char>(character);
        escaped += {'%', kHexDigits[byte >> 4], kHexDigits[byte & 0xF]};
    }
    return escaped;
}

std::string Unescape(std::string_view text)
{
    std::string bytes;
    for (size_t index = 0; index < text.size(); ++index) {
        const std::optional<char> byte = text[index] == '%' ? HexByte(text.substr(index + 1)) : std::nullopt;
        bytes += byte.value_or(text[index]);
        if (byte)
            index += 2;
    }
    return bytes;
}

std::string_view WithoutTrailingSlashes(std::string_view path)
{
    while (path.size() > 1 && path.back() == '/')
        path.remove_suffix(1);
    return path;
}

std::string_view LastComponent(std::string_view path)
{
    path = WithoutTrailingSlashes(path);
    return path == "/" ? path : path.substr(path.rfind('/') + 1);
}

} // namespace cocoaport
