// Arrays, each way.
#include "bench/floors.h"
#include "bench/inputs.h"
#include "bench/sized_works.h"
#include "bench/work.h"
#include "bridge/to_cocoa/variant_to_object.h"
#include "bridge/to_host/object_to_variant.h"

using qzlhost::Value;
namespace code = qzlhost::code;

namespace {

constexpr int64_t kShortest = 10;
constexpr int64_t kLongest = 1'000'000;
constexpr double kGrowthTarget = 1.20;
constexpr int64_t kFirstNumber = 123'456'789'012;

std::string TextAt(int64_t index)
{
    return "element " + std::to_string(index);
}

/// Host arrays with one kind of element, and what converts them.
struct HostKind {
    const char *name;
    int64_t elementCode;
    Value (*element)(int64_t index);
    id (*floor)(REALobject array);
};

constexpr HostKind kHostKinds[] = {
    {"int64", code::Int64, [](int64_t index) { return Value(kFirstNumber + index); }, FloorInt64Array},
    {"strings", code::String, [](int64_t index) { return Value(TextAt(index)); }, FloorStringArray},
    {"variants", code::Object, [](int64_t index) { return Value(kFirstNumber + index); },
     [](REALobject array) { return FloorObjectArray(array, FloorLongLong); }},
};

/// Cocoa arrays with one kind of element, and what converts them.
struct CocoaKind {
    const char *name;
    id (*element)(int64_t index);
    REALobject (*floor)(id array);
};

constexpr CocoaKind kCocoaKinds[] = {
    {"numbers", [](int64_t index) -> id { return [NSNumber numberWithLongLong:kFirstNumber + index]; },
     [](id array) { return FloorHostArray(array, FloorVariantOfLong); }},
    {"strings", [](int64_t index) -> id { return CocoaString(TextAt(index)); },
     [](id array) { return FloorHostArray(array, FloorVariantOfString); }},
};

Value HostArray(const HostKind &kind, int64_t length)
{
    std::vector<Value> elements;
    for (int64_t i = 0; i < length; ++i)
        elements.push_back(kind.element(i));
    return qzlhost::Host::Current().NewArray(kind.elementCode, elements);
}

Kept CocoaArray(const CocoaKind &kind, int64_t length)
{
    const qzlhost::AutoreleasePool pool;
    NSMutableArray *const array = [NSMutableArray array];
    for (int64_t i = 0; i < length; ++i)
        [array addObject:kind.element(i)];
    return Kept(array);
}

Sides ToCocoa(const HostKind &kind, int64_t length)
{
    const Value array = HostArray(kind, length);
    return MakeSides([array] { return GetVariantAsNSObject(ObjectOf(array)); },
                     [array, floor = kind.floor] { return floor(ObjectOf(array)); });
}

Sides ToHost(const CocoaKind &kind, int64_t length)
{
    const Kept array = CocoaArray(kind, length);
    return MakeSides([array] { return NewVariantFromNSObject(array.Get()); },
                     [array, floor = kind.floor] { return floor(array.Get()); });
}

} // namespace

void AddArrayWorks(std::vector<Work> &works)
{
    for (const HostKind &kind : kHostKinds)
        AddSizedWorks(works, {std::string("arrays/to_cocoa/") + kind.name,
                              [&kind](int64_t length) { return ToCocoa(kind, length); }, kShortest, kLongest,
                              kGrowthTarget});
    for (const CocoaKind &kind : kCocoaKinds)
        AddSizedWorks(works, {std::string("arrays/to_host/") + kind.name,
                              [&kind](int64_t length) { return ToHost(kind, length); }, kShortest, kLongest,
                              kGrowthTarget});
}
