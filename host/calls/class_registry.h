// The classes that the host knows, by name.
#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/calls/class.h"
#include "host/calls/event_keys.h"
#include "host/values/current.h"

namespace qzlhost {

/// Classes are added and never removed while the host lives. Any thread.
class ClassRegistry {
public:
    /// Returns false, and drops the class, if the name is taken.
    bool Add(std::unique_ptr<Class> type);
    /// Null for an unknown name. Letter case does not count.
    const Class *Find(std::string_view name) const;
    /// The class and its superclasses, most derived first.
    std::vector<const Class *> Chain(const Class &type) const;
    bool IsA(const Class &type, std::string_view name) const;

    /// The class that declares the event with this key, and its declaration; both null if there is none.
    struct Event {
        const Class *type = nullptr;
        const Declaration *declaration = nullptr;
    };
    Event FindEvent(uint64_t key) const;

    EventKeys eventKeys;
    /// What the library registered, in that order.
    std::vector<ClassRecord> records;

private:
    /// Null for a class without a superclass, and while the superclass is unknown.
    const Class *SuperOf(const Class &type) const;

    mutable std::mutex mutex_;
    std::vector<std::unique_ptr<Class>> classes_;
    std::unordered_map<std::string, const Class *> byName_;
};

/// Whether this is the reference of a class.
bool IsClassReference(const ClassReference *reference);

} // namespace qzlhost
