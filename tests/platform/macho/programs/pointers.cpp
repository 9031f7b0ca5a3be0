// A program whose pointers are set when it is loaded: its result is 42.
#include <cstring>

namespace {

int gNumbers[] = {1, 38};
int *volatile gPointers[] = {&gNumbers[0], &gNumbers[1]};
decltype(&std::strlen) volatile gLength = std::strlen;

} // namespace

int main()
{
    return *gPointers[0] + *gPointers[1] + static_cast<int>(gLength("abc"));
}
