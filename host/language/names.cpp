// Names in the host's language: the case of ASCII letters does not count.
#include "host/language/names.h"

#include <algorithm>

namespace qzlhost {

namespace {

char Lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

} // namespace

std::string Folded(std::string_view name)
{
    std::string folded(name);
    std::transform(folded.begin(), folded.end(), folded.begin(), Lower);
    return folded;
}

bool SameName(std::string_view a, std::string_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char left, char right) { return Lower(left) == Lower(right); });
}

} // namespace qzlhost
