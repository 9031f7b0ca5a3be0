// Observers that come and go a thousand times, and leave nothing behind.
#import <Foundation/Foundation.h>
#include <malloc.h>
#include <objc/runtime.h>

#include <map>

#include "tests/support/cocoa_objects.h"
#include "tests/support/plugin_test.h"

using qzlhost::AutoreleasePool;
using qzlhost::Host;
using qzlhost::HostOptions;
using qzlhost::Value;

namespace {

constexpr int kCycles = 1000;
/// Cycles before the counting, in which everything is made that is made only once.
constexpr int kFirstCycles = 100;

/// The number of living objects of each class that has any.
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

/// Makes an observer, posts to it a user info that it reads, and frees it, again and again.
class ObserverCycle {
public:
    explicit ObserverCycle(Host &host)
        : host_(host), center_(DefaultCenter(host)),
          program_(host, "CycleObserver", [this](const Value &notification) { Read(notification); })
    {
    }

    void Run(int times)
    {
        for (int time = 0; time < times; ++time) {
            const AutoreleasePool pool;
            const Value observer = program_.NewObserver();
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
        host_.Get(notification, "Description");
        host_.Get(notification, "objectVariant");
        host_.Get(notification, "userInfo");
        program_.received.clear();
        ++events_;
    }

    Host &host_;
    Value center_;
    ObserverProgram program_;
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
    options.accounts = false; // They grow with each cycle.
    Host &host = Start(options);
    ObserverCycle cycle(host);
    cycle.Run(kFirstCycles);
    const size_t before = mallinfo2().uordblks;

    cycle.Run(kCycles);

    // Less than the smallest block for each cycle.
    EXPECT_LT(mallinfo2().uordblks, before + size_t{kCycles} * 16);
}
