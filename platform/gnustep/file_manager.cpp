// The calls of the File Manager.
#include <algorithm>
#include <fcntl.h>

#include "platform/gnustep/codecs.h"
#include "platform/gnustep/file_references.h"
#include "platform/gnustep/text_buffers.h"

using namespace cocoaport;

namespace {

/// The folder that the item is in; empty for the root.
std::string ParentPath(const std::string &path)
{
    const size_t slash = path.rfind('/');
    return path == "/" ? "" : path.substr(0, std::max<size_t>(slash, 1));
}

/// Whether the item is the root folder of a volume: the root, or a folder on which one is mounted.
bool IsVolumeRoot(const FileItem &item)
{
    if (!item.IsDirectory())
        return false;
    struct statx status;
    if (statx(AT_FDCWD, item.path.c_str(), AT_SYMLINK_NOFOLLOW, 0, &status) == 0 &&
        (status.stx_attributes_mask & STATX_ATTR_MOUNT_ROOT) != 0)
        return item.path == "/" || (status.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0;
    struct stat parent;
    const std::string parentPath = ParentPath(item.path);
    return parentPath.empty() ||
           (lstat(parentPath.c_str(), &parent) == 0 && parent.st_dev != item.status.st_dev);
}

UInt32 NodeID(const FileItem &item)
{
    if (IsVolumeRoot(item))
        return fsRtDirID;
    constexpr UInt32 kNotReserved = 0x80000000;
    const UInt32 number = static_cast<UInt32>(item.status.st_ino);
    return number <= fsRtDirID ? number | kNotReserved : number;
}

/// The item's own name; false when it is not UTF-8.
bool ReadName(const FileItem &item, HFSUniStr255 &name)
{
    const size_t slash = item.path.rfind('/');
    const std::string leaf = item.path == "/" ? item.path : item.path.substr(slash + 1);
    UnitBuffer units;
    if (!FindCodec(kCFStringEncodingUTF8)
             ->Decode(reinterpret_cast<const UInt8 *>(leaf.data()), leaf.size(), units))
        return false;
    const size_t length = std::min(units.Size(), std::size(name.unicode));
    name.length = static_cast<UInt16>(length);
    std::copy_n(units.Data(), length, name.unicode);
    return true;
}

FSRef ParentReference(const FileItem &item)
{
    const std::string parent = ParentPath(item.path);
    return parent.empty() ? FSRef{} : ReferenceOfPath(parent);
}

} // namespace

OSErr FSGetCatalogInfo(const FSRef *ref, FSCatalogInfoBitmap whichInfo, FSCatalogInfo *catalogInfo,
                       HFSUniStr255 *outName, FSSpecPtr fsSpec, FSRef *parentRef)
{
    const bool isSupported = (whichInfo & ~FSCatalogInfoBitmap{kFSCatInfoNodeID}) == 0 && fsSpec == nullptr;
    const FileItem item = FindItem(ref);
    if (item.error != noErr || !isSupported)
        return item.error != noErr ? item.error : OSErr{paramErr};

    HFSUniStr255 name;
    if (outName != nullptr && !ReadName(item, name))
        return ioErr;
    if (outName != nullptr)
        *outName = name;
    if (catalogInfo != nullptr && whichInfo == kFSCatInfoNodeID)
        catalogInfo->nodeID = NodeID(item);
    if (parentRef != nullptr)
        *parentRef = ParentReference(item);
    return noErr;
}

OSStatus FSRefMakePath(const FSRef *ref, UInt8 *path, UInt32 pathBufferSize)
{
    const FileItem item = FindItem(ref);
    if (item.error != noErr)
        return item.error;
    if (path == nullptr)
        return paramErr;
    if (item.path.size() >= pathBufferSize)
        return pathTooLongErr;
    std::copy_n(item.path.c_str(), item.path.size() + 1, path);
    return noErr;
}
