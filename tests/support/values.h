// Host values, each made in one expression.
#pragma once

#include <initializer_list>
#include <utility>

#include "host/host.h"

/// A new Dictionary with these entries.
inline qzlhost::Value NewDictionary(qzlhost::Host &host,
                                    std::initializer_list<std::pair<qzlhost::Value, qzlhost::Value>> entries)
{
    const qzlhost::Value dictionary = host.NewDictionary();
    for (const auto &[key, value] : entries)
        host.DictionarySet(dictionary, key, value);
    return dictionary;
}
