// The type IDs of Core Foundation and Core Text, their names, and the type of an object.
#include <CoreText/CoreText.h>
#include <objc/runtime.h>

#include <iterator>

#include "platform/gnustep/objects.h"

namespace {

enum TypeID : CFTypeID {
    kNothing,
    kObject,
    kArray,
    kAttributedString,
    kBag,
    kBoolean,
    kBundle,
    kCharacterSet,
    kData,
    kDate,
    kDictionary,
    kError,
    kNumber,
    kSet,
    kString,
    kTimeZone,
    kURL,
    kUUID,
    kFont,
    kFontCollection,
    kFrame,
    kFramesetter,
    kGlyphInfo,
    kLine,
    kParagraphStyle,
    kRun,
    kRunDelegate,
    kTypesetter,
    kTypeCount,
};

/// In the order of the numbers.
constexpr const char *kTypeNames[] = {
    "Not A Type",
    "CFType",
    "CFArray",
    "CFAttributedString",
    "CFBag",
    "CFBoolean",
    "CFBundle",
    "CFCharacterSet",
    "CFData",
    "CFDate",
    "CFDictionary",
    "CFError",
    "CFNumber",
    "CFSet",
    "CFString",
    "CFTimeZone",
    "CFURL",
    "CFUUID",
    "CTFont",
    "CTFontCollection",
    "CTFrame",
    "CTFramesetter",
    "CTGlyphInfo",
    "CTLine",
    "CTParagraphStyle",
    "CTRun",
    "CTRunDelegate",
    "CTTypesetter",
};
static_assert(std::size(kTypeNames) == kTypeCount);

struct ClassType {
    const char *className;
    TypeID type;
};

/// The first row whose class the object is an instance of decides, so a subclass precedes its superclass.
constexpr ClassType kClassTypes[] = {
    {"NSString", kString},
    {"NSDictionary", kDictionary},
    {"NSArray", kArray},
    {"NSNumber", kNumber},
    {"NSURL", kURL},
    {"NSData", kData},
    {"NSDate", kDate},
    {"NSCountedSet", kBag},
    {"NSSet", kSet},
    {"NSTimeZone", kTimeZone},
    {"NSError", kError},
    {"NSCharacterSet", kCharacterSet},
    {"NSBundle", kBundle},
    {"NSAttributedString", kAttributedString},
    {"NSUUID", kUUID},
    {"NSFont", kFont},
    {"NSFontCollection", kFontCollection},
    {"NSGlyphInfo", kGlyphInfo},
    {"NSParagraphStyle", kParagraphStyle},
};

} // namespace

@interface NSObject (CocoaportTypeID)
- (CFTypeID)_cfTypeID;
@end

CFTypeID CFGetTypeID(CFTypeRef object)
{
    const id cocoaObject = cocoaport::Object(object);
    if (cocoaObject == nil)
        return kNothing;
    if ([cocoaObject respondsToSelector:@selector(_cfTypeID)])
        return [cocoaObject _cfTypeID];
    if (object == kCFBooleanTrue || object == kCFBooleanFalse)
        return kBoolean;
    for (const ClassType &row : kClassTypes) {
        const Class listed = objc_getClass(row.className);
        if (listed != Nil && [cocoaObject isKindOfClass:listed])
            return row.type;
    }
    return kObject;
}

CFStringRef CFCopyTypeIDDescription(CFTypeID type)
{
    return type < kTypeCount
               ? CFStringCreateWithCString(kCFAllocatorDefault, kTypeNames[type], kCFStringEncodingASCII)
               : nullptr;
}

// clang-format off
CFTypeID CFArrayGetTypeID() { return kArray; }
CFTypeID CFAttributedStringGetTypeID() { return kAttributedString; }
CFTypeID CFBagGetTypeID() { return kBag; }
CFTypeID CFBooleanGetTypeID() { return kBoolean; }
CFTypeID CFBundleGetTypeID() { return kBundle; }
CFTypeID CFCharacterSetGetTypeID() { return kCharacterSet; }
CFTypeID CFDataGetTypeID() { return kData; }
CFTypeID CFDateGetTypeID() { return kDate; }
CFTypeID CFDictionaryGetTypeID() { return kDictionary; }
CFTypeID CFErrorGetTypeID() { return kError; }
CFTypeID CFNumberGetTypeID() { return kNumber; }
CFTypeID CFSetGetTypeID() { return kSet; }
CFTypeID CFStringGetTypeID() { return kString; }
CFTypeID CFTimeZoneGetTypeID() { return kTimeZone; }
CFTypeID CFURLGetTypeID() { return kURL; }
CFTypeID CFUUIDGetTypeID() { return kUUID; }

CFTypeID CTFontGetTypeID() { return kFont; }
CFTypeID CTFontCollectionGetTypeID() { return kFontCollection; }
CFTypeID CTFrameGetTypeID() { return kFrame; }
CFTypeID CTFramesetterGetTypeID() { return kFramesetter; }
CFTypeID CTGlyphInfoGetTypeID() { return kGlyphInfo; }
CFTypeID CTLineGetTypeID() { return kLine; }
CFTypeID CTParagraphStyleGetTypeID() { return kParagraphStyle; }
CFTypeID CTRunGetTypeID() { return kRun; }
CFTypeID CTRunDelegateGetTypeID() { return kRunDelegate; }
CFTypeID CTTypesetterGetTypeID() { return kTypesetter; }
// clang-format on
