// Instances of the family's wrapper classes on their way to Cocoa, with every class of the family there.
#include "bridge/to_cocoa/wrapper_classes.h"

#include <iterator>

#include "bench/floors.h"
#include "bench/host_functions.h"
#include "bench/inputs.h"
#include "bench/work.h"
#include "bridge/to_cocoa/variant_to_object.h"
#include "family/wrapper_classes.h"
#include "tests/bridge/to_cocoa/remembered_classes.h"

using qzlhost::Value;

namespace {

constexpr const char *kValueClasses[] = {"NSSizeQZL",        "NSRectQZL",      "NSRangeQZL",
                                         "NSPointQZL",       "QTKitTimeQZL",   "QTKitTimeRangeQZL",
                                         "CMTimeMappingQZL", "CMTimeRangeQZL", "CMTimeQZL"};
constexpr char kUnknownClass[] = "QZLBenchOther";
constexpr size_t kRoomForAValue = 32;

REALclassRef gRemembered[std::size(kRememberedNames)];

template <size_t Count>
bool IsOfAny(REALobject object, const char *const (&names)[Count])
{
    for (const char *name : names)
        if (gHost.objectIsA(object, gHost.objectType(name)))
            return true;
    return false;
}

bool IsRemembered(REALobject object)
{
    for (const REALclassRef classRef : gRemembered)
        if (gHost.objectIsA(object, classRef))
            return true;
    return false;
}

id FloorWrapperToCocoa(REALobject object)
{
    if (!FloorIsOtherObject(object))
        return nil;
    if (IsRemembered(object) || IsOfAny(object, kWrapperClassesBeforeValues))
        return FloorHandle(object);
    if (IsOfAny(object, kValueClasses))
        return nil;
    return IsOfAny(object, kWrapperClassesAfterValues) ? FloorHandle(object) : nil;
}

Sides ToCocoa(const char *className)
{
    for (size_t i = 0; i < std::size(kRememberedNames); ++i)
        gRemembered[i] = gHost.objectType(kRememberedNames[i]);
    const Value instance = qzlhost::Host::Current().NewWithoutConstructor(className);
    if (className != kUnknownClass)
        FloorHandle(ObjectOf(instance)) = [[NSObject alloc] init];
    return MakeSides([instance] { return GetVariantAsNSObject(ObjectOf(instance)); },
                     [instance] { return FloorWrapperToCocoa(ObjectOf(instance)); });
}

} // namespace

void AddWrapperWorks(std::vector<Work> &works)
{
    qzlhost::Host &host = qzlhost::Host::Current();
    // All of them must exist when the library first looks at an object.
    for (const char *name : kRememberedNames)
        DefineWrapperClass(host, name);
    for (const char *name : kWrapperClassesBeforeValues)
        DefineWrapperClass(host, name);
    for (const char *name : kValueClasses)
        DefineWrapperClass(host, name, kRoomForAValue);
    for (const char *name : kWrapperClassesAfterValues)
        DefineWrapperClass(host, name);
    DefineWrapperClass(host, kUnknownClass);

    const auto add = [&works](const char *name) {
        works.push_back({std::string("wrappers/to_cocoa/") + name, [name] { return ToCocoa(name); }});
    };
    for (const char *name : kRememberedNames)
        add(name);
    for (const char *name : kWrapperClassesAfterValues)
        add(name);
    add(kUnknownClass);
}
