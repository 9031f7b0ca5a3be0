// A value that a program of the host holds.
#include "host/values/value.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <utility>

#include "host/language/names.h"
#include "host/values/boxes.h"
#include "host/values/encodings.h"
#include "host/values/object.h"
#include "host/values/strings.h"

namespace qzlhost {

namespace {

template <typename T>
std::string Shortest(T number)
{
    char digits[64];
    const std::to_chars_result end = std::to_chars(digits, digits + sizeof digits, number);
    return std::string(digits, end.ptr);
}

int64_t Truncated(double number)
{
    constexpr double kLimit = 9223372036854775808.0;
    if (std::isnan(number))
        return 0;
    if (number >= kLimit)
        return INT64_MAX;
    return number < -kLimit ? INT64_MIN : static_cast<int64_t>(number);
}

double NumberOf(const std::string &text)
{
    return std::strtod(text.c_str(), nullptr);
}

int64_t IntegerOf(const std::string &text)
{
    int64_t integer = 0;
    const std::from_chars_result result = std::from_chars(text.data(), text.data() + text.size(), integer);
    const bool whole = result.ec == std::errc() && (*result.ptr < '.' || *result.ptr > '9');
    return whole && *result.ptr != 'e' && *result.ptr != 'E' ? integer : Truncated(NumberOf(text));
}

} // namespace

Value::Value(bool boolean) : content_(Content::Integer), code_(code::Boolean), integer_(boolean ? 1 : 0) {}

Value::Value(int64_t integer) : content_(Content::Integer), code_(code::Int64), integer_(integer) {}

Value::Value(float number) : content_(Content::Single), code_(code::Single), single_(number) {}

Value::Value(double number) : content_(Content::Double), code_(code::Double), number_(number) {}

Value::Value(const std::string &utf8)
    : Value(utf8.empty() ? EmptyString() : StringOfBytes(utf8, encoding::UTF8))
{
}

Value::Value(const Value &other) : content_(other.content_), code_(other.code_), integer_(other.integer_)
{
    switch (content_) {
    case Content::String:
        if (string_)
            string_->counts.AddHolder();
        break;
    case Content::Text:
        if (text_)
            text_->counts.AddHolder();
        break;
    case Content::Instance:
        instance_->counts.AddHolder();
        break;
    default:
        break;
    }
}

Value::Value(Value &&other) noexcept
    : content_(std::exchange(other.content_, Content::Nothing)),
      code_(std::exchange(other.code_, code::Null)), integer_(std::exchange(other.integer_, 0))
{
}

Value &Value::operator=(Value other) noexcept
{
    std::swap(content_, other.content_);
    std::swap(code_, other.code_);
    std::swap(integer_, other.integer_);
    return *this;
}

Value::~Value()
{
    switch (content_) {
    case Content::String:
        if (string_ && string_->counts.DropHolder())
            Destroy(string_);
        break;
    case Content::Text:
        if (text_ && text_->counts.DropHolder())
            Destroy(text_);
        break;
    case Content::Instance:
        if (instance_->counts.DropHolder())
            Destroy(instance_);
        break;
    default:
        break;
    }
}

Value Value::StringOfBytes(std::string_view bytes, uint32_t encoding)
{
    return Adopt(NewString(std::string(bytes), encoding));
}

Value Value::EmptyString()
{
    return Adopt(static_cast<String *>(nullptr));
}

Value Value::TextOf(std::string_view utf8)
{
    return Adopt(NewText(FromUtf8(utf8)));
}

Value Value::OfCode(int64_t code, Value content)
{
    content.code_ = code;
    return content;
}

Value Value::Adopt(Instance *instance)
{
    Value value;
    if (instance) {
        AdoptReference(instance);
        value.content_ = Content::Instance;
        value.code_ = CodeOf(instance);
        value.instance_ = instance;
    }
    return value;
}

Value Value::Adopt(String *string)
{
    if (string)
        AdoptReference(string);
    Value value;
    value.content_ = Content::String;
    value.code_ = code::String;
    value.string_ = string;
    return value;
}

Value Value::Adopt(Text *text)
{
    if (text)
        AdoptReference(text);
    Value value;
    value.content_ = Content::Text;
    value.code_ = code::Text;
    value.text_ = text;
    return value;
}

Value Value::Share(Instance *instance)
{
    return Adopt(Lock(instance));
}

Value Value::Share(String *string)
{
    return Adopt(Lock(string));
}

Value Value::Share(Text *text)
{
    return Adopt(Lock(text));
}

Value Value::Boxed() const
{
    return Adopt(NewVariant(*this));
}

bool Value::AsBoolean() const
{
    const Value &inner = Inner();
    switch (inner.content_) {
    case Content::String:
    case Content::Text: {
        const std::string text = AsString();
        return SameName(text, "true") || NumberOf(text) != 0;
    }
    case Content::Instance:
        return true;
    default:
        return inner.AsDouble() != 0;
    }
}

int64_t Value::AsInteger() const
{
    const Value &inner = Inner();
    switch (inner.content_) {
    case Content::Integer:
        return inner.integer_;
    case Content::String:
    case Content::Text:
        return IntegerOf(AsString());
    default:
        return Truncated(inner.AsDouble());
    }
}

double Value::AsDouble() const
{
    const Value &inner = Inner();
    switch (inner.content_) {
    case Content::Integer:
        return static_cast<double>(inner.integer_);
    case Content::Double:
        return inner.number_;
    case Content::Single:
        return static_cast<double>(inner.single_);
    case Content::String:
    case Content::Text:
        return NumberOf(AsString());
    default:
        return 0;
    }
}

std::string Value::AsString() const
{
    const Value &inner = Inner();
    switch (inner.content_) {
    case Content::Integer:
        if (inner.code_ == code::Boolean)
            return inner.integer_ != 0 ? "True" : "False";
        return std::to_string(inner.integer_);
    case Content::Double:
        return Shortest(inner.number_);
    case Content::Single:
        return Shortest(inner.single_);
    case Content::String:
        return Utf8Of(inner.string_);
    case Content::Text:
        return Utf8Of(inner.text_);
    case Content::Instance:
        return inner.instance_->payload ? inner.instance_->payload->AsString() : std::string();
    case Content::Nothing:
        break;
    }
    return {};
}

String *Value::StringPointer() const
{
    const Value &inner = Inner();
    return inner.content_ == Content::String ? inner.string_ : nullptr;
}

Instance *Value::ObjectPointer() const
{
    return content_ == Content::Instance ? instance_ : nullptr;
}

Text *Value::TextPointer() const
{
    const Value &inner = Inner();
    return inner.content_ == Content::Text ? inner.text_ : nullptr;
}

std::string Value::StringBytes() const
{
    return std::string(BytesOf(StringPointer()));
}

uint32_t Value::StringEncoding() const
{
    return EncodingOf(StringPointer());
}

const Value &Value::Inner() const
{
    const Box *const box = content_ == Content::Instance ? PayloadOf<Box>(instance_) : nullptr;
    return box ? box->content : *this;
}

} // namespace qzlhost
