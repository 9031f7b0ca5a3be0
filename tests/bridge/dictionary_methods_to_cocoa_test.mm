// When the methods of a host Dictionary are loaded on the way to Cocoa. Each Dictionary is read by its own.
#include <functional>

#include "family/family.h"
#include "tests/bridge/to_cocoa/member_conversion.h"
#include "tests/support/host_declarations.h"
#include "tests/support/trace.h"
#include "tests/support/values.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

using LoadMethod = void *(qzlhost::Instance *object, const char *declaration);

LoadMethod *gLoadMethod;
/// The Dictionary without a getter.
qzlhost::Instance *gWithoutGetter;

void *LoadMethodButOneGetter(qzlhost::Instance *object, const char *declaration)
{
    const bool withheld = object == gWithoutGetter && std::string_view(declaration) == kDictionaryGetter;
    return withheld ? nullptr : gLoadMethod(object, declaration);
}

class DictionaryMethodsToCocoa : public MemberConversion {
protected:
    /// A Dictionary of a program's own class, whose own methods return keys and values.
    Value NewProgramDictionary(int entries, std::function<Value(int64_t index)> key,
                               std::function<Value(const Value &key)> value)
    {
        host().DefineClass(
            {.name = "ProgramDictionary",
             .super = "Dictionary",
             .methods = {
                 {kDictionaryKeyGetter,
                  [key](const Value &, const auto &arguments) { return key(arguments[0].AsInteger()); }},
                 {kDictionaryGetter,
                  [value](const Value &, const auto &arguments) { return value(arguments[0]); }},
             }});
        const Value dictionary = host().New("ProgramDictionary");
        for (int entry = 0; entry < entries; ++entry)
            host().DictionarySet(dictionary, "stored key " + std::to_string(entry), "stored value");
        return dictionary;
    }

    /// The methods that were loaded, each with the class of its Dictionary.
    std::vector<std::string> Loads()
    {
        std::vector<std::string> loads;
        for (const std::string &arguments : ArgumentsOf(host(), "REALLoadObjectMethod"))
            for (const char *method : {kDictionarySetter, kDictionaryGetter, kDictionaryKeyGetter})
                if (arguments.find('"' + std::string(method) + '"') != std::string::npos)
                    loads.push_back(arguments.substr(0, arguments.find(' ')) + " " + method);
        return loads;
    }
};

/// The same for Dictionaries of these classes, each loaded once.
std::vector<std::string> LoadsFor(const std::vector<std::string> &classes)
{
    std::vector<std::string> loads;
    for (const std::string &className : classes)
        for (const char *method : {kDictionarySetter, kDictionaryGetter, kDictionaryKeyGetter})
            loads.push_back(className + " " + method);
    return loads;
}

} // namespace

TEST_F(DictionaryMethodsToCocoa, AreLoadedOnceForAllEntries)
{
    Host &host = Start();
    const Value dictionary = NewDictionary(host, {{"first", 1}, {"second", 2}, {"third", 3}});
    host.ClearTrace();

    EXPECT_EQ([ConvertDictionary(dictionary) count], 3u);

    EXPECT_EQ(Loads(), LoadsFor({"Dictionary"}));
}

TEST_F(DictionaryMethodsToCocoa, AreLoadedAgainByTheNextConversionOfTheSameDictionary)
{
    Host &host = Start();
    const Value dictionary = NewDictionary(host, {{"key", "value"}});
    host.ClearTrace();

    EXPECT_EQ([ConvertDictionary(dictionary) count], 1u);
    EXPECT_EQ([ConvertDictionary(dictionary) count], 1u);

    EXPECT_EQ(Loads(), LoadsFor({"Dictionary", "Dictionary"}));
}

TEST_F(DictionaryMethodsToCocoa, AreLoadedAgainForTheValueAfterAKeyGetterThatConvertsAnotherDictionary)
{
    Host &host = Start();
    const Value other = NewDictionary(host, {{"other", "value"}});
    const Value dictionary = NewProgramDictionary(
        2,
        [&](int64_t index) {
            EXPECT_EQ([ConvertDictionary(other) count], 1u);
            return Value("key " + std::to_string(index));
        },
        [](const Value &key) { return Value("value of " + key.AsString()); });
    host.ClearTrace();

    NSDictionary *const converted = ConvertDictionary(dictionary);

    // The other Dictionary's getter would return the stored values.
    NSDictionary *const expected = @{@"key 0" : @"value of key 0", @"key 1" : @"value of key 1"};
    EXPECT_TRUE([converted isEqual:expected]) << [[converted description] UTF8String];
    EXPECT_EQ(Loads(), LoadsFor({"ProgramDictionary", "Dictionary", "ProgramDictionary", "Dictionary",
                                 "ProgramDictionary"}));
}

TEST_F(DictionaryMethodsToCocoa, AreLoadedAgainForTheKeyAfterAValueGetterThatConvertsAnotherDictionary)
{
    Host &host = Start();
    const Value other = NewDictionary(host, {{"other", "value"}});
    const Value dictionary = NewProgramDictionary(
        2, [](int64_t index) { return Value("key " + std::to_string(index)); },
        [&](const Value &key) {
            EXPECT_EQ([ConvertDictionary(other) count], 1u);
            return Value("value of " + key.AsString());
        });
    host.ClearTrace();

    NSDictionary *const converted = ConvertDictionary(dictionary);

    NSDictionary *const expected = @{@"key 0" : @"value of key 0", @"key 1" : @"value of key 1"};
    EXPECT_TRUE([converted isEqual:expected]) << [[converted description] UTF8String];
    EXPECT_EQ(Loads(), LoadsFor({"ProgramDictionary", "Dictionary", "ProgramDictionary", "Dictionary"}));
}

TEST_F(DictionaryMethodsToCocoa, OfTheOuterDictionaryAreNotThoseOfOneWithoutThem)
{
    Host &host = Start({}, [](Host &unloaded) {
        gLoadMethod = reinterpret_cast<LoadMethod *>(unloaded.Resolver()("REALLoadObjectMethod"));
        unloaded.Replace("REALLoadObjectMethod", reinterpret_cast<void *>(&LoadMethodButOneGetter));
    });
    const Value inner = NewDictionary(host, {{"inner", "value"}});
    const Value outer = NewDictionary(host, {{"first", inner}, {"second", 2}});
    gWithoutGetter = inner.ObjectPointer();

    NSDictionary *const converted = ConvertDictionary(outer);

    NSDictionary *const expected = @{@"first" : @{@"inner" : [NSNull null]}, @"second" : @2};
    EXPECT_TRUE([converted isEqual:expected]) << [[converted description] UTF8String];
}

TEST_F(DictionaryMethodsToCocoa, AreLoadedAgainAfterAConversionThatEndedInACocoaException)
{
    Host &host = Start();
    Family family(host);
    family.OfferExceptions();
    const Value refused = NewDictionary(host, {{"key", host.NewArray(qzlhost::code::Object, {Value()})}});
    host.ClearTrace();

    EXPECT_NE(ExceptionOf(refused), nil);
    EXPECT_NE(ExceptionOf(refused), nil);

    EXPECT_EQ(Loads(), LoadsFor({"Dictionary", "Dictionary"}));
}
