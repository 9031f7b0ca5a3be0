// The host classes that an object is compared with after MemoryBlock and Dictionary, in that order.
#pragma once

#include <iterator>
#include <string>
#include <vector>

#include "host/host.h"
#include "tests/bridge/to_cocoa/remembered_classes.h"

inline constexpr const char *kDelegateNames[] = {
    "WebUIDelegateQZL",
    "WebResourceLoadDelegateQZL",
    "WebFrameLoadDelegateQZL",
    "WebDownloadDelegateQZL",
    "DRBurnQZL",
    "PDFAnnotationQZL",
    "PDFActionQZL",
};

inline constexpr const char *kValueNames[] = {
    "NSSizeQZL",         "NSRectQZL",        "NSRangeQZL",     "NSPointQZL", "QTKitTimeQZL",
    "QTKitTimeRangeQZL", "CMTimeMappingQZL", "CMTimeRangeQZL", "CMTimeQZL",
};

inline constexpr const char *kOtherNames[] = {
    "WebPolicyDelegateQZL", "CFObjectQZL", "CGColorQZL",   "CGFontQZL",  "CGImageQZL",
    "CGColorSpaceQZL",      "CGPathQZL",   "CGContextQZL", "CGLayerQZL",
};

template <size_t Count>
void Append(std::vector<std::string> &list, const char *const (&names)[Count])
{
    list.insert(list.end(), std::begin(names), std::end(names));
}

/// These, then the remembered ones.
inline std::vector<std::string> AndRemembered(std::vector<std::string> first)
{
    Append(first, kRememberedNames);
    return first;
}

/// These, then those that are looked up on every call.
inline std::vector<std::string> AndOthers(std::vector<std::string> first)
{
    Append(first, kDelegateNames);
    Append(first, kValueNames);
    Append(first, kOtherNames);
    return first;
}

/// The classes that the host was asked for, in order.
inline std::vector<std::string> ClassesAskedFor(const qzlhost::Host &host)
{
    std::vector<std::string> names;
    for (const qzlhost::TraceEntry &entry : host.Trace())
        if (entry.function == "pluginObjectType")
            names.push_back(entry.arguments.substr(1, entry.arguments.size() - 2));
    return names;
}
