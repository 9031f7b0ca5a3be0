// The classes that the host knows, by name.
#include "host/calls/class_registry.h"

#include <algorithm>
#include <unordered_set>

#include "host/language/names.h"

namespace qzlhost {

namespace {

struct References {
    std::mutex mutex;
    std::unordered_map<std::string, std::unique_ptr<ClassReference>> byName;
    std::unordered_set<const ClassReference *> all;
};

References &AllReferences()
{
    static References references;
    return references;
}

/// The reference for a class name, made on first use.
const ClassReference *ReferenceFor(std::string_view name)
{
    References &references = AllReferences();
    std::lock_guard lock(references.mutex);
    std::unique_ptr<ClassReference> &reference = references.byName[Folded(name)];
    if (!reference) {
        reference = std::make_unique<ClassReference>(ClassReference{std::string(name)});
        references.all.insert(reference.get());
    }
    return reference.get();
}

} // namespace

bool ClassRegistry::Add(std::unique_ptr<Class> type)
{
    std::lock_guard lock(mutex_);
    const bool added = byName_.emplace(Folded(type->name), type.get()).second;
    if (added) {
        type->reference = ReferenceFor(type->name);
        classes_.push_back(std::move(type));
    }
    return added;
}

const Class *ClassRegistry::Find(std::string_view name) const
{
    std::lock_guard lock(mutex_);
    const auto found = byName_.find(Folded(name));
    return found == byName_.end() ? nullptr : found->second;
}

const Class *ClassRegistry::SuperOf(const Class &type) const
{
    const Class *super = type.super.load();
    if (!super && !type.superName.empty()) {
        super = Find(type.superName);
        type.super = super;
    }
    return super;
}

std::vector<const Class *> ClassRegistry::Chain(const Class &type) const
{
    std::vector<const Class *> chain;
    for (const Class *each = &type; each && std::find(chain.begin(), chain.end(), each) == chain.end();
         each = SuperOf(*each))
        chain.push_back(each);
    return chain;
}

bool ClassRegistry::IsA(const Class &type, std::string_view name) const
{
    const std::vector<const Class *> chain = Chain(type);
    return std::any_of(chain.begin(), chain.end(),
                       [&](const Class *each) { return SameName(each->name, name); });
}

ClassRegistry::Event ClassRegistry::FindEvent(uint64_t key) const
{
    std::lock_guard lock(mutex_);
    for (const auto &type : classes_) {
        for (const EventDeclaration &event : type->events)
            if (event.key == key)
                return {type.get(), &event.declaration};
    }
    return {};
}

bool IsClassReference(const ClassReference *reference)
{
    References &references = AllReferences();
    std::lock_guard lock(references.mutex);
    return references.all.count(reference) != 0;
}

} // namespace qzlhost
