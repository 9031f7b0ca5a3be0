// References of file-system items.
#pragma once

#include <CoreServices/CoreServices.h>

#include <optional>
#include <string>
#include <sys/stat.h>

namespace cocoaport {

/// The path of an existing item, with every symbolic link on the way resolved, but not the item itself if it
/// is one; none if the item does not exist.
std::optional<std::string> CanonicalPath(const std::string &path);

/// The reference of a canonical path, always with the same bytes. It stands for the path: once the item is
/// moved, the reference finds nothing, or another item at the path.
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
