// Turns a file URL into a host folder item.
#include "bridge/to_host/file_url_to_host.h"

#include <ApplicationServices/ApplicationServices.h>
#import <Foundation/Foundation.h>

#include <algorithm>
#include <atomic>
#include <cstring>

#include "bridge/file_names.h"
#include "frame/cf_ref.h"
#include "frame/host_references.h"
#include "frame/host_strings.h"

namespace {

using TrueFolderItemFunction = REALobject (*)(REALstring path, int64_t pathMode);
std::atomic<TrueFolderItemFunction> GetTrueFolderItem{nullptr};
std::atomic<bool> doneGetTrueFolderItem{false};

constexpr UInt32 kVolumeRootNodeID = 2;
constexpr size_t kLongestPath = 4096;

/// The host's function for a path, looked up at most once in the process; null if the host lacks it.
TrueFolderItemFunction FindGetTrueFolderItem()
{
    if (!doneGetTrueFolderItem) {
        GetTrueFolderItem = reinterpret_cast<TrueFolderItemFunction>(REALLoadFrameworkMethod(
            nullptr, "GetTrueFolderItem(path As String, pathMode As Integer) As FolderItem"));
        doneGetTrueFolderItem = true;
    }
    return GetTrueFolderItem;
}

/// Writes an existing item's parent and name. False for the root of a volume, and if either is unknown.
bool FindParentAndName(const FSRef &item, FSRef &parent, HFSUniStr255 &name)
{
    FSCatalogInfo catalog = {};
    if (FSGetCatalogInfo(&item, kFSCatInfoNodeID, &catalog, nullptr, nullptr, &parent) != noErr)
        return false;
    if (catalog.nodeID == kVolumeRootNodeID)
        std::memset(&parent, 0, sizeof parent); // so that it refers to nothing below
    const bool named = FSGetCatalogInfo(&item, kFSCatInfoNone, nullptr, &name, nullptr, nullptr) == noErr;
    return FSGetCatalogInfo(&parent, kFSCatInfoNone, nullptr, nullptr, nullptr, nullptr) == noErr && named;
}

/// A folder item by the path of an existing item, or null.
REALobject NewFolderItemByPath(const FSRef &item)
{
    constexpr int64_t kPathMode = 3;
    UInt8 path[kLongestPath] = {};
    if (FSRefMakePath(&item, path, sizeof path) != noErr)
        return nullptr;
    const auto length = static_cast<int64_t>(std::strlen(reinterpret_cast<const char *>(path)));
    HostRef<REALstring> string(REALBuildUnicodeString(path, length, kCFStringEncodingUTF8));
    const TrueFolderItemFunction function = FindGetTrueFolderItem();
    HostRef<REALobject> folderItem(function == nullptr ? nullptr : function(string.Get(), kPathMode));
    string.GiveBack();
    return folderItem.Release();
}

REALobject NewFolderItemOfExistingItem(const FSRef &item)
{
    FSRef parent;
    HFSUniStr255 name;
    if (FindParentAndName(item, parent, name))
        return REALFolderItemFromParentFSRef(&parent, &name);
    return NewFolderItemByPath(item);
}

/// Writes the name as the file system stores it: decomposed, and cut to the length that a name may have.
void FillName(CFStringRef component, HFSUniStr255 &name)
{
    constexpr CFIndex kLongestName = 255;
    const CFRef<CFStringRef> decomposed(CreateDecomposedName(component));
    const CFIndex length = std::min(CFStringGetLength(decomposed.Get()), kLongestName);
    name.length = static_cast<UInt16>(length);
    CFStringGetCharacters(decomposed.Get(), CFRangeMake(0, length), name.unicode);
}

REALobject NewFolderItemOfMissingItem(CFURLRef url)
{
    const CFRef<CFURLRef> folder(CFURLCreateCopyDeletingLastPathComponent(kCFAllocatorDefault, url));
    if (!folder)
        return nullptr;
    FSRef parent;
    if (!CFURLGetFSRef(folder.Get(), &parent))
        return nullptr;
    const CFRef<CFStringRef> component(CFURLCopyLastPathComponent(url));
    if (!component)
        return nullptr;
    HFSUniStr255 name = {};
    FillName(component.Get(), name);
    return REALFolderItemFromParentFSRef(&parent, &name);
}

} // namespace

REALobject NSURLRBFile(NSURL *url)
{
    if (url == nil)
        return nullptr;
    FSRef item;
    if (CFURLGetFSRef((CFURLRef)url, &item))
        return NewFolderItemOfExistingItem(item);
    return NewFolderItemOfMissingItem((CFURLRef)url);
}
