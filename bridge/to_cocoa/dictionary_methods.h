// The methods of a host Dictionary, loaded for one Dictionary at a time. Both directions share them; not
// locked.
#pragma once

#include "frame/host_types.h"

/// The Dictionary that the methods were loaded for, or null, and its methods, each null where it has none.
struct DictionaryMethodCache {
    REALobject LastDictionary;
    /// "Value(key As Variant, Assigns _value As Variant)"
    void (*LastDictionarySetter)(REALobject dictionary, REALobject key, REALobject value);
    /// "Value(key As Variant) As Variant"
    REALobject (*LastDictionaryGetter)(REALobject dictionary, REALobject key);
    /// "Key(index As Integer) As Variant"
    REALobject (*LastDictionaryKeyGetter)(REALobject dictionary, int64_t index);

    /// Loads the methods for this Dictionary unless it is the last one. To be called again after anything
    /// that may convert another Dictionary.
    void Use(REALobject dictionary);
};

extern DictionaryMethodCache gDictionaryMethods;

/// Forgets the last Dictionary when a conversion ends, however it ends.
class DictionaryMethodsEnd {
public:
    DictionaryMethodsEnd() = default;
    ~DictionaryMethodsEnd() { gDictionaryMethods.LastDictionary = nullptr; }
    DictionaryMethodsEnd(const DictionaryMethodsEnd &) = delete;
    DictionaryMethodsEnd &operator=(const DictionaryMethodsEnd &) = delete;
};
