// The host's Dictionary: entries in the order in which their keys were added.
#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/values/object.h"
#include "host/values/value.h"

namespace qzlhost {

/// Keys are compared as variants: numbers and dates by value, strings by text, other objects by identity. Any
/// thread.
struct Dictionary : Payload {
    int64_t Count() const;
    /// Nothing where absent.
    std::optional<Value> Find(const Value &key) const;
    /// Nothing for an index outside the entries.
    std::optional<Value> KeyAt(int64_t index) const;
    void Set(const Value &key, const Value &value);
    /// Does nothing if the key is absent.
    void Remove(const Value &key);
    void Clear();

private:
    struct Entry {
        Value key;
        Value value;
    };

    mutable std::mutex mutex_;
    std::vector<Entry> entries_;
    std::unordered_map<std::string, size_t> places_;
};

} // namespace qzlhost
