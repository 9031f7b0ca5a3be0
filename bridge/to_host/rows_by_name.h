// Finds the row of a table by its name: a hash table that the compiler makes.
#pragma once

#include <array>
#include <climits>
#include <cstddef>
#include <cstring>

/// Some rows of a table, which have a `name`, by the hash of the name. A name that is too short for a hash
/// has no row. Of two rows with the same slot, the later one is in the next free slot.
template <typename Row>
class RowsByName {
public:
    template <size_t Count>
    constexpr RowsByName(const Row (&table)[Count], bool (*isIncluded)(const Row &))
    {
        static_assert(Count < kSlots / 4);
        for (const Row &row : table) {
            if (!isIncluded(row))
                continue;
            size_t slot = SlotOf(row.name, LengthOf(row.name));
            while (rows_[slot] != nullptr)
                slot = (slot + 1) % kSlots;
            rows_[slot] = &row;
            begins_[static_cast<unsigned char>(row.name[0])] = true;
        }
    }

    /// Null for a name that has no row.
    const Row *Find(const char *name) const
    {
        if (!begins_[static_cast<unsigned char>(name[0])])
            return nullptr;
        const size_t length = std::strlen(name);
        if (length < kShortestName)
            return nullptr;
        size_t slot = SlotOf(name, length);
        while (rows_[slot] != nullptr && std::strcmp(rows_[slot]->name, name) != 0)
            slot = (slot + 1) % kSlots;
        return rows_[slot];
    }

private:
    static constexpr size_t kSlots = 512;
    static constexpr size_t kShortestName = 5;

    static constexpr size_t LengthOf(const char *text)
    {
        size_t length = 0;
        while (text[length] != '\0')
            ++length;
        return length;
    }

    static constexpr size_t SlotOf(const char *name, size_t length)
    {
        const auto letter = [&](size_t index) -> size_t { return static_cast<unsigned char>(name[index]); };
        return (length * 67 + letter(2) * 5 + letter(4) * 29 + letter(length / 2) * 13 +
                letter(length - 2) * 3 + letter(length - 1)) %
               kSlots;
    }

    std::array<const Row *, kSlots> rows_ = {};
    std::array<bool, UCHAR_MAX + 1> begins_ = {};
};
