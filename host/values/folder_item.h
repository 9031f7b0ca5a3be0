// The host's FolderItem: a path.
#pragma once

#include <string>

#include "host/calls/builtin.h"

namespace qzlhost {

struct FolderItem : Payload {
    FolderItem() = default;
    explicit FolderItem(std::string utf8) : path(std::move(utf8)) {}

    /// UTF-8.
    const std::string path;
};

/// New, with one reference.
Instance *NewFolderItemFor(const std::string &path);

BuiltInClass FolderItemClass();

/// The global methods that give folder items.
std::vector<BuiltInMethod> FolderItemMethods();

} // namespace qzlhost
