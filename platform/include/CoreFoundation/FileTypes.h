// The File Manager's records, packed as the File Manager packs them.
#ifndef QZL_FILETYPES_H
#define QZL_FILETYPES_H

#include <CoreFoundation/CFBase.h>

#pragma pack(push, 2)

/// A name of at most 255 UTF-16 units.
typedef struct HFSUniStr255 {
    UInt16 length;
    UniChar unicode[255];
} HFSUniStr255;

/// A reference of an existing file-system item. One of zero bytes alone refers to nothing.
typedef struct FSRef {
    UInt8 hidden[80];
} FSRef;

typedef struct FSSpec {
    UInt8 hidden[70];
} FSSpec;
typedef FSSpec *FSSpecPtr;

typedef SInt16 FSVolumeRefNum;
typedef UInt32 FSCatalogInfoBitmap;

typedef struct UTCDateTime {
    UInt16 highSeconds;
    UInt32 lowSeconds;
    UInt16 fraction;
} UTCDateTime;

typedef struct FSPermissionInfo {
    UInt32 userID;
    UInt32 groupID;
    UInt8 reserved1;
    UInt8 mode;
    UInt8 userAccess;
    UInt8 reserved2;
    void *fileSec;
} FSPermissionInfo;

typedef struct FSCatalogInfo {
    UInt16 nodeFlags;
    FSVolumeRefNum volume;
    UInt32 parentDirID;
    UInt32 nodeID;
    UInt8 sharingFlags;
    UInt8 userPrivileges;
    UInt8 reserved1;
    UInt8 reserved2;
    UTCDateTime createDate;
    UTCDateTime contentModDate;
    UTCDateTime attributeModDate;
    UTCDateTime accessDate;
    UTCDateTime backupDate;
    FSPermissionInfo permissions;
    UInt8 finderInfo[16];
    UInt8 extFinderInfo[16];
    UInt64 dataLogicalSize;
    UInt64 dataPhysicalSize;
    UInt64 rsrcLogicalSize;
    UInt64 rsrcPhysicalSize;
    UInt32 valence;
    UInt32 textEncodingHint;
} FSCatalogInfo;

#pragma pack(pop)

static_assert(sizeof(HFSUniStr255) == 512, "HFSUniStr255");
static_assert(sizeof(FSRef) == 80, "FSRef");
static_assert(sizeof(FSSpec) == 70, "FSSpec");
static_assert(sizeof(UTCDateTime) == 8, "UTCDateTime");
static_assert(sizeof(FSPermissionInfo) == 20, "FSPermissionInfo");
static_assert(sizeof(FSCatalogInfo) == 148, "FSCatalogInfo");
static_assert(offsetof(FSCatalogInfo, volume) == 2, "volume");
static_assert(offsetof(FSCatalogInfo, parentDirID) == 4, "parentDirID");
static_assert(offsetof(FSCatalogInfo, nodeID) == 8, "nodeID");
static_assert(offsetof(FSCatalogInfo, sharingFlags) == 12, "sharingFlags");
static_assert(offsetof(FSCatalogInfo, createDate) == 16, "createDate");
static_assert(offsetof(FSCatalogInfo, backupDate) == 48, "backupDate");
static_assert(offsetof(FSCatalogInfo, permissions) == 56, "permissions");
static_assert(offsetof(FSCatalogInfo, finderInfo) == 76, "finderInfo");
static_assert(offsetof(FSCatalogInfo, extFinderInfo) == 92, "extFinderInfo");
static_assert(offsetof(FSCatalogInfo, dataLogicalSize) == 108, "dataLogicalSize");
static_assert(offsetof(FSCatalogInfo, valence) == 140, "valence");
static_assert(offsetof(FSCatalogInfo, textEncodingHint) == 144, "textEncodingHint");

#endif
