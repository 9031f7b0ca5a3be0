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
    /// False where the name is taken; the class is dropped then.
    bool Add(std::unique_ptr<Class> type);
    /// Null for an unknown name. The letters' case does not count.
    const Class *Find(std::string_view name) const;
    /// Null for a class without a superclass, and while the superclass is not known.
    const Class *SuperOf(const Class &type) const;
    /// The class and its superclasses, most derived first.
    std::vector<const Class *> Chain(const Class &type) const;
    bool IsA(const Class &type, std::string_view name) const;

    /// The declaring class and the declaration of the event with this key; null and null where there is none.
    struct Event {
        const Class *type = nullptr;
        const Declaration *declaration = nullptr;
    };
    Event FindEvent(uint64_t key) const;

    EventKeys eventKeys;
    /// What the library registered, in that order.
    std::vector<ClassRecord> records;

private:
    mutable std::mutex mutex_;
    std::vector<std::unique_ptr<Class>> classes_;
    std::unordered_map<std::string, const Class *> byName_;
};

/// The reference for a class name, made when it is first asked for.
const ClassReference *ReferenceFor(std::string_view name);

/// Whether this is a reference that ReferenceFor gave.
bool IsClassReference(const ClassReference *reference);

} // namespace qzlhost
