// Fuzzes everything that reads a Mach-O file before it is mapped.
#include <cstddef>
#include <cstdint>

#include "platform/macho/image_reader.h"
#include "platform/macho/unwind_info.h"

namespace {

void ReadFor(macho::Processor processor, macho::ImageKind kind, macho::Bytes file)
{
    try {
        const macho::Image image = macho::ParseImage(file, processor, kind);
        macho::ReadUnwindInfo(image);
        for (const macho::Export &one : image.exports)
            image.FindExport(one.name);
    } catch (const macho::LoadError &) {
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    for (const auto kind : {macho::ImageKind::Library, macho::ImageKind::Program}) {
        ReadFor(macho::Processor::X86_64, kind, macho::Bytes(data, size));
        ReadFor(macho::Processor::Arm64, kind, macho::Bytes(data, size));
    }
    return 0;
}
