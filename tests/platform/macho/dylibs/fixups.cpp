// Pointers of every kind that is set at load: into the image itself, and to exports of other libraries.
#include <cstddef>
#include <cstdlib>
#include <cstring>

extern "C" {

extern const void *kCFBooleanTrue;
__attribute__((weak_import)) extern int missingFunction(int number);
__attribute__((weak_import)) extern int missingData;

#pragma GCC visibility push(default)

int answer()
{
    return 42;
}
}

namespace {

/// Pointers with a gap, in a long row.
struct Spaced {
    const char *volatile text;
    size_t number;
};

// Volatile, so that the compiler does not read them itself.
const char *volatile gTexts[] = {"one", "two", "three"};
Spaced gSpaced[] = {
    {"0", 0},   {"1", 1},   {"2", 2},   {"3", 3},   {"4", 4},   {"5", 5},   {"6", 6},
    {"7", 7},   {"8", 8},   {"9", 9},   {"10", 10}, {"11", 11}, {"12", 12}, {"13", 13},
    {"14", 14}, {"15", 15}, {"16", 16}, {"17", 17}, {"18", 18},
};

/// Pointers to one import, side by side and with a gap.
struct SpacedFunction {
    size_t (*volatile length)(const char *);
    size_t number;
};
SpacedFunction gSpacedFunctions[] = {{strlen, 0}, {strlen, 1}, {strlen, 2}, {strlen, 3}};
size_t (*volatile gLengths[])(const char *) = {strlen, strlen, strlen};

/// Before and after the import itself.
const char *volatile gBehindTrue = reinterpret_cast<const char *>(&kCFBooleanTrue) + 24;
const char *volatile gBeforeTrue = reinterpret_cast<const char *>(&kCFBooleanTrue) - 8;

int (*volatile gMissingFunction)(int) = missingFunction;
int *volatile gMissingData = &missingData;

char gBig[0x3000];
char *volatile gInsideBig = gBig + 0x2FFF;
char gZeroes[0x5000];

} // namespace

extern "C" {

const char *textAt(size_t index)
{
    return gTexts[index];
}
const char *spacedText(size_t index)
{
    return gSpaced[index].text;
}
size_t spacedCount()
{
    return sizeof gSpaced / sizeof *gSpaced;
}
size_t lengthBy(size_t index, const char *text)
{
    return gSpacedFunctions[index].length(text) + gLengths[index % 3](text);
}
const void *addressOfTrue()
{
    return &kCFBooleanTrue;
}
const void *behindTrue()
{
    return gBehindTrue;
}
const void *beforeTrue()
{
    return gBeforeTrue;
}
bool missingAreNull()
{
    return gMissingFunction == nullptr && gMissingData == nullptr;
}
bool missingIsCalledOnlyIfThere()
{
    return missingFunction == nullptr;
}
size_t insideBig()
{
    return static_cast<size_t>(gInsideBig - gBig);
}
/// Calls imports through the table of stubs.
bool callsImports()
{
    char *const copy = static_cast<char *>(calloc(1, 16));
    memcpy(copy, "copied", 7);
    const bool isRight = strcmp(copy, "copied") == 0 && strlen(copy) == 6;
    free(copy);
    return isRight;
}
const void *addressOfData()
{
    return gZeroes;
}
/// The sum of what must be zero.
size_t sumOfZeroes()
{
    size_t sum = 0;
    for (const char zero : gZeroes)
        sum += static_cast<size_t>(zero);
    return sum;
}
void writeZeroes(char value)
{
    memset(gZeroes, value, sizeof gZeroes);
}
}
#pragma GCC visibility pop
