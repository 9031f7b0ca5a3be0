// Makes random host values.
#include "tests/support/random_values.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "tests/support/texts.h"

using qzlhost::Value;
namespace code = qzlhost::code;
namespace encoding = qzlhost::encoding;

namespace {

constexpr char32_t kLastCharacter = 0x10FFFF;
constexpr int64_t kStringCodes[] = {18, 19, 20, 21, 23};

struct Range {
    char32_t first;
    char32_t last;
};

/// The ranges of characters: ASCII, controls, Latin, combining marks, Greek, Hebrew, joiners, Chinese,
/// Hangul, private use, around the byte-order mark, wide forms, specials, mathematics, emoji, the end of
/// Unicode.
constexpr Range kCharacters[] = {
    {0x20, 0x7F},     {0x00, 0x1F},       {0xA0, 0xFF},       {0x300, 0x36F},
    {0x391, 0x3C9},   {0x5D0, 0x5EA},     {0x200B, 0x200F},   {0x4E00, 0x9FA5},
    {0xAC00, 0xD7A3}, {0xE000, 0xF8FF},   {0xFEFC, 0xFEFF},   {0xFFE0, 0xFFEE},
    {0xFFFC, 0xFFFD}, {0x1D400, 0x1D454}, {0x1F600, 0x1F64F}, {0x10FF00, 0x10FFFD},
};

/// How a string is written: the encoding, its name for the C library, and its last character here.
struct Writing {
    uint32_t encoding;
    const char *charset;
    char32_t last;
};

constexpr Writing kUtf8 = {encoding::UTF8, "UTF-8", kLastCharacter};
constexpr Writing kUtf16 = {encoding::UTF16, "UTF-16LE", kLastCharacter};
constexpr Writing kWritings[] = {
    kUtf8,
    kUtf8,
    kUtf16,
    {encoding::Latin1, "ISO-8859-1", 0xFF},
    {encoding::ASCII, "ASCII", 0x7E},
    {encoding::MacRoman, "ASCII", 0x7E},
    {encoding::Unknown, "ASCII", 0x7E},
};

std::string Written(const std::u32string &characters, const char *charset)
{
    return Recode(BytesOfUnits(characters), "UTF-32LE", charset).value();
}

Value StringOf(const std::u32string &characters, const Writing &writing)
{
    return Value::StringOfBytes(Written(characters, writing.charset), writing.encoding);
}

} // namespace

RandomValues::RandomValues(qzlhost::Host &host, uint64_t seed, std::vector<Value> wrappers)
    : host_(host), random_(seed), wrappers_(std::move(wrappers))
{
}

Value RandomValues::Any(int depth)
{
    return Chance(8) ? Nothing() : Something(depth);
}

Value RandomValues::Dictionary(int depth)
{
    const Value dictionary = host_.NewDictionary();
    for (uint64_t count = Pick(8); count > 0; --count) {
        const Value key = Key();
        host_.DictionarySet(dictionary, key, Any(depth - 1));
    }
    return Keep(dictionary);
}

uint64_t RandomValues::Pick(uint64_t count)
{
    return random_() % count;
}

bool RandomValues::Chance(uint64_t of)
{
    return Pick(of) == 0;
}

Value RandomValues::Keep(Value value)
{
    if (host_.References(value) > 0)
        made_.push_back(value);
    return value;
}

Value RandomValues::Something(int depth)
{
    if (depth > 0 && Chance(3))
        return Dictionary(depth);
    return depth > 0 && Chance(4) ? Array(depth) : Scalar();
}

Value RandomValues::Nothing()
{
    switch (Pick(5)) {
    case 0:
        return Value();
    case 1:
        return Keep(host_.NewMemoryBlock(""));
    case 2:
        return Keep(host_.NewArray(code::Currency, {Value(1.5)}));
    case 3:
        return Keep(host_.NewArray(code::Color, {Value(1)}));
    default:
        return Keep(host_.New("ProgramObject"));
    }
}

Value RandomValues::Scalar()
{
    constexpr const char *kPaths[] = {"/", "/etc", "/etc/passwd", "/proc", "/etc/no such file \U0001F600"};
    switch (Pick(13)) {
    case 0:
        return Value::OfCode(code::Int32, Value(Integer()));
    case 1:
        return Value(Integer());
    case 2:
        return Value::OfCode(code::Color, Value(Integer()));
    case 3:
        return Value(Single());
    case 4:
        return Value(Double());
    case 5:
        return Value::OfCode(code::Currency, Value(static_cast<double>(Pick(1000000)) / 10000));
    case 6:
        return Value(Chance(2));
    case 7:
        return Date();
    case 8:
        return String();
    case 9:
        return Text();
    case 10:
        return Block();
    case 11:
        return Keep(host_.NewFolderItem(OneOf(kPaths)));
    default:
        return wrappers_.empty() ? String() : wrappers_[Pick(wrappers_.size())];
    }
}

/// One of few, so that some keys are equal in Cocoa though they differ in the host.
Value RandomValues::Key()
{
    switch (Pick(10)) {
    case 0:
        return Value();
    case 1:
        return Value(Chance(2));
    case 2:
        return Value(static_cast<double>(Pick(20)) + 0.5);
    case 3:
        return Date();
    case 4:
        return Keep(host_.New("ProgramObject"));
    case 5:
        return Value(static_cast<int64_t>(Pick(4)));
    case 6:
        return Value(Integer());
    default: {
        std::u32string characters = Chance(10) ? U"" : U"key \u00FC\u4E2D\U0001F600 ";
        if (!characters.empty())
            characters += static_cast<char32_t>(U'a' + Pick(20));
        return Keep(StringOf(characters, Chance(2) ? kUtf8 : kUtf16));
    }
    }
}

Value RandomValues::Array(int depth)
{
    constexpr int64_t kCodes[] = {code::Int32,  code::Int64, code::Single, code::Double, code::Boolean,
                                  code::String, code::Text,  code::Date,   code::Object};
    const int64_t elementCode = OneOf(kCodes);
    std::vector<Value> elements;
    for (uint64_t count = Pick(6); count > 0; --count)
        elements.push_back(Element(elementCode, depth - 1));
    return Keep(host_.NewArray(elementCode, elements));
}

Value RandomValues::Element(int64_t elementCode, int depth)
{
    switch (elementCode) {
    case code::Single:
        return Value(Single());
    case code::Double:
        return Value(Double());
    case code::Boolean:
        return Value(Chance(2));
    case code::String:
        return String();
    case code::Text:
        return Text();
    case code::Date:
        return Date();
    case code::Object:
        return Something(depth);
    default:
        return Value::OfCode(elementCode, Value(Integer()));
    }
}

int64_t RandomValues::Integer()
{
    constexpr int64_t kSpecial[] = {
        0, 1, -1, INT32_MAX, INT32_MIN, UINT32_MAX, INT64_MAX, INT64_MIN, (int64_t{1} << 53) + 1};
    return Chance(2) ? OneOf(kSpecial) : static_cast<int64_t>(random_());
}

float RandomValues::Single()
{
    constexpr float kSpecial[] = {-0.0f, HUGE_VALF, -HUGE_VALF, NAN};
    return Chance(4) ? OneOf(kSpecial) : static_cast<float>(std::clamp(Double(), -1e30, 1e30));
}

double RandomValues::Double()
{
    constexpr double kSpecial[] = {0.0, -0.0, 1.0, -1.5, 1e308, 5e-324, HUGE_VAL, -HUGE_VAL, NAN};
    return Chance(2) ? OneOf(kSpecial) : std::normal_distribution<double>(0, 1e6)(random_);
}

Value RandomValues::Date()
{
    const auto from = [this](int64_t first, uint64_t count) {
        return first + static_cast<int64_t>(Pick(count));
    };
    return Keep(
        host_.NewDate(from(1, 9999), from(1, 12), from(1, 28), from(0, 24), from(0, 60), from(0, 60)));
}

Value RandomValues::String()
{
    if (Chance(10))
        return Value::EmptyString();
    const Writing &writing = OneOf(kWritings);
    const Value string = Keep(StringOf(Characters(writing.last), writing));
    return Chance(3) ? Value::OfCode(OneOf(kStringCodes), string) : string;
}

Value RandomValues::Text()
{
    return Keep(Value::TextOf(Written(Characters(kLastCharacter), kUtf8.charset)));
}

Value RandomValues::Block()
{
    std::string bytes(1 + Pick(40), '\0');
    for (char &byte : bytes)
        byte = static_cast<char>(static_cast<unsigned char>(Pick(256)));
    return Keep(host_.NewMemoryBlock(bytes));
}

/// Characters up to `last`. U+FEFF never comes first, where it would be read as a byte-order mark.
std::u32string RandomValues::Characters(char32_t last)
{
    std::u32string characters;
    const uint64_t count = Chance(20) ? 300 : Pick(12);
    while (characters.size() < count) {
        const Range &range = OneOf(kCharacters);
        const auto character = static_cast<char32_t>(range.first + Pick(range.last - range.first + 1));
        const bool isMark = character == 0xFEFF && characters.empty();
        if (character <= last && !isMark)
            characters += character;
    }
    return characters;
}
