// A host program that covers the whole library.
#include "tests/sweep/program.h"
#include "tests/support/values.h"

#import <AppKit/AppKit.h>
#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <atomic>
#include <memory>
#include <thread>

#include "family/family.h"
#include "family/wrapper_classes.h"
#include "qzlhost/value_json.h"
#include "tests/notifications/member_names.h"

using qzlhost::AutoreleasePool;
using qzlhost::Host;
using qzlhost::Value;
namespace code = qzlhost::code;
namespace encoding = qzlhost::encoding;

/// A distributed centre without a daemon, for which thousands of processes would wait.
@interface QZLQuietCenter : NSDistributedNotificationCenter
@end

@implementation QZLQuietCenter
- (void)addObserver:(id)observer
              selector:(SEL)selector
                  name:(NSString *)name
                object:(NSString *)object
    suspensionBehavior:(NSNotificationSuspensionBehavior)behavior
{
    (void)observer, (void)selector, (void)name, (void)object, (void)behavior;
}
- (void)removeObserver:(id)observer name:(NSString *)name object:(NSString *)object
{
    (void)observer, (void)name, (void)object;
}
- (void)postNotificationName:(NSString *)name
                      object:(NSString *)object
                    userInfo:(NSDictionary *)userInfo
          deliverImmediately:(BOOL)atOnce
{
    (void)name, (void)object, (void)userInfo, (void)atOnce;
}
@end

namespace {

/// Replaces the methods that return a distributed centre.
id QuietCenter(id, SEL)
{
    static const id center = NSAllocateObject([QZLQuietCenter class], 0, nullptr);
    return center;
}

void QuietenDistributedCenters()
{
    for (const SEL selector : { @selector(defaultCenter), @selector(notificationCenterForType:) })
        method_setImplementation(class_getClassMethod([NSDistributedNotificationCenter class], selector),
                                 reinterpret_cast<IMP>(QuietCenter));
}

thread_local bool gInLibrary = false;

constexpr double kPatience = 10;
constexpr char kName[] = "Swept";

/// The state of a thread that posts.
struct Poster {
    std::atomic<bool> done{false};
    std::string result;
};

/// Runs a thread and joins it at the end. A poster that is not done waits for ever, because its delivery
/// ended with an exception that nobody caught; it is left behind.
class PosterThread {
public:
    PosterThread(std::shared_ptr<Poster> poster, std::function<void()> body)
        : poster_(std::move(poster)), thread_(std::move(body))
    {
    }
    ~PosterThread()
    {
        if (poster_->done)
            thread_.join();
        else
            thread_.detach();
    }
    PosterThread(const PosterThread &) = delete;
    PosterThread &operator=(const PosterThread &) = delete;

private:
    std::shared_ptr<Poster> poster_;
    std::thread thread_;
};

int64_t Address(id object)
{
    return reinterpret_cast<int64_t>(object);
}

std::string LongText()
{
    return std::string(150, 'x') + "\xC3\xBC";
}

} // namespace

bool InLibrary()
{
    return gInLibrary;
}

LibraryCall::LibraryCall(bool in) : outer_(gInLibrary)
{
    gInLibrary = in;
}

LibraryCall::~LibraryCall()
{
    gInLibrary = outer_;
}

SweptProgram::SweptProgram(Host &host, Family &family) : host_(host)
{
    QuietenDistributedCenters();
    family.OfferRegistry();
    family.OfferPreparation();
    family.OfferExceptions();
    family.OfferObjectWrapper();
    DefineWrapperClass(host, "NSTimerQZL");
    DefineWrapperClass(host, "NSBundleQZL");
    for (const FamilyTime &time : kFamilyTimes) {
        family.OfferTimeClass(time);
        family.OfferTimeToHost(time);
        family.OfferTimeToCocoa(time);
    }
    for (const char *name : {"NSRectQZL", "NSSizeQZL", "NSPointQZL", "NSRangeQZL"})
        host.DefineClass({.name = name, .super = "", .dataSize = 32});
    host.DefineClass({.name = "ProgramObject", .super = ""});
    host.DefineClass({.name = "ProgramObserver",
                      .super = kObserver,
                      .events = {{"GotNotification(notification as NSNotificationQZL)",
                                  [this](const Value &, const std::vector<Value> &arguments) {
                                      Heard(arguments.at(0));
                                      return Value();
                                  }}}});
    AddMembers();
    AddValuesToCocoa();
    AddValuesToHost();
    AddDelivery();
}

std::vector<Outcome> SweptProgram::Run()
{
    std::vector<Outcome> outcomes;
    for (const Step &step : steps_) {
        const AutoreleasePool pool;
        inner_.clear();
        outcomes.push_back({step.name, ResultOf(step.body)});
        const Value stray = host_.TakeException();
        if (!stray.IsNil())
            outcomes.push_back({step.name + ", left over", host_.ClassOf(stray)});
        for (const Outcome &inner : inner_)
            outcomes.push_back({step.name + ", " + inner.step, inner.result});
    }
    return outcomes;
}

void SweptProgram::AddStep(std::string name, std::function<std::string()> body)
{
    steps_.push_back({std::move(name), std::move(body)});
}

Value SweptProgram::New(const char *className, const std::vector<Value> &arguments)
{
    const LibraryCall call;
    return host_.New(className, arguments);
}

Value SweptProgram::Call(const Value &self, const char *member, const std::vector<Value> &arguments)
{
    const LibraryCall call;
    return host_.Call(self, member, arguments);
}

Value SweptProgram::CallShared(const char *className, const char *member, const std::vector<Value> &arguments)
{
    const LibraryCall call;
    return host_.CallShared(className, member, arguments);
}

Value SweptProgram::Get(const Value &self, const char *property)
{
    const LibraryCall call;
    return host_.Get(self, property);
}

std::string SweptProgram::Shown(const Value &value)
{
    return LineOfJson(ValueAsJson(host_, value));
}

Value SweptProgram::Notification(const Value &object, const Value &info)
{
    return CallShared(kNotification, "notificationWithName", {kName, object, info});
}

void SweptProgram::Heard(const Value &notification)
{
    const LibraryCall outside(false);
    if (notification.IsNil()) {
        inner_.push_back({"heard", "Nil"});
        return;
    }
    for (const char *property : {"Name", "objectVariant", "userInfo"})
        inner_.push_back(
            {std::string("heard ") + property, ResultOf([&] { return Shown(Get(notification, property)); })});
}

void SweptProgram::AddMembers()
{
    const auto info = [this] { return NewDictionary(host_, {{"key", "value"}}); };
    for (const char *className : {kObserver, kNotification, kCenter, kDistributed, kDiscs})
        AddStep(std::string("bare ") + className, [this, className] {
            const LibraryCall call;
            return host_.ClassOf(host_.NewWithoutConstructor(className));
        });
    for (const char *className : {kObserver, kCenter, kDistributed, kDiscs})
        AddStep(std::string("two constructors of ") + className, [this, className] {
            const Value instance = New(className);
            Call(instance, "Constructor");
            return std::string();
        });
    AddStep("a constructor with a handle", [this] {
        NSNotification *const notification = [NSNotification notificationWithName:@"handled" object:nil];
        return Shown(Get(New(kNotification, {Address(notification)}), "Name"));
    });
    AddStep("a constructor without a handle", [this] { return Shown(New(kNotification, {0})); });
    AddStep("a constructor by name", [this, info] {
        const Value notification = New(kNotification, {kName, "object", info()});
        return Shown(Get(notification, "Name")) + Shown(Get(notification, "objectVariant")) +
               Shown(Get(notification, "userInfo"));
    });
    AddStep("members of a notification", [this, info] {
        const Value notification = Notification("object", info());
        Call(notification, "Print");
        const bool hasHandle = Get(notification, "objectHandle").AsInteger() != 0;
        const bool hasText = !Get(notification, "Description").AsString().empty();
        return Shown(Get(notification, "_exception")) + Shown(hasHandle) + Shown(hasText);
    });
    AddStep("an observer that is missing", [this] {
        Call(New(kCenter), "addObserver", {Value(), kName});
        return std::string();
    });
    AddStep("a distributed observer that is missing", [this] {
        Call(New(kDistributed), "addObserver", {Value(), kName, Value(), 4});
        return std::string();
    });
    AddStep("no notification", [this] {
        Call(New(kCenter), "postNotification", {Value()});
        return std::string();
    });
    AddStep("a distributed centre", [this, info] {
        const Value center = New(kDistributed);
        const Value observer = New("ProgramObserver");
        Call(center, "addObserver", {observer, kName, "object", 4});
        Call(center, "removeObserver", {observer, kName, "object"});
        Call(center, "postNotificationName", {kName, "object", info(), uint32_t{1}});
        Call(center, "postNotificationName", {kName, "object", info(), true});
        {
            const LibraryCall call;
            host_.Set(center, "suspended", true);
        }
        return Shown(Get(center, "suspended").Code() == code::Boolean);
    });
    AddStep("distributed shared members", [this] {
        const Value type = CallShared(kDistributed, "NSLocalNotificationCenterType");
        const Value center = CallShared(kDistributed, "defaultCenter");
        return Shown(type) + Shown(center) +
               Shown(CallShared(kDistributed, "notificationCenterForType", {type}));
    });
    AddStep("the disc-recording centre", [this] {
        const Value center = New(kDiscs);
        const Value observer = New("ProgramObserver");
        Call(center, "addObserver", {observer, kName, "object"});
        Call(center, "removeObserver", {observer, kName, "object"});
        return std::string();
    });
}

void SweptProgram::AddValuesToCocoa()
{
    const auto add = [this](const char *name, std::function<Value()> make) {
        AddStep(std::string("to Cocoa: ") + name, [this, make = std::move(make)] {
            const Value object = make();
            const Value notification = Notification(object, NewDictionary(host_, {{"key", object}}));
            return Shown(Get(notification, "objectVariant")) + Shown(Get(notification, "userInfo"));
        });
    };
    const auto addArray = [this, add](const char *name, int64_t element, std::vector<Value> (*make)(Host &)) {
        add(name, [this, element, make] { return host_.NewArray(element, make(host_)); });
    };
    add("Nil", [] { return Value(); });
    add("a boolean", [] { return Value(true); });
    add("an integer", [] { return Value::OfCode(code::Int32, -7); });
    add("an int64", [] { return Value(int64_t{1} << 40); });
    add("a colour", [] { return Value::OfCode(code::Color, 0x123456); });
    add("a single", [] { return Value(1.5F); });
    add("a double", [] { return Value(0.1); });
    add("a currency", [] { return Value::OfCode(code::Currency, 2.5); });
    add("a string", [] { return Value("text"); });
    add("the empty string", [] { return Value::EmptyString(); });
    add("a long string", [] { return Value(LongText()); });
    add("raw bytes", [] { return Value::StringOfBytes("\x80z", encoding::Unknown); });
    add("a text", [] { return Value::TextOf("text"); });
    add("a date", [this] { return host_.NewDate(2024, 2, 29, 14, 5, 9); });
    add("a memory block", [this] { return host_.NewMemoryBlock("bytes"); });
    add("a folder item", [this] { return host_.NewFolderItem("/usr/bin"); });
    add("a missing folder item", [this] { return host_.NewFolderItem("/usr/missing \xC3\xBC"); });
    add("the root folder", [this] { return host_.NewFolderItem("/"); });
    add("a Dictionary", [this] {
        const Value inner = NewDictionary(host_, {{1, "one"}});
        return NewDictionary(host_, {{"inner", inner}, {"nothing", Value()}, {"last", 2}});
    });
    add("an empty Dictionary", [this] { return host_.NewDictionary(); });
    addArray("integers", code::Int32, [](Host &) { return std::vector<Value>{1, 2}; });
    addArray("int64s", code::Int64, [](Host &) { return std::vector<Value>{int64_t{1}, int64_t{2}}; });
    addArray("singles", code::Single, [](Host &) { return std::vector<Value>{1.5F}; });
    addArray("doubles", code::Double, [](Host &) { return std::vector<Value>{1.5, 2.5}; });
    addArray("booleans", code::Boolean, [](Host &) { return std::vector<Value>{true, false}; });
    addArray("dates", code::Date, [](Host &host) {
        return std::vector<Value>{host.NewDate(2001, 1, 1, 0, 0, 0), host.NewDate(2024, 2, 29, 14, 5, 9)};
    });
    addArray("strings", code::String, [](Host &) { return std::vector<Value>{"one", Value::EmptyString()}; });
    addArray("texts", code::Text, [](Host &) { return std::vector<Value>{Value::TextOf("one")}; });
    addArray("objects", code::Object, [](Host &host) {
        return std::vector<Value>{Value(1).Boxed(), Value("two").Boxed(), host.NewDictionary()};
    });
    addArray("objects with Nil", code::Object, [](Host &) { return std::vector<Value>{Value()}; });
    add("an array of arrays", [this] {
        return host_.NewArray(
            code::Object, {host_.NewArray(code::Int64, {int64_t{1}}), host_.NewArray(code::String, {"two"})});
    });
    add("a wrapper", [this] { return Notification(); });
    for (const char *name :
         {"NSRectQZL", "NSSizeQZL", "NSPointQZL", "NSRangeQZL", "QTKitTimeQZL", "CMTimeQZL", "ProgramObject"})
        add(name, [this, name] { return host_.NewWithoutConstructor(name); });
}

void SweptProgram::AddValuesToHost()
{
    const auto add = [this](const char *name, id (*make)()) {
        AddStep(std::string("to the host: ") + name, [this, make] {
            const id object = make();
            NSNotification *const made = [NSNotification
                notificationWithName:@"Swept"
                              object:object
                            userInfo:[NSDictionary dictionaryWithObject:object forKey:@"key"]];
            const Value notification = New(kNotification, {Address(made)});
            return Shown(Get(notification, "objectVariant")) + Shown(Get(notification, "userInfo"));
        });
    };
    add("the null", [] { return (id)[NSNull null]; });
    add("a boolean", [] { return (id)[NSNumber numberWithBool:YES]; });
    add("an int", [] { return (id)[NSNumber numberWithInt:-7]; });
    add("an unsigned long", [] { return (id)[NSNumber numberWithUnsignedLong:7]; });
    add("a long", [] { return (id)[NSNumber numberWithLong:1L << 40]; });
    add("a float", [] { return (id)[NSNumber numberWithFloat:1.5F]; });
    add("a double", [] { return (id)[NSNumber numberWithDouble:0.1]; });
    add("a string", [] { return (id) @"text"; });
    add("an empty string", [] { return (id) @""; });
    add("a long string", [] { return (id)[NSString stringWithUTF8String:LongText().c_str()]; });
    add("data", [] { return (id)[NSData dataWithBytes:"bytes" length:5]; });
    add("no data", [] { return (id)[NSData data]; });
    add("a date", [] { return (id)[NSDate dateWithTimeIntervalSinceReferenceDate:1e8]; });
    add("a file", [] { return (id)[NSURL fileURLWithPath:@"/usr/bin"]; });
    add("a missing file", [] { return (id)[NSURL fileURLWithPath:@"/usr/missing"]; });
    add("the root folder", [] { return (id)[NSURL fileURLWithPath:@"/"]; });
    add("a web page", [] { return (id)[NSURL URLWithString:@"http://example.org/page"]; });
    add("an array", [] {
        return (id)[NSArray arrayWithObjects:@"one", [NSNumber numberWithInt:2], [NSNull null],
                                             [NSArray arrayWithObject:@"inner"], nil];
    });
    add("a set", [] { return (id)[NSSet setWithObject:@"one"]; });
    add("a dictionary", [] {
        return (id)[NSDictionary dictionaryWithObjectsAndKeys:[NSDictionary dictionaryWithObject:@"one"
                                                                                          forKey:@"key"],
                                                              @"inner", @"two", @"second", nil];
    });
    add("a timer", [] { return (id)[NSTimer timerWithTimeInterval:1 invocation:nil repeats:NO]; });
    add("a notification", [] { return (id)[NSNotification notificationWithName:@"inner" object:nil]; });
    add("a centre", [] { return (id)[NSNotificationCenter defaultCenter]; });
    add("a bundle", [] { return (id)[NSBundle mainBundle]; });
    add("a rectangle", [] { return (id)[NSValue valueWithRect:NSMakeRect(1, 2, 3, 4)]; });
    add("a size", [] { return (id)[NSValue valueWithSize:NSMakeSize(1, 2)]; });
    add("a point", [] { return (id)[NSValue valueWithPoint:NSMakePoint(1, 2)]; });
    add("a range", [] { return (id)[NSValue valueWithRange:NSMakeRange(1, 2)]; });
    add("a pointer", [] { return (id)[NSValue valueWithPointer:nullptr]; });
    add("an object of no known class", [] { return (id)[[[NSObject alloc] init] autorelease]; });
}

void SweptProgram::AddDelivery()
{
    AddStep("delivery to an observer without a handler", [this] {
        const Value observer = New(kObserver);
        const Value center = CallShared(kCenter, "defaultCenter");
        Call(center, "addObserver", {observer, kName});
        Call(center, "postNotificationName", {kName});
        Call(center, "removeObserver", {observer});
        return std::string();
    });
    AddStep("delivery on the main thread", [this] {
        const Value observer = New("ProgramObserver");
        const Value center = CallShared(kCenter, "defaultCenter");
        const Value info = NewDictionary(host_, {{"key", "value"}});
        Call(center, "addObserver", {observer, kName});
        Call(center, "postNotificationName", {kName});
        Call(center, "postNotificationName", {kName, "object"});
        Call(center, "postNotificationName", {kName, "object", info});
        Call(center, "postNotification", {Notification("object", info)});
        Call(center, "removeObserver", {observer, kName});
        return std::string();
    });
    AddStep("delivery from another thread", [this] {
        const Value observer = New("ProgramObserver");
        const Value center = CallShared(kCenter, "defaultCenter");
        Call(center, "addObserver", {observer, kName});
        const auto poster = std::make_shared<Poster>();
        const PosterThread thread(poster, [this, center, poster] {
            const AutoreleasePool pool;
            poster->result = ResultOf([&] {
                Call(center, "postNotificationName", {kName, "object"});
                return std::string("resumed");
            });
            poster->done = true;
            // Wakes the main thread's run loop.
            [NSObject performSelectorOnMainThread:@selector(class) withObject:nil waitUntilDone:NO];
        });
        const LibraryCall call;
        const bool resumed = host_.RunUntil([&] { return poster->done.load(); }, kPatience);
        return resumed ? poster->result : "the poster still waits";
    });
}
