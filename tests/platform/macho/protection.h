// What may be done with memory.
#pragma once

#include <cstdio>
#include <fstream>
#include <string>

/// The kernel's text for the protection of the memory; empty where nothing is mapped.
inline std::string ProtectionOf(const void *place)
{
    std::ifstream maps("/proc/self/maps");
    for (std::string line; std::getline(maps, line);) {
        unsigned long begin = 0, end = 0;
        char protection[5] = {};
        if (std::sscanf(line.c_str(), "%lx-%lx %4s", &begin, &end, protection) == 3 &&
            reinterpret_cast<unsigned long>(place) >= begin && reinterpret_cast<unsigned long>(place) < end)
            return protection;
    }
    return "";
}
