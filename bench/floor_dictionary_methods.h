// The methods of a host Dictionary as floors keep them: loaded for one Dictionary at a time.
#pragma once

#include "bench/host_functions.h"

struct FloorDictionaryMethods {
    REALobject last;
    void (*setValue)(REALobject dictionary, REALobject key, REALobject value);
    REALobject (*value)(REALobject dictionary, REALobject key);
    REALobject (*key)(REALobject dictionary, int64_t index);

    void Use(REALobject dictionary)
    {
        if (last == dictionary)
            return;
        Load(setValue, dictionary, "Value(key As Variant, Assigns _value As Variant)");
        Load(value, dictionary, "Value(key As Variant) As Variant");
        Load(key, dictionary, "Key(index As Integer) As Variant");
        last = dictionary;
    }

private:
    template <typename Method>
    static void Load(Method *&method, REALobject dictionary, const char *declaration)
    {
        method = reinterpret_cast<Method *>(gHost.loadObjectMethod(dictionary, declaration));
    }
};

inline FloorDictionaryMethods gFloorMethods;
