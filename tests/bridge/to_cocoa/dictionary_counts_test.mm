// How many entries of a host Dictionary are read, and what becomes of unreadable ones.
#include "tests/bridge/to_cocoa/member_conversion.h"
#include "tests/support/host_declarations.h"
#include "tests/support/replaced_method.h"
#include "tests/support/trace.h"
#include "tests/support/values.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

int64_t gCount;

bool AnswerCount(qzlhost::Instance *, const char *name, int64_t *count)
{
    EXPECT_STREQ(name, "Count");
    *count = gCount;
    return true;
}

/// What the getter below returns, with one reference each time, and how often it was called without a key.
Value *gValueOfNoKey;
int gAsksForNoKey;

qzlhost::Instance *GiveValueOfNoKey(qzlhost::Instance *, qzlhost::Instance *key)
{
    gAsksForNoKey += key == nullptr;
    Value reference = *gValueOfNoKey;
    const auto lock =
        reinterpret_cast<void (*)(qzlhost::Instance *)>(Host::Current().Resolver()("REALLockObject"));
    lock(reference.ObjectPointer());
    return reference.ObjectPointer();
}

/// The capacities of the dictionaries that Cocoa refused.
std::vector<NSUInteger> gCapacities;

id RefuseDictionary(id, SEL, NSUInteger capacity)
{
    gCapacities.push_back(capacity);
    return nil;
}

class DictionaryCounts : public MemberConversion {
protected:
    /// A Dictionary with these entries, whose class has a key getter of its own.
    Value NewProgramDictionary(int64_t entries, std::function<Value(const Value &self, int64_t index)> key)
    {
        host().DefineClass(
            {.name = "ProgramDictionary",
             .super = "Dictionary",
             .methods = {{kDictionaryKeyGetter, [key](const Value &self, const auto &arguments) {
                              return key(self, arguments[0].AsInteger());
                          }}}});
        const Value dictionary = host().New("ProgramDictionary");
        for (int64_t entry = 0; entry < entries; ++entry)
            host().DictionarySet(dictionary, "key " + std::to_string(entry), entry);
        return dictionary;
    }

    /// Expects an empty, immutable dictionary for a Dictionary with an entry.
    void ExpectEmptyAndImmutable()
    {
        const Value dictionary = NewDictionary(host(), {{"key", "value"}});
        host().ClearTrace();
        NSDictionary *const converted = ConvertDictionary(dictionary);
        ASSERT_NE(converted, nil);
        EXPECT_EQ([converted count], 0u);
        EXPECT_FALSE([converted isKindOfClass:[NSMutableDictionary class]]);
        EXPECT_EQ(host().CallsOf("REALLoadObjectMethod"), 0) << "no entry is asked for";
    }
};

} // namespace

TEST_F(DictionaryCounts, EntriesThatAreAddedMeanwhileAreNotRead)
{
    Host &host = Start();
    std::vector<int64_t> asked;
    const Value dictionary = NewProgramDictionary(2, [&](const Value &self, int64_t index) {
        asked.push_back(index);
        host.DictionarySet(self, "added " + std::to_string(index), "added");
        return host.DictionaryKey(self, index);
    });
    host.ClearTrace();

    NSDictionary *const converted = ConvertDictionary(dictionary);

    EXPECT_EQ(host.DictionaryCount(dictionary), 4);
    EXPECT_TRUE([converted isEqual:(
                                       @{@"key 0" : @0,
                                         @"key 1" : @1})])
        << [[converted description] UTF8String];
    EXPECT_EQ(asked, (std::vector<int64_t>{0, 1}));
    EXPECT_EQ(host.CallsOf("REALGetPropValueInteger"), 1);
}

TEST_F(DictionaryCounts, EntriesThatAreRemovedMeanwhileAreReadAllTheSame)
{
    Host &host = Start();
    std::vector<int64_t> asked;
    const Value dictionary = NewProgramDictionary(3, [&](const Value &self, int64_t index) {
        asked.push_back(index);
        if (index == 1)
            host.Call(self, "Clear");
        return Value("key " + std::to_string(index));
    });
    host.ClearTrace();

    NSDictionary *const converted = ConvertDictionary(dictionary);

    EXPECT_EQ(asked, (std::vector<int64_t>{0, 1, 2}));
    NSDictionary *const expected = @{@"key 0" : @0, @"key 1" : [NSNull null], @"key 2" : [NSNull null]};
    EXPECT_TRUE([converted isEqual:expected]) << [[converted description] UTF8String];
    EXPECT_EQ(host.CallsOf("REALGetPropValueInteger"), 1);
}

TEST_F(DictionaryCounts, NoOrNegativeCountIsTheEmptyImmutableDictionary)
{
    Start({}, [](Host &unloaded) {
        unloaded.Replace("REALGetPropValueInteger", reinterpret_cast<void *>(&AnswerCount));
    });
    for (const int64_t count : {INT64_C(0), INT64_C(-1), INT64_MIN}) {
        SCOPED_TRACE(count);
        gCount = count;
        ExpectEmptyAndImmutable();
    }
}

TEST_F(DictionaryCounts, HostThatCannotCountGivesTheEmptyImmutableDictionary)
{
    Start({}, [](Host &unloaded) { unloaded.Lack("REALGetPropValueInteger"); });
    ExpectEmptyAndImmutable();
}

TEST_F(DictionaryCounts, HostThatFailsToCountGivesTheEmptyImmutableDictionary)
{
    Start().Fail("REALGetPropValueInteger");
    ExpectEmptyAndImmutable();
}

TEST_F(DictionaryCounts, HostWithoutMethodsGivesAMutableDictionaryWithoutEntries)
{
    Host &host = Start({}, [](Host &unloaded) { unloaded.Lack("REALLoadObjectMethod"); });
    const Value dictionary = NewDictionary(host, {{"key", "value"}});
    host.ClearTrace();

    NSDictionary *const converted = ConvertDictionary(dictionary);

    ASSERT_NE(converted, nil);
    EXPECT_EQ([converted count], 0u);
    EXPECT_TRUE([converted isKindOfClass:[NSMutableDictionary class]]);
    EXPECT_EQ(host.CallsOf("REALGetPropValueInteger"), 1);
    EXPECT_EQ(host.CallsOf("Dictionary.Key") + host.CallsOf("Dictionary.Value"), 0);
}

TEST_F(DictionaryCounts, ValueOfNoKeyIsAskedForAndGivenBackAndNotStored)
{
    Host &host = Start({}, [](Host &unloaded) {
        unloaded.LackMethod(kDictionaryKeyGetter);
        unloaded.ReplaceMethod(kDictionaryGetter, reinterpret_cast<void *>(&GiveValueOfNoKey));
    });
    Value value = host.NewMemoryBlock("value");
    gValueOfNoKey = &value;
    const Value dictionary = NewDictionary(host, {{"key", "value"}, {"another", "value"}});

    NSDictionary *const converted = ConvertDictionary(dictionary);

    ASSERT_NE(converted, nil);
    EXPECT_EQ([converted count], 0u);
    EXPECT_EQ(gAsksForNoKey, 2);
    EXPECT_EQ(host.References(value), 1);
}

TEST_F(DictionaryCounts, DictionaryIsNilWhereCocoaMakesNoneOfItsCapacity)
{
    Host &host = Start();
    const Value dictionary = NewDictionary(host, {{"key", "value"}, {"another", "value"}});
    host.ClearTrace();
    const ReplacedMethod<decltype(RefuseDictionary)> refused(
        class_getClassMethod([NSMutableDictionary class], @selector(dictionaryWithCapacity:)),
        &RefuseDictionary);

    EXPECT_EQ(ConvertDictionary(dictionary), nil);

    EXPECT_EQ(gCapacities, std::vector<NSUInteger>{2});
    EXPECT_EQ(host.CallsOf("REALLoadObjectMethod"), 0) << "no entry is asked for";
}

TEST_F(DictionaryCounts, KeyIsConvertedBeforeItsValue)
{
    Host &host = Start();
    const Value dictionary =
        NewDictionary(host, {{host.NewDate(2024, 2, 29, 14, 5, 9), host.NewMemoryBlock("value")}});
    host.ClearTrace();

    EXPECT_EQ([ConvertDictionary(dictionary) count], 1u);

    const std::vector<std::string> calls = {"REALGetPropValueObject", "RuntimeObjectIsa"};
    EXPECT_EQ(FunctionsCalled(host, calls), calls) << "the date's, then the block's";
}
