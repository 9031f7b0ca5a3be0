// Turns a host folder item into a file URL.
#include "bridge/to_cocoa/folder_item_to_cocoa.h"

#include <ApplicationServices/ApplicationServices.h>
#import <Foundation/Foundation.h>

#include "bridge/file_names.h"
#include "frame/cf_ref.h"
#include "frame/host_entry_points.h"

namespace {

/// A leaf name in decomposed form, with one retain for the caller; null if it cannot be made.
__attribute__((cf_returns_retained)) CFStringRef CreateLeafName(const HFSUniStr255 &name)
{
    const CFRef<CFStringRef> leaf(
        CFStringCreateWithCharacters(kCFAllocatorDefault, name.unicode, name.length));
    return leaf ? CreateDecomposedName(leaf.Get()) : nullptr;
}

/// The URL of an existing item, with one retain for the caller; null for any other.
__attribute__((cf_returns_retained)) CFURLRef CreateURLOfExistingItem(REALobject item)
{
    FSRef reference = {};
    if (!REALFSRefFromFolderItem(item, &reference, nullptr))
        return nullptr;
    return CFURLCreateFromFSRef(kCFAllocatorDefault, &reference);
}

/// The URL of an item through its parent and its name, with one retain for the caller, or null.
__attribute__((cf_returns_retained)) CFURLRef CreateURLThroughParent(REALobject item)
{
    FSRef reference = {};
    HFSUniStr255 name = {};
    if (!REALFSRefFromFolderItem(item, &reference, &name))
        return nullptr;
    const CFRef<CFURLRef> parent(CFURLCreateFromFSRef(kCFAllocatorDefault, &reference));
    if (!parent || name.length == 0)
        return nullptr;
    const CFRef<CFStringRef> leaf(CreateLeafName(name));
    if (!leaf)
        return nullptr;
    return CFURLCreateCopyAppendingPathComponent(kCFAllocatorDefault, parent.Get(), leaf.Get(), false);
}

} // namespace

bool IsFolderItem(REALobject object)
{
    return REALLoadObjectMethod(object, "TrueItem(Index as integer) as Folderitem") != nullptr;
}

NSURL *NewFolderItemURL(REALobject item)
{
    CFURLRef url = CreateURLOfExistingItem(item);
    if (url == nullptr)
        url = CreateURLThroughParent(item);
    return [(NSURL *)url autorelease];
}
