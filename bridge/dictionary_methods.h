// The methods of a host Dictionary, loaded for one Dictionary at a time. Both directions and all threads
// share them, without a lock.
#pragma once

#include <atomic>

#include "frame/host_types.h"

/// The Dictionary that the methods were loaded for, or null, and its methods, each null if the Dictionary
/// lacks it.
struct DictionaryMethodCache {
    std::atomic<REALobject> LastDictionary;
    /// "Value(key As Variant, Assigns _value As Variant)"
    std::atomic<void (*)(REALobject dictionary, REALobject key, REALobject value)> LastDictionarySetter;
    /// "Value(key As Variant) As Variant"
    std::atomic<REALobject (*)(REALobject dictionary, REALobject key)> LastDictionaryGetter;
    /// "Key(index As Integer) As Variant"
    std::atomic<REALobject (*)(REALobject dictionary, int64_t index)> LastDictionaryKeyGetter;

    /// Loads the methods for this Dictionary unless it is the last one. Called again after anything that may
    /// convert another Dictionary. Another thread may at any time replace the methods with those of its own
    /// Dictionary; they differ only if a program's class has methods of its own.
    void Use(REALobject dictionary);
};

extern DictionaryMethodCache gDictionaryMethods;

/// Lives during the conversion of a Dictionary; its destructor forgets the last Dictionary.
class LastDictionaryScope {
public:
    LastDictionaryScope() = default;
    ~LastDictionaryScope() { gDictionaryMethods.LastDictionary = nullptr; }
    LastDictionaryScope(const LastDictionaryScope &) = delete;
    LastDictionaryScope &operator=(const LastDictionaryScope &) = delete;
};
