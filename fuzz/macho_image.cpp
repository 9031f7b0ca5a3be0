// Fuzzes everything that reads a Mach-O file before it is mapped.
#include <cstddef>
#include <cstdint>

#include "platform/macho/image_reader.h"
#include "platform/macho/unwind_info.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    try {
        const macho::Image image = macho::ParseImage(macho::Bytes(data, size));
        macho::ReadUnwindInfo(image);
        for (const macho::Export &one : image.exports)
            image.FindExport(one.name);
    } catch (const macho::LoadError &) {
    }
    return 0;
}
