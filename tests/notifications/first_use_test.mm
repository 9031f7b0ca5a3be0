// The library's first uses of its host, on many threads at once.
#import <Foundation/Foundation.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <thread>

#include "family/family.h"
#include "tests/support/leak_check_pause.h"
#include "tests/support/plugin_test.h"
#include "tests/support/value_model.h"

using qzlhost::AutoreleasePool;
using qzlhost::Host;
using qzlhost::Value;

namespace {

constexpr int kThreads = 16;

/// Runs `body` in every thread at once, each with its number from 0 on.
void RunAtOnce(const std::function<void(int)> &body)
{
    std::atomic<int> waiting{0};
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&, thread] {
            // Of what several threads make at once on first use, GNUstep keeps one and loses the others.
            const LeakCheckPause pause;
            const AutoreleasePool pool;
            ++waiting;
            while (waiting < kThreads)
                std::this_thread::yield();
            body(thread);
        });
    }
    for (std::thread &thread : threads)
        thread.join();
}

/// A dictionary with a value of each kind, under the kind's name. The number makes the values distinct.
Value NewUserInfo(Host &host, int number)
{
    const std::string text = "text " + std::to_string(number);
    const Value inner = host.NewDictionary();
    host.DictionarySet(inner, "Number", number);
    const Value userInfo = host.NewDictionary();
    host.DictionarySet(userInfo, "String", text);
    host.DictionarySet(userInfo, "Text", Value::TextOf(text));
    host.DictionarySet(userInfo, "Integer", number);
    host.DictionarySet(userInfo, "Double", number + 0.5);
    host.DictionarySet(userInfo, "Boolean", number % 2 == 0);
    host.DictionarySet(userInfo, "Date", host.NewDate(2000 + number, 1, 2, 3, 4, 5));
    host.DictionarySet(userInfo, "MemoryBlock", host.NewMemoryBlock(text));
    host.DictionarySet(userInfo, "FolderItem", host.NewFolderItem("/tmp/" + text));
    host.DictionarySet(userInfo, "Array", host.NewArray(qzlhost::code::String, {Value(text), Value("last")}));
    host.DictionarySet(userInfo, "Dictionary", inner);
    host.DictionarySet(userInfo, "Wrapper", host.New("NSNotificationCenterQZL"));
    return userInfo;
}

/// Makes a notification with every kind of value and reads it back.
void CarryEverything(Host &host, int number)
{
    const std::string name = "Name " + std::to_string(number);
    const Value sent = NewUserInfo(host, number);
    const Value notification = host.New("NSNotificationQZL", {Value(name), Value(number), sent});
    EXPECT_EQ(host.Get(notification, "Name").AsString(), name);
    EXPECT_EQ(host.Get(notification, "objectVariant").AsInteger(), number);
    EXPECT_NE(host.Get(notification, "Description").AsString().find(name), std::string::npos);
    const Value read = host.Get(notification, "userInfo");
    EXPECT_EQ(host.DictionaryCount(read), 11);
    EXPECT_EQ(Sorted(ModelOf(host, read)), AfterTrip(ModelOf(host, sent)));
    EXPECT_EQ(HandleOf<id>(host, host.DictionaryGet(read, "Wrapper")), [NSNotificationCenter defaultCenter]);
}

using LoadMethod = void *(*)(qzlhost::Instance *, const char *);
LoadMethod gLoadMethod = nullptr;

/// The host's own function, slower, so that the threads meet in it.
void *LoadMethodSlowly(qzlhost::Instance *object, const char *declaration)
{
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
    return gLoadMethod(object, declaration);
}

using FirstUseByManyThreads = PluginTest;

} // namespace

TEST_F(FirstUseByManyThreads, CarriesEveryValueOfEveryThread)
{
    Host &host = Start();
    RunAtOnce([&](int thread) { CarryEverything(host, thread); });
}

TEST_F(FirstUseByManyThreads, LooksEachFunctionUpOnlyDuringTheFirstUse)
{
    Host &host = Start();
    RunAtOnce([&](int thread) { CarryEverything(host, thread); });
    std::map<std::string, int> asks;
    for (const std::string &function : Host::Functions())
        asks[function] = host.AsksFor(function);

    RunAtOnce([&](int thread) { CarryEverything(host, thread); });

    EXPECT_GE(asks["PluginNewInstance"], 1);
    EXPECT_GE(asks["REALLoadObjectMethod"], 1);
    EXPECT_GE(asks["pluginObjectType"], 1);
    for (const auto &[function, count] : asks) {
        EXPECT_EQ(host.AsksFor(function), count) << function;
        EXPECT_LE(count, 2 * kThreads) << function; // some functions are kept in two places
    }
}

TEST_F(FirstUseByManyThreads, ReadsWholeADictionaryThatAllOfThemShare)
{
    Host &host = Start({}, [](Host &unloaded) {
        constexpr const char *kFunction = "REALLoadObjectMethod";
        gLoadMethod = reinterpret_cast<LoadMethod>(unloaded.Resolver()(kFunction));
        unloaded.Replace(kFunction, reinterpret_cast<void *>(LoadMethodSlowly));
    });
    const Value userInfo = host.NewDictionary();
    host.DictionarySet(userInfo, "first", 1);
    host.DictionarySet(userInfo, "second", 2);
    std::atomic<int> incomplete{0};

    RunAtOnce([&](int) {
        for (int round = 0; round < 5; ++round) {
            const Value notification = host.New("NSNotificationQZL", {"Shared", Value(), userInfo});
            const AutoreleasePool pool;
            incomplete += [[HandleOf<NSNotification *>(host, notification) userInfo] count] == 2 ? 0 : 1;
        }
    });

    EXPECT_EQ(incomplete, 0);
}

TEST_F(FirstUseByManyThreads, FindsWhatTheFamilyOffersAndKeepsIt)
{
    Host &host = Start();
    Family family(host);
    family.OfferRegistry();
    family.OfferPreparation();
    // Makes no wrapper: the registry itself is for one thread at a time.
    const auto askForTheType = [&](int) {
        EXPECT_NE(
            host.CallShared("NSDistributedNotificationCenterQZL", "NSLocalNotificationCenterType").AsString(),
            "");
    };
    RunAtOnce(askForTheType);
    const int registryAsks = family.RegistryAsks();
    const int preparations = family.Preparations();

    RunAtOnce(askForTheType);

    EXPECT_GE(registryAsks, 1);
    EXPECT_LE(registryAsks, kThreads);
    EXPECT_GE(preparations, 1);
    EXPECT_LE(preparations, kThreads);
    EXPECT_EQ(family.RegistryAsks(), registryAsks);
    EXPECT_EQ(family.Preparations(), preparations);
}
