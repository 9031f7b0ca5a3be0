// Converts values to those of JavaScriptCore and back, through its C interface.
#include <JavaScriptCore/JavaScript.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string>
#include <unordered_map>

#include "bench/peers/medians.h"
#include "bench/texts.h"

namespace {

constexpr size_t kLength = 1000;
constexpr int64_t kFirstNumber = 123'456'789'012;

using Dictionary = std::unordered_map<std::string, int64_t>;

JSGlobalContextRef gContext;

JSValueRef FromString(const std::string &text)
{
    const JSStringRef string = JSStringCreateWithUTF8CString(text.c_str());
    const JSValueRef value = JSValueMakeString(gContext, string);
    JSStringRelease(string);
    return value;
}

std::string TextOf(JSStringRef string)
{
    static std::vector<char> buffer;
    const size_t most = JSStringGetMaximumUTF8CStringSize(string);
    if (buffer.size() < most)
        buffer.resize(most);
    const size_t size = JSStringGetUTF8CString(string, buffer.data(), buffer.size());
    return {buffer.data(), size - 1};
}

std::string ToString(JSValueRef value)
{
    const JSStringRef string = JSValueToStringCopy(gContext, value, nullptr);
    std::string text = TextOf(string);
    JSStringRelease(string);
    return text;
}

JSValueRef FromInteger(int64_t number)
{
    return JSValueMakeNumber(gContext, static_cast<double>(number));
}

int64_t ToInteger(JSValueRef value)
{
    return static_cast<int64_t>(JSValueToNumber(gContext, value, nullptr));
}

/// Of kLength elements.
template <typename Element, typename Convert>
JSValueRef FromArray(const std::vector<Element> &elements, Convert convert)
{
    // On the stack, where the collector sees what lives.
    std::array<JSValueRef, kLength> values{};
    std::transform(elements.begin(), elements.end(), values.begin(), convert);
    return JSObjectMakeArray(gContext, values.size(), values.data(), nullptr);
}

template <typename Element>
std::vector<Element> ToArray(JSValueRef value, Element (*convert)(JSValueRef))
{
    const JSObjectRef array = JSValueToObject(gContext, value, nullptr);
    static const JSStringRef length = JSStringCreateWithUTF8CString("length");
    const auto count = static_cast<size_t>(ToInteger(JSObjectGetProperty(gContext, array, length, nullptr)));
    std::vector<Element> elements;
    elements.reserve(count);
    for (unsigned i = 0; i < count; ++i)
        elements.push_back(convert(JSObjectGetPropertyAtIndex(gContext, array, i, nullptr)));
    return elements;
}

JSValueRef FromDictionary(const Dictionary &dictionary)
{
    const JSObjectRef object = JSObjectMake(gContext, nullptr, nullptr);
    for (const auto &[key, number] : dictionary) {
        const JSStringRef name = JSStringCreateWithUTF8CString(key.c_str());
        JSObjectSetProperty(gContext, object, name, FromInteger(number), kJSPropertyAttributeNone, nullptr);
        JSStringRelease(name);
    }
    return object;
}

Dictionary ToDictionary(JSValueRef value)
{
    const JSObjectRef object = JSValueToObject(gContext, value, nullptr);
    const JSPropertyNameArrayRef names = JSObjectCopyPropertyNames(gContext, object);
    const size_t count = JSPropertyNameArrayGetCount(names);
    Dictionary dictionary;
    for (size_t i = 0; i < count; ++i) {
        const JSStringRef name = JSPropertyNameArrayGetNameAtIndex(names, i);
        dictionary.emplace(TextOf(name), ToInteger(JSObjectGetProperty(gContext, object, name, nullptr)));
    }
    JSPropertyNameArrayRelease(names);
    return dictionary;
}

/// Both ways of a value, which must come back as it went.
template <typename Native, typename From, typename To>
void MeasureBothWays(const std::string &name, const Native &native, From from, To to)
{
    const JSValueRef value = from(native);
    JSValueProtect(gContext, value);
    if (to(value) != native) {
        std::fprintf(stderr, "%s does not come back as it went\n", name.c_str());
        std::exit(1);
    }
    Measure(("jsc/to/" + name).c_str(), [&] { return from(native); }, [](JSValueRef) {},
            [] { JSGarbageCollect(gContext); });
    Measure(("jsc/from/" + name).c_str(), [&] { return to(value); }, [](const auto &) {}, [] {});
    JSValueUnprotect(gContext, value);
}

} // namespace

int main()
{
    KeepMemory();
    gContext = JSGlobalContextCreate(nullptr);
    for (const int64_t units : {20, 100, 10'000}) {
        MeasureBothWays("ascii/" + std::to_string(units), AsciiText(units), FromString, ToString);
        MeasureBothWays("other/" + std::to_string(units), OtherText(units), FromString, ToString);
    }
    MeasureBothWays("number", kFirstNumber, FromInteger, ToInteger);

    std::vector<int64_t> numbers;
    std::vector<std::string> texts;
    Dictionary dictionary;
    for (size_t i = 0; i < kLength; ++i) {
        numbers.push_back(kFirstNumber + static_cast<int64_t>(i));
        texts.push_back("element " + std::to_string(i));
        dictionary.emplace("key " + std::to_string(i), numbers.back());
    }
    MeasureBothWays(
        "numbers/1000", numbers, [](const auto &each) { return FromArray(each, FromInteger); },
        [](JSValueRef value) { return ToArray(value, ToInteger); });
    MeasureBothWays(
        "strings/1000", texts, [](const auto &each) { return FromArray(each, FromString); },
        [](JSValueRef value) { return ToArray(value, ToString); });
    MeasureBothWays("dictionary/1000", dictionary, FromDictionary, ToDictionary);
    JSGlobalContextRelease(gContext);
}
