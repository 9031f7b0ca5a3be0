// The host's FolderItem: a path.
#pragma once

#include <string>

#include "host/values/object.h"

namespace qzlhost {

struct FolderItem : Payload {
    FolderItem() = default;
    explicit FolderItem(std::string utf8) : path(std::move(utf8)) {}

    /// UTF-8.
    const std::string path;
};

} // namespace qzlhost
