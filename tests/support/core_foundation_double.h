// Stands between the library and Core Foundation's and the File Manager's calls for files and their URLs:
// notes them, and lets them fail.
#pragma once

#include <ApplicationServices/ApplicationServices.h>

#include <ostream>
#include <string>
#include <vector>

/// What fails. Everything else is the platform's own.
enum class Refusal {
    Nothing,
    /// The number of an item and the reference of its parent.
    NodeAndParent,
    /// The name of an item.
    Name,
    /// Whether a reference refers to anything.
    Existence,
    /// The path of an item.
    Path,
    /// The URL of the folder that an item is in.
    FolderURL,
    /// The reference of that folder.
    FolderReference,
    /// The name at the end of a URL.
    LastComponent,
    /// A copy of a string that can be changed.
    MutableCopy,
    /// The URL of a reference.
    ReferenceURL,
    /// A string of characters.
    String,
    /// A URL with one more component.
    LongerURL,
};

/// A call of FSGetCatalogInfo: what was asked about which item.
struct CatalogCall {
    /// The 80 bytes of the reference.
    std::string reference;
    FSCatalogInfoBitmap information;
    bool wantsInformation, wantsName, wantsParent;

    bool operator==(const CatalogCall &other) const
    {
        return reference == other.reference && information == other.information &&
               wantsInformation == other.wantsInformation && wantsName == other.wantsName &&
               wantsParent == other.wantsParent;
    }
};

/// For the messages of the test framework.
std::ostream &operator<<(std::ostream &stream, const CatalogCall &call);

std::string BytesOf(const FSRef &reference);

/// One for all calls of the process; the linker leads them here.
struct CoreFoundationDouble {
    Refusal refusal = Refusal::Nothing;
    /// The number that every item has; 0 for its own.
    UInt32 nodeID = 0;
    /// Whether the last byte of a parent's reference is to be 1, and not the 0 that it is here.
    bool marksParents = false;
    /// The path that every item has; empty for its own. It is given without a zero byte behind it.
    std::string path;

    std::vector<CatalogCall> catalogCalls;
    /// The buffers for paths, as they were before they were filled.
    std::vector<std::string> pathBuffers;
    /// The objects that were made for the library, each with one retain more.
    std::vector<CFTypeRef> made;

    /// Gives back those retains. Returns how many there were, and how many of the objects nobody else held.
    std::pair<size_t, size_t> ReleaseMade();
};

CoreFoundationDouble &TheCoreFoundation();
