// Reads the table of a function's handlers.
#include "platform/macho/handler_table.h"

#include <cstdlib>
#include <optional>

#include "platform/macho/bytes.h"

namespace macho {

namespace {

// How a value is written: its width in the lower four bits, what it is relative to in the next three.
constexpr uint8_t kOmitted = 0xFF, kWidthMask = 0x0F, kBaseMask = 0x70, kIndirect = 0x80;
constexpr uint8_t kAbsolute = 0x00, kUnsignedLeb = 0x01, kUnsigned2 = 0x02, kUnsigned4 = 0x03,
                  kUnsigned8 = 0x04, kSigned4 = 0x0B, kSigned8 = 0x0C, kRelative = 0x10;

/// Reads a table as a part of code that is trusted, so no end is checked: a compiler that writes tables
/// otherwise is a mistake in this file.
class Reader : public Cursor {
public:
    explicit Reader(const uint8_t *place) : Cursor(Bytes(place, SIZE_MAX), "handler table"), begin_(place) {}

    const uint8_t *Place() const { return begin_ + Position(); }

    uintptr_t Encoded(uint8_t encoding)
    {
        const auto *const start = Place();
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
    uintptr_t Number(uint8_t width)
    {
        switch (width) {
        case kUnsignedLeb:
            return NextUnsignedLeb();
        case kUnsigned2:
            return Next<uint16_t>();
        case kUnsigned4:
            return Next<uint32_t>();
        case kSigned4:
            return static_cast<uintptr_t>(int64_t{Next<int32_t>()});
        case kAbsolute:
        case kUnsigned8:
        case kSigned8:
            return Next<uintptr_t>();
        default:
            std::abort();
        }
    }

    const uint8_t *begin_;
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

/// Where a function's handled calls, actions and types are.
struct Tables {
    uintptr_t landingPadBase;
    uint8_t callSiteEncoding, typeEncoding;
    const uint8_t *callSites, *actions;
    /// The end of the types, which are counted backwards.
    const uint8_t *types;
};

Tables ReadHeader(const uint8_t *table, uintptr_t functionStart)
{
    Reader reader(table);
    Tables tables = {};
    const uint8_t baseEncoding = reader.Next<uint8_t>();
    tables.landingPadBase = baseEncoding == kOmitted ? functionStart : reader.Encoded(baseEncoding);
    tables.typeEncoding = reader.Next<uint8_t>();
    if (tables.typeEncoding != kOmitted) {
        const uint64_t distance = reader.NextUnsignedLeb();
        tables.types = reader.Place() + distance;
    }
    tables.callSiteEncoding = reader.Next<uint8_t>();
    const uint64_t size = reader.NextUnsignedLeb();
    tables.callSites = reader.Place();
    tables.actions = tables.callSites + size;
    return tables;
}

/// The selector of the first handler along a chain of actions that catches; 0 for clean-up; none if the
/// function lets the exception pass.
std::optional<int64_t> ChooseSelector(const Tables &tables, uint64_t action,
                                      const std::function<bool(const void *)> &catches)
{
    std::optional<int64_t> cleanUp;
    const uint8_t *place = tables.actions + action - 1;
    for (;;) {
        Reader reader(place);
        const int64_t filter = reader.NextSignedLeb();
        const uint8_t *const nextFrom = reader.Place();
        const int64_t next = reader.NextSignedLeb();
        // Below 0 are lists of the exceptions that a function may throw, which Objective-C lacks.
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
        const uint64_t action = reader.NextUnsignedLeb();
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
