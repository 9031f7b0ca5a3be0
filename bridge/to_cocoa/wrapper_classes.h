// The host classes whose instances hold a Cocoa object as their handle, in the order in which they are tried.
#pragma once

#include "frame/host_types.h"

/// Whether the object is an instance of a remembered class. These are looked up on the first call only: a
/// class that was not loaded then stays unknown for the life of the process.
bool IsOfRememberedWrapperClass(REALobject object);

/// Whether the object is an instance of the host class of that name, which is looked up on every call.
bool IsOfHostClass(REALobject object, const char *className);

/// Host classes of wrappers, tried after the remembered ones and before the value classes.
inline constexpr const char *kWrapperClassesBeforeValues[] = {
    "WebUIDelegateQZL",
    "WebResourceLoadDelegateQZL",
    "WebFrameLoadDelegateQZL",
    "WebDownloadDelegateQZL",
    "DRBurnQZL",
    "PDFAnnotationQZL",
    "PDFActionQZL",
};

/// Host classes of wrappers, tried after the value classes. Most hold a Core Foundation object.
inline constexpr const char *kWrapperClassesAfterValues[] = {
    "WebPolicyDelegateQZL", "CFObjectQZL", "CGColorQZL",   "CGFontQZL",  "CGImageQZL",
    "CGColorSpaceQZL",      "CGPathQZL",   "CGContextQZL", "CGLayerQZL",
};
