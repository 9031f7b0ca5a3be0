// Replaces the functions of Core Foundation and the File Manager for files and their URLs: records the
// library's calls and can let one of them fail.
#pragma once

#include <ApplicationServices/ApplicationServices.h>

#include <ostream>
#include <string>
#include <vector>

/// The request that fails. The platform answers every other.
enum class Refusal {
    Nothing,
    /// The number of an item and the reference of its parent.
    NodeAndParent,
    /// The name of an item.
    Name,
    /// The existence of an item.
    Existence,
    /// The path of an item.
    Path,
    /// The URL of an item's folder.
    FolderURL,
    /// The reference of that folder.
    FolderReference,
    /// The name at the end of a URL.
    LastComponent,
    /// A mutable copy of a string.
    MutableCopy,
    /// The URL of a reference.
    ReferenceURL,
    /// A string made of characters.
    String,
    /// A URL with one more component.
    LongerURL,
};

/// A call of FSGetCatalogInfo.
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

std::ostream &operator<<(std::ostream &stream, const CatalogCall &call);

std::string BytesOf(const FSRef &reference);

/// There is one in the process; the linker redirects the library's calls to it.
struct CoreFoundationDouble {
    Refusal refusal = Refusal::Nothing;
    /// The number of every item; with 0 each has its own.
    UInt32 nodeID = 0;
    /// Whether the last byte of a parent's reference is 1 instead of 0.
    bool marksParents = false;
    /// The path of every item, written without a zero byte at its end; when empty, each has its own.
    std::string path;

    std::vector<CatalogCall> catalogCalls;
    /// The contents of the buffers for paths before they were filled.
    std::vector<std::string> pathBuffers;
    /// The objects made for the library, each with one retain of the double's.
    std::vector<CFTypeRef> made;

    /// Releases these objects. Returns how many there were, and how many of them nobody else held.
    std::pair<size_t, size_t> ReleaseMade();
};

CoreFoundationDouble &TheCoreFoundation();
