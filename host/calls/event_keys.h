// The keys by which a library asks for its events, and where they are written.
#pragma once

#include <cstdint>
#include <deque>
#include <vector>

namespace qzlhost {

class EventKeys {
public:
    EventKeys() = default;
    /// Sets the slots to 0 again.
    ~EventKeys();
    EventKeys(const EventKeys &) = delete;
    EventKeys &operator=(const EventKeys &) = delete;

    /// Returns a new key and writes it where a class record of this version expects it: into the slot itself,
    /// or, for version 9, into the second word of a record of the host's that the slot then points to.
    uint64_t Assign(uint64_t *slot, uint32_t recordVersion);

private:
    struct KeyRecord {
        uint64_t unused = 0;
        uint64_t key = 0;
    };

    uint64_t last_ = 0x7E000000;
    std::deque<KeyRecord> records_;
    std::vector<uint64_t *> slots_;
};

} // namespace qzlhost
