// A value that a program of the host holds: owns its references, converts to and from the host's variants.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/values/codes.h"

namespace qzlhost {

struct Instance; // what the library knows as an object: also boxed variants and arrays
struct String;   // a host string
struct Text;     // a host text

/// A copy takes a reference of its own; the destructor gives it back. Used while its Host lives.
class Value {
public:
    Value() = default; // Nil
    Value(bool boolean);
    Value(int integer) : Value(int64_t{integer}) {}
    Value(int64_t integer);
    Value(uint32_t integer) : Value(int64_t{integer}) {}
    Value(float number);
    Value(double number);
    Value(const char *utf8) : Value(std::string(utf8)) {}
    Value(const std::string &utf8);
    Value(const Value &other);
    Value(Value &&other) noexcept;
    Value &operator=(Value other) noexcept;
    ~Value();

    /// A string of these bytes with this tag; never the null string, even without bytes.
    static Value StringOfBytes(std::string_view bytes, uint32_t encoding);
    /// The host's empty string, which is a null pointer.
    static Value EmptyString();
    static Value TextOf(std::string_view utf8);
    /// The content under another type code: Currency, Color, Int32 or one of the other string codes.
    static Value OfCode(int64_t code, Value content);
    /// Takes over one reference. A null instance gives Nil, a null string or text the empty one.
    static Value Adopt(Instance *instance);
    static Value Adopt(String *string);
    static Value Adopt(Text *text);
    /// Takes a reference of its own.
    static Value Share(Instance *instance);
    static Value Share(String *string);
    static Value Share(Text *text);

    /// The value as the host passes it in a Variant: an object as it is, anything else in a box, Nil as Nil.
    Value Boxed() const;

    /// The type code. The null string is a string (8), a null object is Nil.
    int64_t Code() const { return code_; }
    bool IsNil() const { return code_ == code::Null; }

    /// The content, converted as the host converts a variant (a string's number, a number's text, ...).
    bool AsBoolean() const;
    int64_t AsInteger() const;
    double AsDouble() const;
    /// UTF-8, whatever the string's encoding.
    std::string AsString() const;

    /// Borrowed; null for a value of another kind. A boxed value is an object, and a boxed string both.
    String *StringPointer() const;
    Instance *ObjectPointer() const;
    Text *TextPointer() const;
    /// The string's own bytes and tag.
    std::string StringBytes() const;
    uint32_t StringEncoding() const;

private:
    /// Which member of the union is in use.
    enum class Content : uint8_t { Nothing, Integer, Double, Single, String, Text, Instance };

    /// The value in the box; this value if it is not a box.
    const Value &Inner() const;

    Content content_ = Content::Nothing;
    int64_t code_ = code::Null;
    union {
        int64_t integer_ = 0;
        double number_;
        float single_;
        String *string_;
        Text *text_;
        Instance *instance_;
    };
};

} // namespace qzlhost
