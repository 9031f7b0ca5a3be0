// Host strings and texts.
#include "host/values/strings.h"

#include "host/values/accounts.h"
#include "host/values/codes.h"
#include "host/values/encodings.h"

namespace qzlhost {

namespace {

/// How much of a text a description shows, in bytes.
constexpr size_t kShown = 60;

template <typename T>
T *Entered(Kind kind, T *thing)
{
    if (Accounts *const accounts = Current<Accounts>())
        accounts->Enter(kind, thing);
    return thing;
}

template <typename T>
void Free(T *thing)
{
    if (Accounts *const accounts = Accounts::Of(thing))
        accounts->Remove(thing);
    delete thing;
}

std::string Quoted(const std::string &text, const char *kind, uint64_t serial)
{
    std::string shown = text.substr(0, kShown);
    return '"' + shown + (text.size() > kShown ? "...\" (" : "\" (") + kind + " #" + std::to_string(serial) +
           ")";
}

} // namespace

String *NewString(std::string bytes, uint32_t encoding)
{
    return Entered(Kind::String, new String(std::move(bytes), encoding));
}

Text *NewText(std::u16string units)
{
    return Entered(Kind::Text, new Text(std::move(units)));
}

std::string_view BytesOf(const String *string)
{
    return string ? std::string_view(string->bytes) : std::string_view();
}

uint32_t EncodingOf(const String *string)
{
    return string ? string->encoding.load() : encoding::Unknown;
}

std::optional<std::u16string> TextOf(const String *string)
{
    if (!string)
        return std::u16string();
    return Decode(string->bytes, string->encoding);
}

std::string Utf8Of(const String *string)
{
    if (!string || string->encoding == encoding::UTF8)
        return std::string(BytesOf(string));
    const std::optional<std::u16string> text = DecodeLeniently(string->bytes, string->encoding);
    return text ? ToUtf8(*text) : string->bytes;
}

std::string Utf8Of(const Text *text)
{
    return text ? ToUtf8(text->units) : std::string();
}

std::optional<std::string> ConvertedBytes(const String *string, uint32_t encoding)
{
    const uint32_t from = EncodingOf(string);
    if (from == encoding::Unknown || encoding == encoding::Unknown || from == encoding)
        return std::string(BytesOf(string));
    const std::optional<std::u16string> text = DecodeLeniently(BytesOf(string), from);
    return text ? Encode(*text, encoding) : std::nullopt;
}

std::string Describe(const String *string)
{
    return string ? Quoted(Utf8Of(string), "String", string->serial) : "the empty string";
}

std::string Describe(const Text *text)
{
    return text ? Quoted(Utf8Of(text), "Text", text->serial) : "the empty text";
}

void Destroy(String *thing)
{
    Free(thing);
}

void Destroy(Text *thing)
{
    Free(thing);
}

} // namespace qzlhost
