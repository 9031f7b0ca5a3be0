// Entry points: strings and texts.
#include <cstring>
#include <memory>

#include "host/calls/cocoa.h"
#include "host/interface/entry_functions.h"
#include "host/values/accounts.h"

namespace qzlhost {

namespace {

__attribute__((cf_returns_retained)) CFStringRef NewCFStringOf(const std::optional<std::u16string> &text)
{
    const CocoaScope cocoa;
    return text ? NewCFString(*text) : nullptr;
}

} // namespace

void LockString(String *string)
{
    Lock(string);
}

void UnlockString(String *string)
{
    Unlock(string);
}

String *BuildString(const char *bytes, int32_t length)
{
    return BuildStringWithEncoding(bytes, length, encoding::Unknown);
}

String *BuildStringWithEncoding(const char *bytes, int32_t length, uint32_t encoding)
{
    if (length < 0 || (length > 0 && !bytes)) {
        RecordMistake("a string of " + std::to_string(length) + " bytes" + (bytes ? "" : " at null"));
        return nullptr;
    }
    return NewString(length == 0 ? std::string() : std::string(bytes, static_cast<size_t>(length)), encoding);
}

uint32_t GetStringEncoding(String *string)
{
    return EncodingOf(string);
}

void SetStringEncoding(String *string, uint32_t encoding)
{
    if (string)
        string->encoding = encoding;
}

String *ConvertString(String *string, uint32_t encoding)
{
    if (!string)
        return nullptr;
    std::optional<std::string> bytes = ConvertedBytes(string, encoding);
    return bytes ? NewString(std::move(*bytes), encoding) : nullptr;
}

const char *StringGetCString(String *string)
{
    return string ? string->bytes.c_str() : "";
}

CFStringRef GetStringCFString(String *string, int64_t)
{
    return NewCFStringOf(TextOf(string));
}

bool GetStringData(String *string, uint32_t encoding, NotNull<StringData> out)
{
    *out = {};
    const std::optional<std::string> bytes = ConvertedBytes(string, encoding);
    if (!bytes)
        return false;
    auto data = std::make_unique<char[]>(bytes->size() + 1);
    std::memcpy(data.get(), bytes->c_str(), bytes->size() + 1);
    *out = {data.release(), static_cast<int64_t>(bytes->size()), encoding};
    return true;
}

void DisposeStringData(NotNull<StringData> data)
{
    delete[] static_cast<char *>(std::exchange(data->data, nullptr));
    data->length = 0;
}

void LockText(Text *text)
{
    Lock(text);
}

void UnlockText(Text *text)
{
    Unlock(text);
}

CFStringRef CopyTextCFString(Text *text)
{
    return text ? NewCFStringOf(text->units) : nullptr;
}

} // namespace qzlhost
