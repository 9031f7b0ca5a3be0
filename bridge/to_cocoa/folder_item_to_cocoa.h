// Host folder items become file URLs.
#pragma once

#include "frame/host_types.h"

@class NSURL;

/// Whether the object counts as a folder item: any object with the folder item's own method does.
bool IsFolderItem(REALobject object);

/// An autoreleased file URL of a folder item, even if the item does not exist yet; nil if there is none.
NSURL *NewFolderItemURL(REALobject item);
