// Reads rebases and binds that are written as opcodes.
#include "platform/macho/fixups.h"

#include "platform/macho/format.h"

namespace macho {

namespace {

constexpr uint64_t kPointerSize = sizeof(uint64_t);

/// The place that the opcodes refer to. It may lie anywhere, except when a pointer is read or written there.
class Place {
public:
    Place(const Image &image, const Cursor &cursor) : image_(image), cursor_(cursor) {}

    void Set(uint8_t segment, uint64_t offset)
    {
        if (segment >= image_.segments.size())
            cursor_.Fail("there is no segment " + std::to_string(segment));
        segment_ = &image_.segments[segment];
        offset_ = offset;
    }

    void Advance(uint64_t distance) { offset_ += distance; }

    /// The address of the pointer here, which must lie in a writable segment.
    uint64_t Address() const
    {
        if (segment_ == nullptr)
            cursor_.Fail("no place is set");
        const uint64_t size = segment_->content.Size();
        if (offset_ > size || kPointerSize > size - offset_)
            cursor_.Fail("the pointer at " + Hex(offset_) + " is outside what the file has of " +
                         segment_->name);
        if (!segment_->isWritable)
            cursor_.Fail("the segment " + segment_->name + " is not writable");
        return segment_->address + offset_;
    }

private:
    const Image &image_;
    const Cursor &cursor_;
    const Segment *segment_ = nullptr;
    uint64_t offset_ = 0;
};

void RequirePointerType(uint8_t type, const Cursor &cursor)
{
    if (type != format::kTypePointer)
        cursor.Fail("fixups of type " + std::to_string(type) + " are not supported");
}

/// Calls `add` with the addresses of `times` pointers, which are `skipped` bytes apart. More fixups than the
/// file has pointers are an error, and might never end.
template <typename Add>
void ForPointers(Place &place, uint64_t times, uint64_t skipped, const Image &image, const Cursor &cursor,
                 Add add)
{
    uint64_t pointers = 0;
    for (const Segment &segment : image.segments)
        pointers += segment.content.Size() / kPointerSize;
    const uint64_t known = image.rebases.size() + image.binds.size();
    if (known > pointers || times > pointers - known)
        cursor.Fail("there are more fixups than pointers");
    for (uint64_t i = 0; i < times; ++i) {
        add(place.Address());
        place.Advance(kPointerSize + skipped);
    }
}

void AddRebase(uint64_t address, const Cursor &cursor, Image &image)
{
    const auto target = image.ContentAt(address, kPointerSize, "rebase").Read<uint64_t>(0, "rebase");
    if (target < image.begin || target > image.end)
        cursor.Fail("the pointer at address " + Hex(address) + " points to " + Hex(target) +
                    ", outside the image,");
    image.rebases.push_back({address, target});
}

/// What the bind opcodes have set so far.
struct BindState {
    std::string_view symbol;
    int ordinal = 0;
    int64_t addend = 0;
    bool isWeakImport = false;
};

/// Ordinals below 0 have four bits.
int SpecialOrdinal(uint8_t operand)
{
    return operand == 0 ? 0 : static_cast<int8_t>(operand | format::kOpcodeMask);
}

void AddBind(const BindState &state, uint64_t address, const Cursor &cursor, Image &image)
{
    if (state.symbol.empty())
        cursor.Fail("no symbol is set");
    image.binds.push_back({address, state.symbol, state.ordinal, state.addend, state.isWeakImport});
}

} // namespace

void ReadRebases(Bytes table, Image &image)
{
    namespace opcode = format::rebase;
    Cursor cursor(table, "rebase table");
    Place place(image, cursor);
    const auto addTimes = [&](uint64_t times, uint64_t skipped) {
        ForPointers(place, times, skipped, image, cursor,
                    [&](uint64_t address) { AddRebase(address, cursor, image); });
    };
    while (!cursor.AtEnd()) {
        const auto byte = cursor.Next<uint8_t>();
        const uint8_t operand = byte & format::kOperandMask;
        switch (byte & format::kOpcodeMask) {
        case opcode::Done:
            return;
        case opcode::SetType:
            RequirePointerType(operand, cursor);
            break;
        case opcode::SetSegmentAndOffset:
            place.Set(operand, cursor.NextUnsignedLeb());
            break;
        case opcode::AddAddress:
            place.Advance(cursor.NextUnsignedLeb());
            break;
        case opcode::AddAddressScaled:
            place.Advance(operand * kPointerSize);
            break;
        case opcode::DoTimes:
            addTimes(operand, 0);
            break;
        case opcode::DoTimesLeb:
            addTimes(cursor.NextUnsignedLeb(), 0);
            break;
        case opcode::DoAddAddress:
            addTimes(1, cursor.NextUnsignedLeb());
            break;
        case opcode::DoTimesSkipping: {
            const uint64_t times = cursor.NextUnsignedLeb();
            addTimes(times, cursor.NextUnsignedLeb());
            break;
        }
        default:
            cursor.Fail("unknown opcode " + Hex(byte));
        }
    }
}

void ReadBinds(Bytes table, BindTable kind, Image &image)
{
    namespace opcode = format::bind;
    Cursor cursor(table, kind == BindTable::Lazy ? "lazy bind table" : "bind table");
    Place place(image, cursor);
    BindState state;
    const auto addTimes = [&](uint64_t times, uint64_t skipped) {
        ForPointers(place, times, skipped, image, cursor,
                    [&](uint64_t address) { AddBind(state, address, cursor, image); });
    };
    const auto setOrdinal = [&](uint64_t ordinal) {
        if (ordinal > image.dylibs.size())
            cursor.Fail("there is no library " + std::to_string(ordinal));
        state.ordinal = static_cast<int>(ordinal);
    };
    while (!cursor.AtEnd()) {
        const auto byte = cursor.Next<uint8_t>();
        const uint8_t operand = byte & format::kOperandMask;
        switch (byte & format::kOpcodeMask) {
        case opcode::Done:
            // In the lazy table this ends one entry of several.
            if (kind == BindTable::Ordinary)
                return;
            state = {};
            break;
        case opcode::SetOrdinal:
            setOrdinal(operand);
            break;
        case opcode::SetOrdinalLeb:
            setOrdinal(cursor.NextUnsignedLeb());
            break;
        case opcode::SetSpecialOrdinal:
            state.ordinal = SpecialOrdinal(operand);
            if (!image.HasLibrary(state.ordinal))
                cursor.Fail("there is no library " + std::to_string(state.ordinal));
            break;
        case opcode::SetSymbol:
            state.isWeakImport = (operand & format::bind::FlagWeakImport) != 0;
            state.symbol = cursor.NextCString();
            break;
        case opcode::SetType:
            RequirePointerType(operand, cursor);
            break;
        case opcode::SetAddend:
            state.addend = cursor.NextSignedLeb();
            break;
        case opcode::SetSegmentAndOffset:
            place.Set(operand, cursor.NextUnsignedLeb());
            break;
        case opcode::AddAddress:
            place.Advance(cursor.NextUnsignedLeb());
            break;
        case opcode::Do:
            addTimes(1, 0);
            break;
        case opcode::DoAddAddress:
            addTimes(1, cursor.NextUnsignedLeb());
            break;
        case opcode::DoAddAddressScaled:
            addTimes(1, operand * kPointerSize);
            break;
        case opcode::DoTimesSkipping: {
            const uint64_t times = cursor.NextUnsignedLeb();
            addTimes(times, cursor.NextUnsignedLeb());
            break;
        }
        default:
            cursor.Fail("unknown opcode " + Hex(byte));
        }
    }
}

} // namespace macho
