// The methods of a host Dictionary, loaded for one Dictionary at a time. Both directions and all threads
// share them; not locked.
#pragma once

#include <atomic>

#include "frame/host_types.h"

/// The Dictionary that the methods were loaded for, or null, and its methods, each null where it has none.
struct DictionaryMethodCache {
    std::atomic<REALobject> LastDictionary;
    /// "Value(key As Variant, Assigns _value As Variant)"
    std::atomic<void (*)(REALobject dictionary, REALobject key, REALobject value)> LastDictionarySetter;
    /// "Value(key As Variant) As Variant"
    std::atomic<REALobject (*)(REALobject dictionary, REALobject key)> LastDictionaryGetter;
    /// "Key(index As Integer) As Variant"
    std::atomic<REALobject (*)(REALobject dictionary, int64_t index)> LastDictionaryKeyGetter;

    /// Loads the methods for this Dictionary unless it is the last one. Called again after anything that may
    /// convert another Dictionary. Another thread may replace the methods with its own Dictionary's at any
    /// time; these differ only where a program's class has methods of its own.
    void Use(REALobject dictionary);
};

extern DictionaryMethodCache gDictionaryMethods;

/// Lives as long as the conversion of a Dictionary, and forgets the last Dictionary at its end.
class LastDictionaryScope {
public:
    LastDictionaryScope() = default;
    ~LastDictionaryScope() { gDictionaryMethods.LastDictionary = nullptr; }
    LastDictionaryScope(const LastDictionaryScope &) = delete;
    LastDictionaryScope &operator=(const LastDictionaryScope &) = delete;
};
