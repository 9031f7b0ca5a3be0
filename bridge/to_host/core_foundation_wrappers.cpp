// Makes host instances that wrap Core Foundation objects.
#include "bridge/to_host/core_foundation_wrappers.h"

#include <ApplicationServices/ApplicationServices.h>

#include "bridge/instance_data.h"
#include "frame/host_references.h"

namespace {

constexpr char kAnyTypeClassName[] = "CFObjectQZL";

struct TypeRow {
    CFTypeID (*typeID)();
    const char *hostClassName;
};

constexpr TypeRow kTypes[] = {
    {CFURLGetTypeID, "CFURLQZL"},
    {CFDictionaryGetTypeID, "CFDictionaryQZL"},
    {CFStringGetTypeID, "CFStringQZL"},
    {CFNumberGetTypeID, "CFNumberQZL"},
    {CFArrayGetTypeID, "CFArrayQZL"},
    {CFBooleanGetTypeID, "CFBooleanQZL"},
    {CFDataGetTypeID, "CFBinaryDataQZL"}, // not named after the type
    {CFCharacterSetGetTypeID, "CFCharacterSetQZL"},
    {CFBundleGetTypeID, "CFBundleQZL"},
    {CFSetGetTypeID, "CFSetQZL"},
    {CFBagGetTypeID, "CFBagQZL"},
    {CFUUIDGetTypeID, "CFUUIDQZL"},
    {CFTimeZoneGetTypeID, "CFTimeZoneQZL"},
    {CFDateGetTypeID, "CFDateQZL"},
    {CFAttributedStringGetTypeID, "CFAttributedStringQZL"},
    {CFErrorGetTypeID, "CFErrorQZL"},
    {CTFontGetTypeID, "CTFontQZL"},
    {CTFontCollectionGetTypeID, "CTFontCollectionQZL"},
    {CTFrameGetTypeID, "CTFrameQZL"},
    {CTFramesetterGetTypeID, "CTFramesetterQZL"},
    {CTGlyphInfoGetTypeID, "CTGlyphInfoQZL"},
    {CTLineGetTypeID, "CTLineQZL"},
    {CTParagraphStyleGetTypeID, "CTParagraphStyleQZL"},
    {CTRunGetTypeID, "CTRunQZL"},
    {CTTypesetterGetTypeID, "CTTypesetterQZL"},
    {CTRunDelegateGetTypeID, "CTRunDelegateQZL"},
};

} // namespace

REALobject NewCFWrapper(CFTypeRef object, const char *hostClassName)
{
    const REALobject named = REALnewInstance(hostClassName);
    HostRef<REALobject> instance(named != nullptr ? named : REALnewInstance(kAnyTypeClassName));
    if (!instance)
        return nullptr;
    CFWrapperData *const data = InstanceData<CFWrapperData>(instance.Get());
    if (data->signature != kCFWrapperSignature) {
        instance.Release(); // left to the host
        return nullptr;
    }
    data->signature = kCFWrapperSignature;
    data->handle = CFRetain(object);
    return instance.Release();
}

const char *CFWrapperClassName(CFTypeRef object)
{
    const CFTypeID typeID = CFGetTypeID(object);
    for (const TypeRow &row : kTypes)
        if (row.typeID() == typeID)
            return row.hostClassName;
    return kAnyTypeClassName;
}
