// Dictionaries of strings and numbers, each way.
#include "bench/floors.h"
#include "bench/inputs.h"
#include "bench/sized_works.h"
#include "bench/work.h"
#include "bridge/to_cocoa/dictionary_to_cocoa.h"
#include "bridge/to_host/dictionary_to_host.h"

using qzlhost::Value;

namespace {

constexpr int64_t kFewest = 1;
constexpr int64_t kMost = 100'000;
constexpr double kNoGrowthTarget = 0;
constexpr int64_t kFirstNumber = 123'456'789'012;

std::string KeyAt(int64_t index)
{
    return "key " + std::to_string(index);
}

Sides ToCocoa(int64_t count)
{
    qzlhost::Host &host = qzlhost::Host::Current();
    const Value dictionary = host.NewDictionary();
    for (int64_t i = 0; i < count; ++i)
        host.DictionarySet(dictionary, KeyAt(i), kFirstNumber + i);
    return MakeSides(
        [dictionary]() -> id {
            return NewNSDictionary(reinterpret_cast<REALdictionary>(ObjectOf(dictionary)));
        },
        [dictionary]() -> id { return FloorDictionary(ObjectOf(dictionary), FloorString, FloorLongLong); });
}

Sides ToHost(int64_t count)
{
    const qzlhost::AutoreleasePool pool;
    NSMutableDictionary *const entries = [NSMutableDictionary dictionary];
    for (int64_t i = 0; i < count; ++i)
        [entries setObject:[NSNumber numberWithLongLong:kFirstNumber + i] forKey:CocoaString(KeyAt(i))];
    const Kept dictionary(entries);
    return MakeSides([dictionary] { return AsInstance(NSDictionaryRB(dictionary.Get())); },
                     [dictionary] {
                         return FloorHostDictionary(dictionary.Get(), FloorVariantOfString,
                                                    FloorVariantOfLong);
                     });
}

} // namespace

void AddDictionaryWorks(std::vector<Work> &works)
{
    AddSizedWorks(works, {"dictionaries/to_cocoa", ToCocoa, kFewest, kMost, kNoGrowthTarget});
    AddSizedWorks(works, {"dictionaries/to_host", ToHost, kFewest, kMost, kNoGrowthTarget});
}
