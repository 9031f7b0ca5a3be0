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

    /// Loads the methods for this Dictionary unless it is the last one. To be called again after anything
    /// that may convert another Dictionary. Another thread may put its Dictionary's methods in their place at
    /// any time, which differ only where a program's class has methods of its own.
    void Use(REALobject dictionary);
};

extern DictionaryMethodCache gDictionaryMethods;

/// Forgets the last Dictionary when a conversion ends, however it ends.
class LastDictionaryScope {
public:
    LastDictionaryScope() = default;
    ~LastDictionaryScope() { gDictionaryMethods.LastDictionary = nullptr; }
    LastDictionaryScope(const LastDictionaryScope &) = delete;
    LastDictionaryScope &operator=(const LastDictionaryScope &) = delete;
};
