/// The calls of the File Manager.
#ifndef QZL_CORESERVICES_H
#define QZL_CORESERVICES_H

#include <CoreFoundation/CoreFoundation.h>

enum { ioErr = -36, fnfErr = -43, paramErr = -50, pathTooLongErr = -2110 };

enum { fsRtParID = 1, fsRtDirID = 2 };

enum {
    kFSCatInfoNone = 0x00000000,
    kFSCatInfoTextEncoding = 0x00000001,
    kFSCatInfoNodeFlags = 0x00000002,
    kFSCatInfoVolume = 0x00000004,
    kFSCatInfoParentDirID = 0x00000008,
    kFSCatInfoNodeID = 0x00000010,
    kFSCatInfoCreateDate = 0x00000020
};

CF_EXTERN_C_BEGIN

/// Tells what was asked for of an existing item; each output may be null.
///
/// On Linux there is of the catalogue information only the node ID: 2 for the root folder of a volume,
/// never 1 or 2 for another item. The name is the file system's own ("/" for the root), the parent
/// of the root a reference of 80 zero bytes.
/// fnfErr for an item that is gone, paramErr for a reference that refers to nothing, for other
/// catalogue information and for an FSSpec, ioErr for anything else. Outputs are written only with
/// noErr.
CF_EXPORT OSErr FSGetCatalogInfo(const FSRef *ref, FSCatalogInfoBitmap whichInfo, FSCatalogInfo *catalogInfo,
                                 HFSUniStr255 *outName, FSSpecPtr fsSpec, FSRef *parentRef);

/// Writes the item's path in UTF-8 with a NUL. pathTooLongErr when the buffer is too small, the
/// other errors as above.
CF_EXPORT OSStatus FSRefMakePath(const FSRef *ref, UInt8 *path, UInt32 pathBufferSize);

CF_EXTERN_C_END

#endif
