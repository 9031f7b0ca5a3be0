// A function that other libraries may replace, so that it is called through a lazy pointer without a bind.
#include <cstring>

extern "C" {
#pragma GCC visibility push(default)

__attribute__((weak)) int replaceable()
{
    return 42;
}

int callReplaceable()
{
    return replaceable();
}

// Calls an import, so that the image has helpers that bind.
size_t lengthOf(const char *text)
{
    return std::strlen(text);
}
}
