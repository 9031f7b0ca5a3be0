// Observers that come and go a thousand times, and leave nothing behind.
#import <Foundation/Foundation.h>
#include <malloc.h>
#include <objc/runtime.h>

#include <atomic>
#include <functional>
#include <map>
#include <thread>

#include "tests/support/cocoa_objects.h"
#include "tests/support/plugin_test.h"

using qzlhost::AutoreleasePool;
using qzlhost::Host;
using qzlhost::HostOptions;
using qzlhost::Value;

namespace {

constexpr int kCycles = 1000;
/// Before anything is counted: what is made once is made by then.
constexpr int kFirstCycles = 100;

/// How many objects live, of each class that has any.
std::map<std::string, int> LiveCocoaObjectsByClass()
{
    std::vector<Class> classes(static_cast<size_t>(objc_getClassList(nullptr, 0)));
    const int count = objc_getClassList(classes.data(), static_cast<int>(classes.size()));
    std::map<std::string, int> live;
    for (int index = 0; index < count; ++index) {
        const std::string name = class_getName(classes[static_cast<size_t>(index)]);
        if (const int objects = LiveCocoaObjects(name))
            live[name] = objects;
    }
    return live;
}

/// Observers in cycles, with a post that carries and reads back a user info.
class ObserverCycle {
public:
    explicit ObserverCycle(Host &host) : host_(host), center_(DefaultCenter(host))
    {
        qzlhost::ClassDefinition definition;
        definition.name = "CycleObserver";
        definition.super = "NSNotificationObserverQZL";
        definition.events.push_back({"GotNotification(notification as NSNotificationQZL)",
                                     [this](const Value &, const std::vector<Value> &arguments) {
                                         Read(arguments.at(0));
                                         return Value();
                                     }});
        host.DefineClass(std::move(definition));
    }

    void Run(int times)
    {
        for (int time = 0; time < times; ++time) {
            const AutoreleasePool pool;
            const Value observer = host_.New("CycleObserver");
            host_.Call(center_, "addObserver", {observer, "Cycle"});
            const Value userInfo = host_.NewDictionary();
            host_.DictionarySet(userInfo, "time", time);
            host_.DictionarySet(userInfo, "array", host_.NewArray(qzlhost::code::Int64, {Value(int64_t{7})}));
            host_.Call(center_, "postNotificationName", {Value("Cycle"), Value("object"), userInfo});
            host_.ClearTrace();
        }
    }

    int Events() const { return events_; }

private:
    void Read(const Value &notification)
    {
        host_.Get(notification, "Name");
        host_.Get(notification, "Description");
        host_.Get(notification, "objectVariant");
        host_.Get(notification, "userInfo");
        ++events_;
    }

    Host &host_;
    Value center_;
    int events_ = 0;
};

using ThousandCycles = PluginTest;

} // namespace

TEST_F(ThousandCycles, LeaveNoCocoaObjectOfAnyClass)
{
    Host &host = Start();
    ObserverCycle cycle(host);
    cycle.Run(kFirstCycles);
    const std::map<std::string, int> before = LiveCocoaObjectsByClass();

    cycle.Run(kCycles);

    EXPECT_EQ(cycle.Events(), kFirstCycles + kCycles);
    EXPECT_EQ(LiveCocoaObjects("NSNotificationObserver"), 0);
    EXPECT_FALSE(before.empty());
    for (const auto &[className, objects] : LiveCocoaObjectsByClass()) {
        const auto found = before.find(className);
        EXPECT_LE(objects, found == before.end() ? 0 : found->second) << className;
    }
}

TEST_F(ThousandCycles, TakeNoMemory)
{
    HostOptions options;
    options.accounts = false; // which grow
    Host &host = Start(options);
    ObserverCycle cycle(host);
    cycle.Run(kFirstCycles);
    const size_t before = mallinfo2().uordblks;

    cycle.Run(kCycles);

    // Less than the smallest block for each of them.
    EXPECT_LT(mallinfo2().uordblks, before + size_t{kCycles} * 16);
}
