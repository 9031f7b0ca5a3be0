// The class records that a library hands to the host, read as bytes.
#include "host/language/class_record.h"

#include <cstdio>
#include <cstring>
#include <initializer_list>
#include <utility>

namespace qzlhost {

namespace {

constexpr size_t kSlotSize = 8;
constexpr uintptr_t kAlignment = 16;
constexpr uint64_t kMostMembers = 10000;

// What the slots of the records hold. A table's count stands in the slot after the table.
enum ClassSlot : size_t {
    kVersion = 0,
    kName = 1,
    kSuperName = 2,
    kDataSize = 3,
    kConstructor = 5,
    kDestructor = 6,
    kPropertyTable = 7,
    kMethodTable = 9,
    kEventTable = 11,
    kConstantTable = 18,
    kFlags = 20,
    kSharedMethodTable = 23
};
enum PropertySlot : size_t {
    kPropertyName = 1,
    kPropertyType = 2,
    kPropertyFlags = 3,
    kGetter = 4,
    kSetter = 5,
    kParameter = 6
};
enum MethodSlot : size_t { kFunction = 0, kComputedSetter = 1, kMethodText = 2, kMethodFlags = 3 };
enum EventSlot : size_t { kEventText = 0, kEventKey = 1 };
enum ConstantSlot : size_t { kConstantText = 0 };

/// The slots of one kind of record that must be 0.
using Zeros = std::initializer_list<size_t>;

constexpr Zeros kClassZeros = {4, 13, 14, 15, 16, 17, 21, 22, 25, 26, 27, 28, 29};

struct TableLayout {
    const char *name;
    ClassSlot slot;
    size_t memberSlots;
    Zeros memberZeros;
};

constexpr TableLayout kProperties = {"properties", kPropertyTable, 12, {0, 7, 8, 9, 10, 11}};
constexpr TableLayout kMethods = {"methods", kMethodTable, 6, {4, 5}};
constexpr TableLayout kEvents = {"events", kEventTable, 4, {kEventKey, 2, 3}};
constexpr TableLayout kConstants = {"constants", kConstantTable, 5, {1, 2, 3, 4}};
constexpr TableLayout kSharedMethods = {"shared methods", kSharedMethodTable, 6, {4, 5}};

std::string Hexadecimal(uint64_t number)
{
    char text[19];
    std::snprintf(text, sizeof text, "0x%llX", static_cast<unsigned long long>(number));
    return text;
}

/// A record's slots of 8 bytes.
class Slots {
public:
    explicit Slots(void *record) : bytes_(static_cast<char *>(record)) {}

    void *Address(size_t slot = 0) const { return bytes_ + slot * kSlotSize; }
    uint64_t Number(size_t slot) const { return Read<uint64_t>(slot); }
    void *Pointer(size_t slot) const { return Read<void *>(slot); }
    /// The low half of the slot.
    uint32_t HalfNumber(size_t slot) const { return Read<uint32_t>(slot); }
    /// Empty for a null pointer.
    std::string Text(size_t slot) const
    {
        const auto *const text = static_cast<const char *>(Pointer(slot));
        return text == nullptr ? std::string() : std::string(text);
    }

private:
    template <typename T>
    T Read(size_t slot) const
    {
        T value;
        std::memcpy(&value, Address(slot), sizeof value);
        return value;
    }

    char *bytes_;
};

class Reader {
public:
    explicit Reader(void *address) : slots_(address) {}

    ClassRecord Read()
    {
        ReadClass();
        ReadTable(kProperties, record_.properties, &Reader::ReadProperty);
        ReadTable(kMethods, record_.methods, &Reader::ReadMethod);
        ReadTable(kEvents, record_.events, &Reader::ReadEvent);
        ReadTable(kConstants, record_.constants, &Reader::ReadConstant);
        ReadTable(kSharedMethods, record_.sharedMethods, &Reader::ReadMethod);
        return std::move(record_);
    }

private:
    void ReadClass()
    {
        record_.version = slots_.HalfNumber(kVersion);
        record_.name = slots_.Text(kName);
        record_.superName = slots_.Text(kSuperName);
        record_.dataSize = slots_.Number(kDataSize);
        record_.constructor = slots_.Pointer(kConstructor);
        record_.destructor = slots_.Pointer(kDestructor);
        record_.flags = slots_.Number(kFlags);
        RequireText(record_.name, "record", kName);
        RequireAlignment(slots_.Address(), "record");
        RequireZeros(slots_, kClassZeros, "record");
    }

    PropertyRecord ReadProperty(const Slots &member, const std::string &place)
    {
        PropertyRecord property;
        property.name = member.Text(kPropertyName);
        property.type = Parsed(ParseType, member.Text(kPropertyType), place, kPropertyType);
        property.flags = member.Number(kPropertyFlags);
        property.getter = member.Pointer(kGetter);
        property.setter = member.Pointer(kSetter);
        property.parameter = static_cast<int64_t>(member.Number(kParameter));
        RequireText(property.name, place, kPropertyName);
        if (property.getter == nullptr)
            AddFault(place, kGetter, "the property has no getter");
        return property;
    }

    MethodRecord ReadMethod(const Slots &member, const std::string &place)
    {
        MethodRecord method;
        method.text = member.Text(kMethodText);
        method.declaration = Parsed(ParseDeclaration, method.text, place, kMethodText);
        method.function = member.Pointer(kFunction);
        method.setter = member.Pointer(kComputedSetter);
        method.flags = member.Number(kMethodFlags);
        if (method.function == nullptr)
            AddFault(place, kFunction, "the method has no function");
        if (method.setter != nullptr && !method.declaration.computedProperty)
            AddFault(place, kComputedSetter, "must be 0 but in a computed property");
        return method;
    }

    EventRecord ReadEvent(const Slots &member, const std::string &place)
    {
        EventRecord event;
        event.text = member.Text(kEventText);
        event.declaration = Parsed(ParseDeclaration, event.text, place, kEventText);
        event.keySlot = static_cast<uint64_t *>(member.Address(kEventKey));
        return event;
    }

    ConstantRecord ReadConstant(const Slots &member, const std::string &place)
    {
        ConstantRecord constant;
        constant.text = member.Text(kConstantText);
        constant.declaration = Parsed(ParseConstant, constant.text, place, kConstantText);
        return constant;
    }

    template <typename Member>
    void ReadTable(const TableLayout &table, std::vector<Member> &members,
                   Member (Reader::*read)(const Slots &, const std::string &))
    {
        auto *const bytes = static_cast<char *>(slots_.Pointer(table.slot));
        const uint64_t count = CheckedCount(table);
        if (count > 0)
            RequireAlignment(bytes, table.name);
        for (uint64_t i = 0; i < count; ++i) {
            const Slots member(bytes + i * table.memberSlots * kSlotSize);
            const std::string place = table.name + ("[" + std::to_string(i) + "]");
            members.push_back((this->*read)(member, place));
            RequireZeros(member, table.memberZeros, place);
        }
    }

    /// How many members can be read.
    uint64_t CheckedCount(const TableLayout &table)
    {
        const size_t slot = table.slot + 1;
        const uint64_t count = slots_.Number(slot);
        if (count > kMostMembers) {
            AddFault(table.name, slot, "a count of " + std::to_string(count) + " members");
            return 0;
        }
        if (count > 0 && slots_.Pointer(table.slot) == nullptr) {
            AddFault(table.name, slot, "a count of " + std::to_string(count) + " members, but no table");
            return 0;
        }
        return count;
    }

    template <typename Result>
    Result Parsed(Result (*parse)(std::string_view), const std::string &text, const std::string &place,
                  size_t slot)
    {
        if (!RequireText(text, place, slot))
            return Result();
        try {
            return parse(text);
        } catch (const DeclarationError &error) {
            AddFault(place, slot, error.what());
            return Result();
        }
    }

    bool RequireText(const std::string &text, const std::string &place, size_t slot)
    {
        if (text.empty())
            AddFault(place, slot, "the text is missing");
        return !text.empty();
    }

    void RequireAlignment(const void *address, const std::string &place)
    {
        const auto number = reinterpret_cast<uintptr_t>(address);
        if (number % kAlignment != 0)
            AddFault(place, "starts at " + Hexadecimal(number) + ", off the 16-byte boundary");
    }

    void RequireZeros(const Slots &slots, Zeros zeros, const std::string &place)
    {
        for (const size_t slot : zeros)
            if (slots.Number(slot) != 0)
                AddFault(place, slot, "must be 0, is " + Hexadecimal(slots.Number(slot)));
    }

    void AddFault(const std::string &place, size_t slot, const std::string &what)
    {
        AddFault(place + " slot " + std::to_string(slot), what);
    }

    void AddFault(const std::string &place, const std::string &what)
    {
        const std::string name = record_.name.empty() ? "(no name)" : record_.name;
        record_.faults.push_back(name + ": " + place + ": " + what);
    }

    Slots slots_;
    ClassRecord record_;
};

} // namespace

ClassRecord ReadClassRecord(void *address)
{
    if (address == nullptr) {
        ClassRecord none;
        none.faults.emplace_back("(no name): record: the address is null");
        return none;
    }
    return Reader(address).Read();
}

} // namespace qzlhost
