// Memory blocks, each way.
#include <cstring>

#include "bench/host_functions.h"
#include "bench/inputs.h"
#include "bench/work.h"
#include "bridge/to_cocoa/variant_to_object.h"
#include "bridge/to_host/object_to_variant.h"

using qzlhost::Value;

namespace {

id FloorToCocoa(REALobject variant)
{
    if (gHost.varType(variant) != qzlhost::code::Object ||
        !gHost.objectIsA(variant, gHost.objectType("MemoryBlock")))
        return nil;
    gHost.lockObject(variant);
    int64_t size = 0;
    gHost.getInteger(variant, "Size", &size);
    const void *const bytes = gHost.memoryBlockPointer(reinterpret_cast<REALmemoryBlock>(variant));
    NSData *const data = [NSData dataWithBytes:bytes length:static_cast<NSUInteger>(size)];
    gHost.unlockObject(variant);
    return data;
}

REALobject FloorToHost(NSData *data)
{
    const void *const bytes = [data bytes];
    const NSUInteger length = [data length];
    const REALmemoryBlock block = gHost.newMemoryBlock(static_cast<int32_t>(length));
    std::memcpy(gHost.memoryBlockPointer(block), bytes, length);
    return AsInstance(block);
}

Sides ToCocoa(size_t size)
{
    const Value block = qzlhost::Host::Current().NewMemoryBlock(std::string(size, 'x'));
    return MakeSides([block] { return GetVariantAsNSObject(ObjectOf(block)); },
                     [block] { return FloorToCocoa(ObjectOf(block)); });
}

Sides ToHost(size_t size)
{
    const qzlhost::AutoreleasePool pool;
    const Kept data([NSMutableData dataWithLength:size]);
    return MakeSides([data] { return NewVariantFromNSObject(data.Get()); },
                     [data] { return FloorToHost(data.Get()); });
}

} // namespace

void AddBlockWorks(std::vector<Work> &works)
{
    constexpr struct {
        const char *name;
        size_t size;
    } kSizes[] = {{"1_KiB", 1 << 10}, {"100_MiB", 100 << 20}};
    for (const auto &row : kSizes) {
        const std::string name = row.name;
        works.push_back({"blocks/to_cocoa/" + name, [size = row.size] { return ToCocoa(size); }});
        works.push_back({"blocks/to_host/" + name, [size = row.size] { return ToHost(size); }});
    }
}
