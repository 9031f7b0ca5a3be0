// Core Foundation dictionaries: NSDictionaries, and dictionaries keyed by address.
#include "platform/gnustep/address_dictionary.h"
#include "platform/gnustep/objects.h"

using cocoaport::Object;
using cocoaport::ObjectOf;

namespace {

using Entries = std::unordered_map<const void *, const void *>;

/// The entries of a dictionary keyed by address, null for every other dictionary.
Entries *EntriesOf(const void *dictionary)
{
    const id object = Object(dictionary);
    if (object == nil || object_getClass(object) != [CocoaportAddressDictionary class])
        return nullptr;
    return static_cast<CocoaportAddressDictionary *>(object)->entries;
}

} // namespace

CFMutableDictionaryRef CFDictionaryCreateMutable(CFAllocatorRef, CFIndex,
                                                 const CFDictionaryKeyCallBacks *keyCallBacks,
                                                 const CFDictionaryValueCallBacks *valueCallBacks)
{
    if (keyCallBacks != nullptr || valueCallBacks != nullptr)
        return nullptr;
    return cocoaport::ReferenceOf<CFMutableDictionaryRef>([[CocoaportAddressDictionary alloc] init]);
}

CFIndex CFDictionaryGetCount(CFDictionaryRef dictionary)
{
    return static_cast<CFIndex>([ObjectOf<NSDictionary>(dictionary) count]);
}

const void *CFDictionaryGetValue(CFDictionaryRef dictionary, const void *key)
{
    const void *value = nullptr;
    CFDictionaryGetValueIfPresent(dictionary, key, &value);
    return value;
}

Boolean CFDictionaryGetValueIfPresent(CFDictionaryRef dictionary, const void *key, const void **value)
{
    const void *found = nullptr;
    if (const Entries *const entries = EntriesOf(dictionary)) {
        const auto entry = entries->find(key);
        if (entry == entries->end())
            return false;
        found = entry->second;
    } else {
        found = key == nullptr ? nil : [ObjectOf<NSDictionary>(dictionary) objectForKey:Object(key)];
        if (found == nullptr)
            return false;
    }
    if (value != nullptr)
        *value = found;
    return true;
}

void CFDictionarySetValue(CFMutableDictionaryRef dictionary, const void *key, const void *value)
{
    if (Entries *const entries = EntriesOf(dictionary))
        entries->insert_or_assign(key, value);
    else if (key != nullptr && value != nullptr)
        [ObjectOf<NSMutableDictionary>(dictionary) setObject:Object(value) forKey:Object(key)];
}

void CFDictionaryRemoveValue(CFMutableDictionaryRef dictionary, const void *key)
{
    if (Entries *const entries = EntriesOf(dictionary))
        entries->erase(key);
    else if (key != nullptr)
        [ObjectOf<NSMutableDictionary>(dictionary) removeObjectForKey:Object(key)];
}
