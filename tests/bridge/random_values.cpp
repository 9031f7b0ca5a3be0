// Makes random host values.
#include "tests/bridge/random_values.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "tests/bridge/value_model.h"

using qzlhost::Host;
using qzlhost::Value;
namespace code = qzlhost::code;

namespace {

class Generator {
public:
    Generator(Host &host, uint64_t seed) : host_(host), random_(seed) {}

    /// Any value, with at most `depth` containers in each other.
    Value Any(int depth)
    {
        const int64_t kind = Below(depth > 0 ? 12 : 6);
        if (kind >= 9)
            return NewDictionary(depth - 1);
        if (kind == 8)
            return NewObjectArray(depth - 1);
        if (kind == 7)
            return NewTypedArray();
        if (kind == 6)
            return Lost();
        return Scalar();
    }

private:
    int64_t Below(int64_t end) { return std::uniform_int_distribution<int64_t>(0, end - 1)(random_); }

    template <class T, size_t Count>
    T OneOf(const T (&choices)[Count])
    {
        return choices[Below(Count)];
    }

    int64_t Integer()
    {
        constexpr int64_t kSpecial[] = {0, 1, -1, INT32_MAX, INT32_MIN, UINT32_MAX, INT64_MAX, INT64_MIN};
        return Below(2) == 0 ? OneOf(kSpecial) : static_cast<int64_t>(random_());
    }

    double Number()
    {
        constexpr double kSpecial[] = {0.0, -0.0, 1.0, -1.5, 1e308, 5e-324, HUGE_VAL, -HUGE_VAL, NAN};
        return Below(2) == 0 ? OneOf(kSpecial) : std::normal_distribution<double>(0, 1e6)(random_);
    }

    float Single() { return static_cast<float>(std::clamp(Number(), -1e30, 1e30)); }

    std::string Text()
    {
        constexpr const char *kPieces[] = {"a",      "Z9",     " ",      "\n",         "\u00e9", "e\u0301",
                                           "\u05d0", "\u4e2d", "\uffee", "\U0001F600", "\x7f",   "\u200d"};
        std::string text;
        for (int64_t count = Below(6); count > 0; --count)
            text += OneOf(kPieces);
        return text;
    }

    Value String()
    {
        switch (Below(5)) {
        case 0:
            return Value::EmptyString();
        case 1:
            return Value::StringOfBytes("", qzlhost::encoding::UTF8);
        case 2:
            return Value::StringOfBytes("caf\xe9", qzlhost::encoding::Latin1);
        case 3:
            return Value::StringOfBytes(std::string("before\0after", 12), qzlhost::encoding::UTF8);
        default:
            return Value::StringOfBytes(Text(), qzlhost::encoding::UTF8);
        }
    }

    Value Date()
    {
        return host_.NewDate(1 + Below(9999), 1 + Below(12), 1 + Below(28), Below(24), Below(60), Below(60));
    }

    Value Block()
    {
        std::string bytes(static_cast<size_t>(1 + Below(40)), '\0');
        for (char &byte : bytes)
            byte = static_cast<char>(random_());
        return host_.NewMemoryBlock(bytes);
    }

    Value FolderItem()
    {
        constexpr const char *kPaths[] = {"/", "/etc", "/etc/passwd", "/proc",
                                          "/etc/no such file \U0001F600"};
        return host_.NewFolderItem(OneOf(kPaths));
    }

    /// Never what is nothing in Cocoa: an object array may hold these.
    Value Scalar()
    {
        constexpr int64_t kStringCodes[] = {18, 19, 20, 21, 23};
        switch (Below(13)) {
        case 0:
            return Value::OfCode(code::Int32, Value(static_cast<int64_t>(static_cast<int32_t>(Integer()))));
        case 1:
            return Value(Integer());
        case 2:
            return Value(Single());
        case 3:
            return Value(Number());
        case 4:
            return Value::OfCode(code::Currency, Value(static_cast<double>(Below(1000000)) / 4));
        case 5:
            return Date();
        case 6:
            return String();
        case 7:
            return Value::OfCode(OneOf(kStringCodes), String());
        case 8:
            return Value(Below(2) == 1);
        case 9:
            return Value::OfCode(code::Color, Value(Below(0x1000000)));
        case 10:
            return Value::TextOf(Text());
        case 11:
            return Block();
        default:
            return FolderItem();
        }
    }

    Value Lost()
    {
        switch (Below(5)) {
        case 0:
            return Value();
        case 1:
            return host_.NewMemoryBlock("");
        case 2:
            return host_.NewArray(code::Currency, {Value(1.5)});
        case 3:
            return host_.NewArray(code::Color, {Value(1)});
        default:
            return host_.New("ProgramObject");
        }
    }

    Value Element(int64_t elementCode)
    {
        switch (elementCode) {
        case code::Int32:
            return Value(static_cast<int64_t>(static_cast<int32_t>(Integer())));
        case code::Int64:
            return Value(Integer());
        case code::Single:
            return Value(Single());
        case code::Double:
            return Value(Number());
        case code::Date:
            return Date();
        case code::Boolean:
            return Value(Below(2) == 1);
        case code::Text:
            return Value::TextOf(Text());
        default:
            return String();
        }
    }

    Value NewTypedArray()
    {
        constexpr int64_t kCodes[] = {code::Int32, code::Int64,  code::Single,  code::Double,
                                      code::Date,  code::String, code::Boolean, code::Text};
        const int64_t elementCode = OneOf(kCodes);
        std::vector<Value> elements;
        for (int64_t count = Below(5); count > 0; --count)
            elements.push_back(Element(elementCode));
        return host_.NewArray(elementCode, elements);
    }

    /// Without Nil, and without what becomes nil in Cocoa: its arrays raise an exception there.
    Value NewObjectArray(int depth)
    {
        std::vector<Value> elements;
        for (int64_t count = Below(5); count > 0; --count) {
            Value element = Below(3) == 0 ? Any(depth) : Scalar();
            elements.push_back(AfterTrip(ModelOf(host_, element)).code == code::Null ? Scalar() : element);
        }
        return host_.NewArray(code::Object, elements);
    }

    /// Keys that stay different in Cocoa: there true equals 1.
    Value Key()
    {
        switch (Below(5)) {
        case 0:
            return Value(Integer());
        case 1:
            return Value(static_cast<double>(Below(1000)) + 0.25);
        case 2:
            return Date();
        case 3:
            return Below(8) == 0 ? Value() : Value("key " + Text());
        default:
            return Value::StringOfBytes(Text(), qzlhost::encoding::UTF8);
        }
    }

    Value NewDictionary(int depth)
    {
        const Value dictionary = host_.NewDictionary();
        for (int64_t count = Below(6); count > 0; --count)
            host_.DictionarySet(dictionary, Key(), Any(depth));
        return dictionary;
    }

    Host &host_;
    std::mt19937_64 random_;
};

} // namespace

Value RandomValue(Host &host, uint64_t seed, int depth)
{
    return Generator(host, seed).Any(depth);
}
