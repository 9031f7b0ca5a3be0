// The methods of a host Dictionary, loaded for one Dictionary at a time. Both directions share them; not
// locked.
#pragma once

#include "frame/host_types.h"

/// The Dictionary that the methods were loaded for, or null.
extern REALobject LastDictionary;
/// "Value(key As Variant, Assigns _value As Variant)", or null.
extern void (*LastDictionarySetter)(REALobject dictionary, REALobject key, REALobject value);
/// "Value(key As Variant) As Variant", or null.
extern REALobject (*LastDictionaryGetter)(REALobject dictionary, REALobject key);
/// "Key(index As Integer) As Variant", or null.
extern REALobject (*LastDictionaryKeyGetter)(REALobject dictionary, int64_t index);

/// Loads the methods for this Dictionary unless it is the last one. To be called again after anything that
/// may convert another Dictionary.
void UseDictionaryMethods(REALobject dictionary);

/// Forgets the last Dictionary when a conversion ends, however it ends.
class DictionaryMethodsEnd {
public:
    DictionaryMethodsEnd() = default;
    ~DictionaryMethodsEnd() { LastDictionary = nullptr; }
    DictionaryMethodsEnd(const DictionaryMethodsEnd &) = delete;
    DictionaryMethodsEnd &operator=(const DictionaryMethodsEnd &) = delete;
};
