// Numbers, booleans and a short string as variants, each way.
#include "bench/floors.h"
#include "bench/inputs.h"
#include "bench/work.h"
#include "bridge/to_cocoa/variant_to_object.h"
#include "bridge/to_host/object_to_variant.h"

using qzlhost::Value;
namespace code = qzlhost::code;

namespace {

constexpr double kTarget = 1.15;
constexpr int kInteger = 123'456'789;
// Too large for a smaller type, as which Cocoa would store them.
constexpr int64_t kLong = 123'456'789'012;
constexpr uint64_t kUnsigned = 0x8000'0000'0000'0005;
constexpr double kNumber = 2.5;

struct ToCocoaRow {
    const char *name;
    Value (*make)();
    id (*floor)(REALobject variant);
};

constexpr ToCocoaRow kToCocoa[] = {
    {"integer", [] { return Value::OfCode(code::Int32, Value(kInteger)); }, FloorLong},
    {"int64", [] { return Value(kLong); }, FloorLongLong},
    {"single", [] { return Value(static_cast<float>(kNumber)); }, FloorSingle},
    {"double", [] { return Value(kNumber); }, FloorDouble},
    {"boolean", [] { return Value(true); }, FloorBoolean},
    {"string", [] { return Value("twenty letters, about"); }, FloorString},
};

struct ToHostRow {
    const char *name;
    id (*make)();
    REALobject (*floor)(id object);
};

constexpr ToHostRow kToHost[] = {
    {"int", []() -> id { return [NSNumber numberWithInt:kInteger]; }, FloorVariantOfInt},
    {"unsigned_long", []() -> id { return [NSNumber numberWithUnsignedLongLong:kUnsigned]; },
     FloorVariantOfUnsignedLong},
    {"long", []() -> id { return [NSNumber numberWithLongLong:kLong]; }, FloorVariantOfLong},
    {"float", []() -> id { return [NSNumber numberWithFloat:static_cast<float>(kNumber)]; },
     FloorVariantOfFloat},
    {"double", []() -> id { return [NSNumber numberWithDouble:kNumber]; }, FloorVariantOfDouble},
    {"boolean", []() -> id { return [NSNumber numberWithBool:YES]; }, FloorVariantOfTrue},
    {"string", []() -> id { return CocoaString("twenty letters, about"); }, FloorVariantOfString},
};

Sides ToCocoa(const ToCocoaRow &row)
{
    const Value value = row.make().Boxed();
    return MakeSides([value] { return GetVariantAsNSObject(ObjectOf(value)); },
                     [value, floor = row.floor] { return floor(ObjectOf(value)); });
}

Sides ToHost(const ToHostRow &row)
{
    const Kept object(row.make());
    return MakeSides([object] { return NewVariantFromNSObject(object.Get()); },
                     [object, floor = row.floor] { return floor(object.Get()); });
}

} // namespace

void AddScalarWorks(std::vector<Work> &works)
{
    for (const ToCocoaRow &row : kToCocoa)
        works.push_back(
            {std::string("scalars/to_cocoa/") + row.name, [&row] { return ToCocoa(row); }, kTarget});
    for (const ToHostRow &row : kToHost)
        works.push_back(
            {std::string("scalars/to_host/") + row.name, [&row] { return ToHost(row); }, kTarget});
}
