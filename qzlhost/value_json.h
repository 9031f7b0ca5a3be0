// What a program's values look like as JSON.
#pragma once

#include <nlohmann/json.hpp>

#include "host/host.h"

/// Nil, booleans, numbers, strings, arrays and dictionaries as JSON has them; a key becomes its text, and of
/// two keys with one text the later entry stays. What JSON lacks becomes an object of one entry:
/// {"date": "2024-02-29 14:05:09"}, {"bytes": "00ff"}, {"path": "/tmp"}, {"number": "inf"}, and
/// {"class": "NSURLQZL"} for any other instance. Main thread only.
nlohmann::ordered_json ValueAsJson(qzlhost::Host &host, const qzlhost::Value &value);

/// JSON in one line. Bytes that are not UTF-8 become U+FFFD.
std::string LineOfJson(const nlohmann::ordered_json &json);
