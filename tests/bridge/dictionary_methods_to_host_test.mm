// When the methods of a host Dictionary are loaded on the way to the host, and in which order an entry is
// converted, stored and given back.
#import <Foundation/Foundation.h>

#include <cstring>

#include "tests/bridge/to_host/program_reading_test.h"
#include "tests/support/host_declarations.h"
#include "tests/support/log_capture.h"
#include "tests/support/ordered_dictionary.h"
#include "tests/support/trace.h"

using qzlhost::Host;
using qzlhost::Value;

/// Keys that grow by one each time they are counted.
@interface QZLTestGrowingKeys : NSArray {
@public
    NSUInteger counts;
}
@end

@implementation QZLTestGrowingKeys
- (NSUInteger)count
{
    return 1 + ++counts;
}
- (id)objectAtIndex:(NSUInteger)index
{
    return [NSString stringWithFormat:@"key %d", static_cast<int>(index)];
}
@end

namespace {

class DictionaryMethodsToHost : public ProgramReadingTest {
protected:
    void ExpectLoadsOfEach(int64_t count)
    {
        for (const char *declaration : {kDictionarySetter, kDictionaryGetter, kDictionaryKeyGetter})
            EXPECT_EQ(LoadsOf(host(), declaration), count) << declaration;
    }
};

using NewInstance = void *(const char *name);
using LockObject = void(void *instance);

NewInstance *gNewInstance;
LockObject *gLockObject;
void *gOnlyDictionary;

/// The host's own function, except that all Dictionaries are the same.
void *MakeOneDictionary(const char *name)
{
    if (std::strcmp(name, "Dictionary") != 0)
        return gNewInstance(name);
    if (gOnlyDictionary == nullptr)
        gOnlyDictionary = gNewInstance(name);
    else
        gLockObject(gOnlyDictionary);
    return gOnlyDictionary;
}

/// With a host that returns the same Dictionary each time: a new one may have the address of an old one.
class OneDictionary : public DictionaryMethodsToHost {
protected:
    Host &StartWithOneDictionary()
    {
        return Start({}, [](Host &unloaded) {
            gNewInstance = reinterpret_cast<NewInstance *>(unloaded.Resolver()("PluginNewInstance"));
            gLockObject = reinterpret_cast<LockObject *>(unloaded.Resolver()("REALLockObject"));
            unloaded.Replace("PluginNewInstance", reinterpret_cast<void *>(&MakeOneDictionary));
        });
    }
};

} // namespace

TEST_F(DictionaryMethodsToHost, AreLoadedOnceForAFlatDictionary)
{
    Host &host = Start();
    EXPECT_EQ(host.DictionaryCount(ReadUserInfo(@{@"a" : @1, @"b" : @2, @"c" : @3})), 3);
    ExpectLoadsOfEach(1);
    EXPECT_EQ(host.CallsOf("REALLoadObjectMethod"), 3);
}

TEST_F(DictionaryMethodsToHost, AreLoadedAgainAfterADictionaryAmongTheValues)
{
    Host &host = Start();
    NSDictionary *const inner = OrderedDictionary(@[ @"x", @"y" ], @[ @1, @2 ]);
    const Value dictionary =
        ReadUserInfo(OrderedDictionary(@[ @"before", @"nested", @"after", @"empty", @"last" ],
                                       @[ @1, inner, @2, [NSDictionary dictionary], @3 ]));

    ASSERT_EQ(host.DictionaryCount(dictionary), 5);
    EXPECT_EQ(host.DictionaryGet(dictionary, "before").AsInteger(), 1);
    EXPECT_EQ(host.DictionaryGet(dictionary, "after").AsInteger(), 2);
    EXPECT_EQ(host.DictionaryGet(dictionary, "last").AsInteger(), 3);
    const Value nested = host.DictionaryGet(dictionary, "nested");
    EXPECT_EQ(host.DictionaryCount(nested), 2);
    EXPECT_EQ(host.DictionaryGet(nested, "x").AsInteger(), 1);
    EXPECT_EQ(host.DictionaryGet(nested, "y").AsInteger(), 2);
    EXPECT_EQ(host.DictionaryCount(host.DictionaryGet(dictionary, "empty")), 0);
    // For the outer one at first, after the nested one and after the empty one; for the nested one once.
    ExpectLoadsOfEach(4);
}

TEST_F(DictionaryMethodsToHost, AreNotLoadedAgainAfterADictionaryWithoutAListOfKeys)
{
    Host &host = Start();
    const Value dictionary = ReadUserInfo(
        OrderedDictionary(@[ @"before", @"nested", @"after" ], @[ @1, OrderedDictionary(nil, nil), @2 ]));
    ASSERT_EQ(host.DictionaryCount(dictionary), 3);
    EXPECT_EQ(host.DictionaryGet(dictionary, "after").AsInteger(), 2);
    const Value nested = host.DictionaryGet(dictionary, "nested");
    EXPECT_EQ(host.ClassOf(nested), "Dictionary");
    EXPECT_EQ(host.DictionaryCount(nested), 0);
    ExpectLoadsOfEach(1);
}

TEST_F(DictionaryMethodsToHost, AreLoadedAgainAfterADictionaryAmongTheKeys)
{
    Host &host = Start();
    const Value dictionary =
        ReadUserInfo(OrderedDictionary(@[ @"before", @{@"a" : @"key"}, @"after" ], @[ @1, @2, @3 ]));
    ASSERT_EQ(host.DictionaryCount(dictionary), 3);
    EXPECT_EQ(host.DictionaryGet(dictionary, "after").AsInteger(), 3);
    ExpectLoadsOfEach(3);
}

TEST_F(DictionaryMethodsToHost, AreLoadedAfterADictionaryInsideAnArray)
{
    Host &host = Start();
    const Value dictionary =
        ReadUserInfo(OrderedDictionary(@[ @"list", @"after" ], @[ @[
                                                                     @{@"in" : @1}
                                                                 ],
                                                                  @2 ]));
    const Value list = host.DictionaryGet(dictionary, "list");
    EXPECT_EQ(host.DictionaryGet(host.ArrayElement(list, 0), "in").AsInteger(), 1);
    EXPECT_EQ(host.DictionaryGet(dictionary, "after").AsInteger(), 2);
    ExpectLoadsOfEach(2);
}

TEST_F(OneDictionary, HasItsMethodsLoadedForEachConversion)
{
    StartWithOneDictionary();
    const Value first = ReadUserInfo(@{@"a" : @1, @"b" : @2});
    ExpectLoadsOfEach(1);
    const Value second = ReadUserInfo(@{@"c" : @3});
    ASSERT_EQ(first.ObjectPointer(), second.ObjectPointer());
    ExpectLoadsOfEach(2);
}

TEST_F(OneDictionary, HasItsMethodsLoadedAfterAConversionThatRaised)
{
    StartWithOneDictionary();
    const Value first = ReadUserInfo(@{});
    const LogCapture log;
    EXPECT_TRUE(ReadUserInfo(OrderedDictionary(@[ @"whole", @"broken" ], @[ @1, @2 ])).IsNil());
    EXPECT_EQ(log.Lines().size(), 1u) << "the exception";
    ExpectLoadsOfEach(1);
    const Value second = ReadUserInfo(@{@"c" : @3});
    ASSERT_EQ(first.ObjectPointer(), second.ObjectPointer());
    ExpectLoadsOfEach(2);
}

TEST_F(DictionaryMethodsToHost, AreLoadedOnceKeyAndValueAreConvertedInThisOrder)
{
    Host &host = Start();
    host.ClearTrace();
    ReadUserInfo(@{@"key" : @7});
    std::vector<std::string> functions;
    for (const qzlhost::TraceEntry &entry : host.Trace())
        if (entry.function.find("Variant") != std::string::npos || entry.arguments.find("Dictionary #") == 0)
            functions.push_back(entry.function);
    EXPECT_EQ(functions, (std::vector<std::string>{"StringToVariant", "IntegerToVariant",
                                                   "REALLoadObjectMethod", "REALLoadObjectMethod",
                                                   "REALLoadObjectMethod", "Dictionary.Value="}));
}

TEST_F(DictionaryMethodsToHost, GetTheEntryBeforeItsKeyAndThenItsValueAreGivenBack)
{
    Host &host = Start();
    const Value dictionary = ReadUserInfo(OrderedDictionary(@[ @"one", @"two" ], @[ @7, @8 ]));
    std::vector<std::string> calls;
    for (const qzlhost::TraceEntry &entry : host.Trace()) {
        if (entry.function == "Dictionary.Value=")
            calls.push_back("stored");
        // The content of the variant, after its class and number.
        if (entry.function == "REALUnlockObject" && entry.arguments.find("Variant") == 0)
            calls.push_back(entry.arguments.substr(entry.arguments.rfind(' ') + 1));
    }
    EXPECT_EQ(calls, (std::vector<std::string>{"stored", "one", "7", "stored", "two", "8"}));
}

TEST_F(DictionaryMethodsToHost, StoreAsManyEntriesAsThereWereKeysAtFirst)
{
    Host &host = Start();
    QZLTestGrowingKeys *const keys = [[[QZLTestGrowingKeys alloc] init] autorelease];
    NSDictionary *const entries = OrderedDictionary(keys, nil);
    keys->counts = 0;
    const Value dictionary = ReadUserInfo(entries);
    EXPECT_EQ(host.DictionaryCount(dictionary), 2);
    EXPECT_TRUE(host.DictionaryGet(dictionary, "key 1").IsNil());
}

TEST_F(DictionaryMethodsToHost, AreNotNeededWithoutAListOfKeys)
{
    Host &host = Start();
    const Value dictionary = ReadUserInfo(OrderedDictionary(nil, nil));
    EXPECT_EQ(host.ClassOf(dictionary), "Dictionary");
    EXPECT_EQ(host.DictionaryCount(dictionary), 0);
    EXPECT_EQ(host.References(dictionary), 1);
    EXPECT_EQ(host.CallsOf("REALLoadObjectMethod"), 0);
}
