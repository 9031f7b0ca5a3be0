// URLs as text: their parts, and percent escapes.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace cocoaport {

/// A URL with a path; its query and fragment are left out.
struct URLText {
    std::string scheme;    ///< "file"
    std::string authority; ///< between "//" and the path
    std::string path;      ///< with its percent escapes

    std::string Whole() const { return scheme + "://" + authority + path; }
};

/// Splits a URL of the form scheme://authority/path; none for any other form.
std::optional<URLText> ParseURL(std::string_view url);

/// The file URL of an absolute path, with a trailing slash for a folder.
URLText FileURL(std::string_view path, bool isDirectory);

/// The path without percent escapes; none unless it is a file URL of this machine.
std::optional<std::string> FilePath(const URLText &url);

/// The text with percent escapes where a path needs them; slashes stay.
std::string EscapePath(std::string_view text);

/// The bytes that the text stands for with its percent escapes resolved; an invalid escape stays.
std::string Unescape(std::string_view text);

/// The path without trailing slashes, except for the root's.
std::string_view WithoutTrailingSlashes(std::string_view path);

/// The last component, without trailing slashes; "/" for the root.
std::string_view LastComponent(std::string_view path);

} // namespace cocoaport
