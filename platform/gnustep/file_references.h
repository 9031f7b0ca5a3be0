/// References of file-system items.
#pragma once

#include <CoreServices/CoreServices.h>

#include <optional>
#include <string>
#include <sys/stat.h>

namespace cocoaport {

/// The path of an existing item with all links on the way resolved, but not the item itself when
/// it is one; none when it does not exist.
std::optional<std::string> CanonicalPath(const std::string &path);

/// The reference of a canonical path. It stands for the path: an item that is moved is found no
/// more, and another one at its place is. The same path has the same reference, byte by byte.
FSRef ReferenceOfPath(const std::string &canonicalPath);

/// An item as a call finds it.
struct FileItem {
    OSErr error; ///< noErr; fnfErr: gone; paramErr: the reference refers to nothing; ioErr: any other
    std::string path;
    struct stat status;

    bool IsDirectory() const { return S_ISDIR(status.st_mode); }
};

/// Looks for the item of a reference, which may be null.
FileItem FindItem(const FSRef *reference);

} // namespace cocoaport
