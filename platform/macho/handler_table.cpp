// Reads the table of a function's handlers.
#include "platform/macho/handler_table.h"

#include <cstdlib>
#include <cstring>
#include <optional>

namespace macho {

namespace {

// How a value is written: its width in the lower four bits, what it counts from in the next three.
constexpr uint8_t kOmitted = 0xFF, kWidthMask = 0x0F, kBaseMask = 0x70, kIndirect = 0x80;
constexpr uint8_t kAbsolute = 0x00, kUnsignedLeb = 0x01, kUnsigned2 = 0x02, kUnsigned4 = 0x03,
                  kUnsigned8 = 0x04, kSigned4 = 0x0B, kSigned8 = 0x0C, kRelative = 0x10;

/// The tables are part of code that has been taken in; a compiler that writes them otherwise is a mistake in
/// this file.
class Reader {
public:
    explicit Reader(const uint8_t *place) : place_(place) {}

    const uint8_t *Place() const { return place_; }
    uint8_t Byte() { return *place_++; }

    uint64_t UnsignedLeb()
    {
        uint64_t value = 0;
        for (unsigned shift = 0;; shift += 7) {
            const uint8_t byte = Byte();
            value |= static_cast<uint64_t>(byte & 0x7F) << shift;
            if ((byte & 0x80) == 0)
                return value;
        }
    }

    int64_t SignedLeb()
    {
        uint64_t value = 0;
        unsigned shift = 0;
        uint8_t byte = 0;
        do {
            byte = Byte();
            value |= static_cast<uint64_t>(byte & 0x7F) << shift;
            shift += 7;
        } while ((byte & 0x80) != 0);
        if (shift < 64 && (byte & 0x40) != 0)
            value |= ~uint64_t{0} << shift;
        return static_cast<int64_t>(value);
    }

    uintptr_t Encoded(uint8_t encoding)
    {
        const auto *const start = place_;
        uintptr_t value = Number(encoding & kWidthMask);
        if (value == 0)
            return 0;
        if ((encoding & kBaseMask) == kRelative)
            value += reinterpret_cast<uintptr_t>(start);
        if ((encoding & kIndirect) != 0)
            value = *reinterpret_cast<const uintptr_t *>(value);
        return value;
    }

private:
    template <typename T>
    T Fixed()
    {
        T value;
        std::memcpy(&value, place_, sizeof value);
        place_ += sizeof value;
        return value;
    }

    uintptr_t Number(uint8_t width)
    {
        switch (width) {
        case kUnsignedLeb:
            return UnsignedLeb();
        case kUnsigned2:
            return Fixed<uint16_t>();
        case kUnsigned4:
            return Fixed<uint32_t>();
        case kSigned4:
            return static_cast<uintptr_t>(int64_t{Fixed<int32_t>()});
        case kAbsolute:
        case kUnsigned8:
        case kSigned8:
            return Fixed<uintptr_t>();
        default:
            std::abort();
        }
    }

    const uint8_t *place_;
};

size_t WidthOf(uint8_t encoding)
{
    switch (encoding & kWidthMask) {
    case kUnsigned2:
        return 2;
    case kUnsigned4:
    case kSigned4:
        return 4;
    default:
        return 8;
    }
}

/// Where a function's handled calls, actions and types stand.
struct Tables {
    uintptr_t landingPadBase;
    uint8_t callSiteEncoding, typeEncoding;
    const uint8_t *callSites, *actions;
    /// The types stand before it, counted backwards.
    const uint8_t *types;
};

Tables ReadHeader(const uint8_t *table, uintptr_t functionStart)
{
    Reader reader(table);
    Tables tables = {};
    const uint8_t baseEncoding = reader.Byte();
    tables.landingPadBase = baseEncoding == kOmitted ? functionStart : reader.Encoded(baseEncoding);
    tables.typeEncoding = reader.Byte();
    if (tables.typeEncoding != kOmitted) {
        const uint64_t distance = reader.UnsignedLeb();
        tables.types = reader.Place() + distance;
    }
    tables.callSiteEncoding = reader.Byte();
    const uint64_t size = reader.UnsignedLeb();
    tables.callSites = reader.Place();
    tables.actions = tables.callSites + size;
    return tables;
}

/// The selector of the first handler along a chain of actions that catches; 0 for clean-up; nothing where the
/// function lets the exception pass.
std::optional<int64_t> ChooseSelector(const Tables &tables, uint64_t action,
                                      const std::function<bool(const void *)> &catches)
{
    std::optional<int64_t> cleanUp;
    const uint8_t *place = tables.actions + action - 1;
    for (;;) {
        Reader reader(place);
        const int64_t filter = reader.SignedLeb();
        const uint8_t *const nextFrom = reader.Place();
        const int64_t next = reader.SignedLeb();
        // Below 0 stand lists of exceptions that a function may let out, which Objective-C has not.
        if (filter == 0) {
            cleanUp = 0;
        } else if (filter > 0) {
            const auto distance = static_cast<size_t>(filter) * WidthOf(tables.typeEncoding);
            const uintptr_t type = Reader(tables.types - distance).Encoded(tables.typeEncoding);
            if (catches(reinterpret_cast<const void *>(type)))
                return filter;
        }
        if (next == 0)
            return cleanUp;
        place = nextFrom + next;
    }
}

} // namespace

Handler FindHandler(const uint8_t *table, uintptr_t functionStart, uintptr_t place,
                    const std::function<bool(const void *type)> &catches)
{
    const Tables tables = ReadHeader(table, functionStart);
    Reader reader(tables.callSites);
    while (reader.Place() < tables.actions) {
        const uintptr_t start = functionStart + reader.Encoded(tables.callSiteEncoding);
        const uintptr_t length = reader.Encoded(tables.callSiteEncoding);
        const uintptr_t landingPad = reader.Encoded(tables.callSiteEncoding);
        const uint64_t action = reader.UnsignedLeb();
        if (place < start)
            break;
        if (place - start >= length)
            continue;
        if (landingPad == 0)
            return {};
        const std::optional<int64_t> selector = action == 0 ? 0 : ChooseSelector(tables, action, catches);
        return selector ? Handler{tables.landingPadBase + landingPad, *selector} : Handler{};
    }
    return {};
}

} // namespace macho
