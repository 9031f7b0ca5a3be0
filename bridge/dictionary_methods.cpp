// Loads the methods of host Dictionaries.
#include "bridge/dictionary_methods.h"

#include "frame/host_entry_points.h"

DictionaryMethodCache gDictionaryMethods;

namespace {

template <typename Method>
void LoadMethod(std::atomic<Method> &method, REALobject dictionary, const char *declaration)
{
    method = reinterpret_cast<Method>(REALLoadObjectMethod(dictionary, declaration));
}

} // namespace

void DictionaryMethodCache::Use(REALobject dictionary)
{
    if (LastDictionary == dictionary)
        return;
    LoadMethod(LastDictionarySetter, dictionary, "Value(key As Variant, Assigns _value As Variant)");
    LoadMethod(LastDictionaryGetter, dictionary, "Value(key As Variant) As Variant");
    LoadMethod(LastDictionaryKeyGetter, dictionary, "Key(index As Integer) As Variant");
    // Set last: a thread that finds its Dictionary here uses the methods as they are.
    LastDictionary = dictionary;
}
