// Folder items: the members of their class, and entry points.
#include "host/values/folder_item.h"

#include <algorithm>
#include <filesystem>

#include "host/calls/cocoa.h"
#include "host/interface/builtin_classes.h"
#include "host/interface/entry_functions.h"
#include "host/interface/exceptions.h"
#include "host/interface/thunk.h"
#include "host/values/encodings.h"

namespace qzlhost {

namespace {

namespace fs = std::filesystem;

Instance *NewFolderItem(const std::string &path)
{
    return NewBuiltIn("FolderItem", std::make_unique<FolderItem>(path));
}

/// The items of a folder, by name.
std::vector<fs::path> ItemsOf(const fs::path &folder)
{
    std::vector<fs::path> items;
    std::error_code error;
    for (fs::directory_iterator each(folder, error), end; !error && each != end; each.increment(error))
        items.push_back(each->path());
    std::sort(items.begin(), items.end());
    return items;
}

Instance *TrueItem(Of<FolderItem> self, int64_t index)
{
    const std::vector<fs::path> items = ItemsOf(self->path);
    if (index < 1 || static_cast<uint64_t>(index) > items.size()) {
        RaiseHostException("OutOfBoundsException", "The folder has no item at this index.");
        return nullptr;
    }
    return NewFolderItem(items[static_cast<size_t>(index - 1)].string());
}

String *NativePath(Of<FolderItem> self, int64_t)
{
    return NewString(self->path, encoding::UTF8);
}

String *Name(Of<FolderItem> self, int64_t)
{
    return NewString(fs::path(self->path).filename().string(), encoding::UTF8);
}

bool Exists(Of<FolderItem> self, int64_t)
{
    std::error_code error;
    return fs::exists(self->path, error);
}

Instance *GetTrueFolderItem(String *path, int64_t)
{
    return path ? NewFolderItem(Utf8Of(path)) : nullptr;
}

fs::path WithoutSlashAtEnd(const fs::path &path)
{
    return path.has_filename() || !path.has_relative_path() ? path : path.parent_path();
}

} // namespace

BuiltInClass FolderItemClass()
{
    return {"FolderItem",
            nullptr,
            &MakePayloadOf<FolderItem>,
            {
                {"NativePath", "String", Native<&NativePath>("FolderItem.NativePath")},
                {"Name", "String", Native<&Name>("FolderItem.Name")},
                {"Exists", "Boolean", Native<&Exists>("FolderItem.Exists")},
            },
            {
                {"TrueItem(Index As Integer) As FolderItem", Native<&TrueItem>("FolderItem.TrueItem")},
            }};
}

BuiltInMethod TrueFolderItemMethod()
{
    return {"GetTrueFolderItem(path As String, pathMode As Integer) As FolderItem",
            Native<&GetTrueFolderItem>("GetTrueFolderItem")};
}

bool FSRefFromFolderItem(Of<FolderItem> item, NotNull<FSRef> out, HFSUniStr255 *name)
{
    const CocoaScope cocoa;
    const fs::path path = WithoutSlashAtEnd(item->path);
    if (!name)
        return FSRefOfPath(path.string(), out.pointer);
    const std::u16string leaf = FromUtf8(path.filename().string());
    if (leaf.size() > std::size(name->unicode))
        return false;
    name->length = static_cast<uint16_t>(leaf.size());
    std::copy(leaf.begin(), leaf.end(), name->unicode);
    return FSRefOfPath(path.parent_path().string(), out.pointer);
}

Instance *FolderItemFromParentFSRef(NotNull<const FSRef> parent, NotNull<const HFSUniStr255> name)
{
    const CocoaScope cocoa;
    const std::optional<std::string> folder = PathOfFSRef(parent.pointer);
    if (!folder || name->length > std::size(name->unicode))
        return nullptr;
    const std::u16string leaf(name->unicode, name->unicode + name->length);
    return NewFolderItem((fs::path(*folder) / ToUtf8(leaf)).string());
}

} // namespace qzlhost
