// Looks up parts of an image.
#include "platform/macho/image.h"

#include <algorithm>

namespace macho {

const Section *Image::FindSection(std::string_view segment, std::string_view name) const
{
    const auto found = std::find_if(sections.begin(), sections.end(), [&](const Section &section) {
        return section.segment == segment && section.name == name;
    });
    return found == sections.end() ? nullptr : &*found;
}

const Section *Image::FindDataSection(std::string_view name) const
{
    const Section *const section = FindSection("__DATA", name);
    return section != nullptr ? section : FindSection("__DATA_CONST", name);
}

const Export *Image::FindExport(std::string_view name) const
{
    const auto found =
        std::find_if(exports.begin(), exports.end(), [&](const Export &one) { return one.name == name; });
    return found == exports.end() ? nullptr : &*found;
}

const Segment &Image::SegmentAt(uint64_t address, uint64_t size, std::string_view what) const
{
    for (const Segment &segment : segments) {
        if (segment.IsInMemory() && address >= segment.address && address - segment.address <= segment.size &&
            size <= segment.size - (address - segment.address))
            return segment;
    }
    throw LoadError(std::string(what) + ": " + Hex(size) + " bytes at address " + Hex(address) +
                    " are in no segment");
}

Bytes Image::ContentAt(uint64_t address, uint64_t size, std::string_view what) const
{
    const Segment &segment = SegmentAt(address, size, what);
    return segment.content.Slice(address - segment.address, size, what);
}

bool Image::HasLibrary(int ordinal) const
{
    return ordinal >= kBindWeak && ordinal <= static_cast<int>(dylibs.size());
}

} // namespace macho
