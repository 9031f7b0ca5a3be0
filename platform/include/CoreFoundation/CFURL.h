// Core Foundation URLs, which are NSURLs.
#ifndef QZL_CFURL_H
#define QZL_CFURL_H

#include <CoreFoundation/CFString.h>

typedef const struct __CFURL *CFURLRef;

typedef enum CFURLPathStyle : CFIndex {
    kCFURLPOSIXPathStyle = 0,
    kCFURLHFSPathStyle = 1,
    kCFURLWindowsPathStyle = 2
} CFURLPathStyle;

struct FSRef;

CF_EXTERN_C_BEGIN

CF_EXPORT CFTypeID CFURLGetTypeID(void);

/// A file URL of a POSIX path, owned by the caller; a relative path starts at the working folder. Null for a
/// null or empty path, for one that UTF-8 cannot express and for the other path styles.
CF_EXPORT CFURLRef CFURLCreateWithFileSystemPath(CFAllocatorRef allocator, CFStringRef path,
                                                 CFURLPathStyle style, Boolean isDirectory);

/// The URL without the last component of its path, ending in a slash and owned by the caller. For the root
/// and for a path that ends in "." or "..", the URL with "../" appended instead. Null for null and for a URL
/// without a path.
CF_EXPORT CFURLRef CFURLCreateCopyDeletingLastPathComponent(CFAllocatorRef allocator, CFURLRef url);

/// The URL with a component, escaped where needed, at the end of its path, and a slash for a directory; owned
/// by the caller. Null for null, for a URL without a path and for a component that UTF-8 cannot express.
CF_EXPORT CFURLRef CFURLCreateCopyAppendingPathComponent(CFAllocatorRef allocator, CFURLRef url,
                                                         CFStringRef pathComponent, Boolean isDirectory);

/// The last component of the path without percent escapes, owned by the caller: "/" for the root, null for
/// null, for a URL without a path and for escapes that are not UTF-8.
CF_EXPORT CFStringRef CFURLCopyLastPathComponent(CFURLRef url);

/// Writes the reference of the existing item that a file URL names; for a symbolic link, of the link itself.
/// False, with the reference untouched, for any other URL, for a missing item and for null.
CF_EXPORT Boolean CFURLGetFSRef(CFURLRef url, struct FSRef *fsRef);

/// The file URL of the item, owned by the caller; null if the item no longer exists or the reference refers
/// to nothing.
CF_EXPORT CFURLRef CFURLCreateFromFSRef(CFAllocatorRef allocator, const struct FSRef *fsRef);

CF_EXTERN_C_END

#endif
