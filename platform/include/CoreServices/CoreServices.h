// The calls of the File Manager.
#ifndef QZL_CORESERVICES_H
#define QZL_CORESERVICES_H

#include <CoreFoundation/CoreFoundation.h>

enum { ioErr = -36, fnfErr = -43, paramErr = -50, pathTooLongErr = -2110 };

enum { fsRtDirID = 2 };

enum { kFSCatInfoNone = 0x00000000, kFSCatInfoNodeID = 0x00000010, kFSCatInfoCreateDate = 0x00000020 };

CF_EXTERN_C_BEGIN

/// Writes what was asked for about an existing item; each output may be null.
///
/// On Linux the only catalogue information is the node ID: 2 for the root folder of a volume, never 1 or 2
/// for another item. The name is the file system's own ("/" for the root); the parent of the root is a
/// reference of 80 zero bytes. Returns fnfErr for an item that is gone, paramErr for a reference that refers
/// to nothing, for other catalogue information and for an FSSpec, ioErr for anything else. Writes the outputs
/// only with noErr.
CF_EXPORT OSErr FSGetCatalogInfo(const FSRef *ref, FSCatalogInfoBitmap whichInfo, FSCatalogInfo *catalogInfo,
                                 HFSUniStr255 *outName, FSSpecPtr fsSpec, FSRef *parentRef);

/// Writes the item's path in UTF-8 with a NUL. Returns pathTooLongErr if the buffer is too small, the other
/// errors as above.
CF_EXPORT OSStatus FSRefMakePath(const FSRef *ref, UInt8 *path, UInt32 pathBufferSize);

CF_EXTERN_C_END

#endif
