// Grows random trees of host values along with their models.
#include "tests/bridge/to_cocoa/host_trees.h"

#include <algorithm>
#include <iterator>
#include <limits>

using qzlhost::Value;

namespace {

namespace code = qzlhost::code;
namespace encoding = qzlhost::encoding;

constexpr char32_t kLastCharacter = 0x10FFFF;

struct Range {
    char32_t first;
    char32_t last;
};

/// Where characters are taken from: letters and controls, Latin, combining marks, Greek, Hebrew, Chinese,
/// Hangul, private ones, the byte-order mark's neighbours, mathematics, emoji, the end of Unicode.
constexpr Range kCharacters[] = {
    {0x20, 0x7E},     {0x00, 0x1F},       {0xA0, 0xFF},       {0x300, 0x36F},       {0x391, 0x3C9},
    {0x5D0, 0x5EA},   {0x4E00, 0x9FA5},   {0xAC00, 0xD7A3},   {0xE000, 0xF8FF},     {0xFEFC, 0xFEFF},
    {0xFFFC, 0xFFFD}, {0x1D400, 0x1D454}, {0x1F600, 0x1F64F}, {0x10FF00, 0x10FFFD},
};

std::u16string Utf16Of(const std::u32string &characters)
{
    std::u16string units;
    for (const char32_t character : characters) {
        if (character < 0x10000) {
            units += static_cast<char16_t>(character);
        } else {
            units += static_cast<char16_t>(0xD7C0 + (character >> 10));
            units += static_cast<char16_t>(0xDC00 + (character & 0x3FF));
        }
    }
    return units;
}

std::string Utf8Of(const std::u32string &characters)
{
    std::string bytes;
    const auto add = [&](char32_t byte) { bytes += static_cast<char>(static_cast<unsigned char>(byte)); };
    for (const char32_t character : characters) {
        if (character < 0x80) {
            add(character);
        } else if (character < 0x800) {
            add(0xC0 | character >> 6);
            add(0x80 | (character & 0x3F));
        } else if (character < 0x10000) {
            add(0xE0 | character >> 12);
            add(0x80 | (character >> 6 & 0x3F));
            add(0x80 | (character & 0x3F));
        } else {
            add(0xF0 | character >> 18);
            add(0x80 | (character >> 12 & 0x3F));
            add(0x80 | (character >> 6 & 0x3F));
            add(0x80 | (character & 0x3F));
        }
    }
    return bytes;
}

template <typename Unit>
std::string BytesOf(const std::basic_string<Unit> &units)
{
    return std::string(reinterpret_cast<const char *>(units.data()), units.size() * sizeof(Unit));
}

/// A way of writing a string: the encoding, and the last character that it has here.
struct Writing {
    uint32_t encoding;
    char32_t limit;
};

constexpr Writing kWritings[] = {
    {encoding::UTF8, kLastCharacter}, {encoding::UTF8, kLastCharacter}, {encoding::UTF16, kLastCharacter},
    {encoding::Latin1, 0xFF},         {encoding::ASCII, 0x7E},          {encoding::MacRoman, 0x7E},
    {encoding::Unknown, 0x7E},
};

Value Write(const std::u32string &characters, uint32_t tag)
{
    std::string bytes;
    if (tag == encoding::UTF8)
        bytes = Utf8Of(characters);
    else if (tag == encoding::UTF16)
        bytes = BytesOf(Utf16Of(characters));
    else
        bytes.assign(characters.begin(), characters.end());
    return Value::StringOfBytes(bytes, tag);
}

Tree TextTree(const std::u32string &characters)
{
    Tree tree;
    tree.kind = Tree::Kind::Text;
    tree.text = Utf16Of(characters);
    return tree;
}

Tree NumberTree(Tree::Kind kind, int64_t integer)
{
    Tree tree;
    tree.kind = kind;
    tree.integer = integer;
    return tree;
}

Grown Double(int64_t asCode, double number)
{
    Grown grown{Value::OfCode(asCode, Value(number)), {}};
    grown.tree.kind = Tree::Kind::Double;
    grown.tree.number = number;
    return grown;
}

Grown Single(float number)
{
    Grown grown{Value(number), {}};
    grown.tree.kind = Tree::Kind::Single;
    grown.tree.single = number;
    return grown;
}

bool IsNumber(const Tree &tree)
{
    using Kind = Tree::Kind;
    return tree.kind == Kind::Integer || tree.kind == Kind::Boolean || tree.kind == Kind::Double;
}

double NumberOf(const Tree &tree)
{
    return tree.kind == Tree::Kind::Double ? tree.number : static_cast<double>(tree.integer);
}

/// Whether two keys are the same to Cocoa, which takes a boolean for a number.
bool AreEqualKeys(const Tree &left, const Tree &right)
{
    if (IsNumber(left) && IsNumber(right))
        return NumberOf(left) == NumberOf(right);
    return left.kind == right.kind && left.text == right.text && left.date == right.date;
}

/// The later of two equal keys wins.
void Enter(Tree &dictionary, const Tree &key, const Tree &value)
{
    const auto same = std::find_if(dictionary.entries.begin(), dictionary.entries.end(),
                                   [&](const auto &entry) { return AreEqualKeys(entry.key, key); });
    if (same == dictionary.entries.end())
        dictionary.entries.push_back({key, value});
    else
        same->value = value;
}

} // namespace

TreeGrower::TreeGrower(qzlhost::Host &host, uint64_t seed, std::vector<Value> wrappers)
    : host_(host), random_(seed), wrappers_(std::move(wrappers))
{
}

Grown TreeGrower::GrowDictionary(int depth)
{
    deepest_ = std::max(deepest_, ++nested_);
    Grown grown{host_.NewDictionary(), {}};
    grown.tree.kind = Tree::Kind::Dictionary;
    const uint64_t count = Pick(8);
    for (uint64_t index = 0; index < count; ++index) {
        const Grown key = Chance(12) ? Grown() : GrowKey();
        // The host's own answer to equal keys is not the matter here.
        if (host_.Call(grown.value, "HasKey", {key.value}).AsBoolean())
            continue;
        const Grown value = GrowValue(depth - 1);
        host_.DictionarySet(grown.value, key.value, value.value);
        if (!key.value.IsNil())
            Enter(grown.tree, key.tree, value.tree);
    }
    --nested_;
    return Keep(grown);
}

uint64_t TreeGrower::Pick(uint64_t count)
{
    return random_() % count;
}

bool TreeGrower::Chance(uint64_t of)
{
    return Pick(of) == 0;
}

Grown TreeGrower::Keep(Grown grown)
{
    if (host_.References(grown.value) > 0)
        values_.push_back(grown.value);
    return grown;
}

Grown TreeGrower::GrowValue(int depth)
{
    return Chance(8) ? GrowNothing() : GrowElement(depth);
}

Grown TreeGrower::GrowElement(int depth)
{
    if (depth > 0 && Chance(3))
        return GrowDictionary(depth);
    return depth > 0 && Chance(4) ? GrowArray(depth) : GrowScalar();
}

Grown TreeGrower::GrowNothing()
{
    switch (Pick(4)) {
    case 0:
        return Keep({host_.NewMemoryBlock(""), {}});
    case 1:
        return Keep({host_.NewArray(code::Currency, {Value(1.5)}), {}});
    case 2:
        return Keep({host_.New("Unrelated"), {}});
    default:
        return {};
    }
}

/// Few different keys, so that some are equal.
Grown TreeGrower::GrowKey()
{
    switch (Pick(8)) {
    case 0: {
        const bool boolean = Chance(2);
        return {Value(boolean), NumberTree(Tree::Kind::Boolean, boolean)};
    }
    case 1:
        return Double(code::Double, static_cast<double>(Pick(20)) + 0.5);
    case 2:
        return GrowDate();
    case 3:
        return Keep({host_.New("Unrelated"), {}});
    case 4: {
        const auto integer = static_cast<int64_t>(Pick(4));
        return {Value(integer), NumberTree(Tree::Kind::Integer, integer)};
    }
    default: {
        std::u32string characters = U"key \u00FC\u4E2D\U0001F600 ";
        characters += static_cast<char32_t>(U'a' + Pick(20));
        return Keep({Write(characters, Chance(2) ? encoding::UTF8 : encoding::UTF16), TextTree(characters)});
    }
    }
}

Grown TreeGrower::GrowScalar()
{
    switch (Pick(12)) {
    case 0:
        return GrowInteger(code::Int32);
    case 1:
        return GrowInteger(code::Int64);
    case 2:
        return GrowInteger(code::Color);
    case 3:
        return Single(static_cast<float>(static_cast<int64_t>(random_())) / 1e9f);
    case 4:
        return Single(Chance(2) ? -0.0f : std::numeric_limits<float>::infinity());
    case 5:
        return Double(code::Double, static_cast<double>(static_cast<int64_t>(random_())) * 1e-7);
    case 6:
        return Double(code::Currency, static_cast<double>(Pick(1000000)) / 10000);
    case 7: {
        const bool boolean = Chance(2);
        return {Value(boolean), NumberTree(Tree::Kind::Boolean, boolean)};
    }
    case 8:
        return GrowDate();
    case 9:
        return GrowText();
    case 10:
        return Chance(2) ? GrowData() : GrowWrapped();
    default:
        return GrowString();
    }
}

Grown TreeGrower::GrowArray(int depth)
{
    Grown array;
    array.tree.kind = Tree::Kind::Array;
    constexpr int64_t kCodes[] = {code::Int32,  code::Int64, code::Single, code::Double, code::Boolean,
                                  code::String, code::Text,  code::Date,   code::Object};
    const int64_t elementCode = kCodes[Pick(std::size(kCodes))];
    const uint64_t count = Pick(6);
    std::vector<Value> elements;
    for (uint64_t index = 0; index < count; ++index) {
        Grown element;
        switch (elementCode) {
        case code::Single:
            element = Single(static_cast<float>(Pick(1000)) / 7);
            break;
        case code::Double:
            element = Double(code::Double, static_cast<double>(Pick(1000)) / 7);
            break;
        case code::Boolean:
            element.tree = NumberTree(Tree::Kind::Boolean, static_cast<int64_t>(Pick(2)));
            element.value = Value(element.tree.integer != 0);
            break;
        case code::String:
            element = GrowString();
            break;
        case code::Text:
            element = GrowText();
            break;
        case code::Date:
            element = GrowDate();
            break;
        case code::Object:
            element = GrowElement(depth - 1);
            break;
        default:
            element = GrowInteger(elementCode);
            break;
        }
        elements.push_back(element.value);
        array.tree.elements.push_back(element.tree);
    }
    array.value = host_.NewArray(elementCode, elements);
    return Keep(array);
}

Grown TreeGrower::GrowInteger(int64_t asCode)
{
    constexpr int64_t kSpecial[] = {
        0, 1, -1, INT32_MAX, INT32_MIN, INT64_MAX, INT64_MIN, UINT32_MAX, (int64_t{1} << 53) + 1};
    const int64_t integer = Chance(2) ? kSpecial[Pick(std::size(kSpecial))] : static_cast<int64_t>(random_());
    return {Value::OfCode(asCode, Value(integer)), NumberTree(Tree::Kind::Integer, integer)};
}

/// Hours at which no clock is put forward or back.
Grown TreeGrower::GrowDate()
{
    Grown grown;
    grown.tree.kind = Tree::Kind::Date;
    const auto from = [this](int64_t first, uint64_t count) {
        return first + static_cast<int64_t>(Pick(count));
    };
    auto &[year, month, day, hour, minute, second] = grown.tree.date;
    year = from(1904, 200);
    month = from(1, 12);
    day = from(1, 28);
    hour = from(4, 18);
    minute = from(0, 60);
    second = from(0, 60);
    grown.value = host_.NewDate(year, month, day, hour, minute, second);
    return Keep(grown);
}

Grown TreeGrower::GrowString()
{
    if (Chance(10))
        return {Value::EmptyString(), TextTree(U"")};
    const Writing &writing = kWritings[Pick(std::size(kWritings))];
    const std::u32string characters = GrowCharacters(writing.limit);
    Grown grown = Keep({Write(characters, writing.encoding), TextTree(characters)});
    constexpr int64_t kCodes[] = {18, 19, 20, 21, 23};
    if (Chance(6))
        grown.value = Value::OfCode(kCodes[Pick(std::size(kCodes))], grown.value);
    return grown;
}

Grown TreeGrower::GrowText()
{
    const std::u32string characters = GrowCharacters(kLastCharacter);
    return Keep({Value::TextOf(Utf8Of(characters)), TextTree(characters)});
}

Grown TreeGrower::GrowData()
{
    Grown grown;
    grown.tree.kind = Tree::Kind::Data;
    grown.tree.bytes.resize(1 + Pick(40));
    for (char &byte : grown.tree.bytes)
        byte = static_cast<char>(static_cast<unsigned char>(Pick(256)));
    grown.value = host_.NewMemoryBlock(grown.tree.bytes);
    return Keep(grown);
}

Grown TreeGrower::GrowWrapped()
{
    Grown grown;
    grown.tree.kind = Tree::Kind::Wrapped;
    grown.tree.wrapped = Pick(wrappers_.size());
    grown.value = wrappers_[grown.tree.wrapped];
    return grown;
}

/// Up to `limit`. The byte-order mark never comes first: there it may be taken for one.
std::u32string TreeGrower::GrowCharacters(char32_t limit)
{
    std::u32string characters;
    const uint64_t count = Chance(20) ? 300 : Pick(12);
    while (characters.size() < count) {
        const Range &range = kCharacters[Pick(std::size(kCharacters))];
        const auto character = static_cast<char32_t>(range.first + Pick(range.last - range.first + 1));
        const bool isMark = character == 0xFEFF && characters.empty();
        if (character <= limit && !isMark)
            characters += character;
    }
    return characters;
}
