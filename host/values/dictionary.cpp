// The host's Dictionary: entries in the order in which their keys were added.
#include "host/values/dictionary.h"

#include "host/values/boxes.h"

namespace qzlhost {

namespace {

/// Equal for equal keys only.
std::string Identity(const Value &key)
{
    switch (key.Code()) {
    case code::Null:
        return "nil";
    case code::Boolean:
        return "boolean " + key.AsString();
    case code::Int32:
    case code::Int64:
    case code::Color:
        return "number " + std::to_string(key.AsInteger());
    case code::Single:
    case code::Double:
    case code::Currency: {
        const int64_t whole = key.AsInteger();
        const bool isWhole = static_cast<double>(whole) == key.AsDouble();
        return "number " + (isWhole ? std::to_string(whole) : Value(key.AsDouble()).AsString());
    }
    case code::Date:
        return "date " + key.AsString();
    default:
        break;
    }
    const Instance *const instance = key.ObjectPointer();
    if (instance && !PayloadOf<Box>(instance))
        return "object " + std::to_string(reinterpret_cast<uintptr_t>(instance));
    return "string " + key.AsString();
}

} // namespace

int64_t Dictionary::Count() const
{
    std::lock_guard lock(mutex_);
    return static_cast<int64_t>(entries_.size());
}

std::optional<Value> Dictionary::Find(const Value &key) const
{
    const std::string identity = Identity(key);
    std::lock_guard lock(mutex_);
    const auto place = places_.find(identity);
    return place == places_.end() ? std::nullopt : std::optional(entries_[place->second].value);
}

std::optional<Value> Dictionary::KeyAt(int64_t index) const
{
    std::lock_guard lock(mutex_);
    if (index < 0 || static_cast<uint64_t>(index) >= entries_.size())
        return std::nullopt;
    return entries_[static_cast<size_t>(index)].key;
}

void Dictionary::Set(const Value &key, const Value &value)
{
    const std::string identity = Identity(key);
    // Becomes the old value, which is destroyed after the lock is released.
    Value entered = value;
    std::lock_guard lock(mutex_);
    const auto [place, isNew] = places_.emplace(identity, entries_.size());
    if (isNew)
        entries_.push_back({key, Value()});
    std::swap(entries_[place->second].value, entered);
}

void Dictionary::Remove(const Value &key)
{
    const std::string identity = Identity(key);
    Entry removed;
    std::lock_guard lock(mutex_);
    const auto found = places_.find(identity);
    if (found == places_.end())
        return;
    const size_t place = found->second;
    places_.erase(found);
    removed = std::move(entries_[place]);
    entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(place));
    for (auto &each : places_)
        each.second -= each.second > place ? 1 : 0;
}

void Dictionary::Clear()
{
    std::vector<Entry> removed;
    std::lock_guard lock(mutex_);
    entries_.swap(removed);
    places_.clear();
}

} // namespace qzlhost
