// The demonstration program: one observer, every way to post, from two threads.
#include "qzlhost/demo.h"

#include <atomic>
#include <iomanip>
#include <mutex>
#include <ostream>
#include <thread>

#include "qzlhost/value_json.h"

using qzlhost::AutoreleasePool;
using qzlhost::Host;
using qzlhost::Value;

namespace {

/// Writes whole lines, each after the name of the thread that writes it.
class Transcript {
public:
    explicit Transcript(std::ostream &out) : out_(out), mainThread_(std::this_thread::get_id()) {}

    bool OnMainThread() const { return std::this_thread::get_id() == mainThread_; }

    void Line(const std::string &text)
    {
        const std::lock_guard lock(mutex_);
        out_ << std::left << std::setw(15) << (OnMainThread() ? "main thread" : "other thread") << text
             << '\n'
             << std::flush;
    }

private:
    std::ostream &out_;
    std::thread::id mainThread_;
    std::mutex mutex_;
};

/// The program's state: what it posted, and what it received.
struct Program {
    Host &host;
    Transcript transcript;
    Value center;
    std::atomic<int> posted{0};
    int received = 0;
    int receivedElsewhere = 0;
    int receivedLate = 0;
};

/// Posts once, and counts an event that had not run when the post returned.
void Post(Program &program, const std::string &source, const std::string &method,
          const std::vector<Value> &arguments)
{
    program.transcript.Line(source);
    ++program.posted;
    program.host.Call(program.center, method, arguments);
    // If this is another thread, the handler has run on the main thread, which does nothing else meanwhile.
    if (program.received != program.posted)
        ++program.receivedLate;
}

void PostInEveryWay(Program &program)
{
    Host &host = program.host;
    const Value info = host.NewDictionary();
    host.DictionarySet(info, "from",
                       program.transcript.OnMainThread() ? "the main thread" : "another thread");
    host.DictionarySet(info, "language", "Gr\u00FC\u00DFe");

    Post(program, R"(center.postNotificationName("Greeting"))", "postNotificationName", {"Greeting"});
    Post(program, R"(center.postNotificationName("Greeting", "an object"))", "postNotificationName",
         {"Greeting", "an object"});
    Post(program, R"(center.postNotificationName("Greeting", "an object", info))", "postNotificationName",
         {"Greeting", "an object", info});
    const Value notification = host.New("NSNotificationQZL", {"Greeting", "built by the program", info});
    Post(program, "center.postNotification(notification)", "postNotification", {notification});
}

void DefineObserver(Program &program)
{
    qzlhost::ClassDefinition observer;
    observer.name = "DemoObserver";
    observer.super = "NSNotificationObserverQZL";
    observer.events.push_back({"GotNotification(notification as NSNotificationQZL)",
                               [&program](const Value &, const std::vector<Value> &arguments) {
                                   Host &host = program.host;
                                   const Value &notification = arguments.at(0);
                                   ++program.received;
                                   if (!program.transcript.OnMainThread())
                                       ++program.receivedElsewhere;
                                   std::string line = "  GotNotification:";
                                   for (const char *property : {"Name", "objectVariant", "userInfo"})
                                       line +=
                                           std::string(" ") + property + " " +
                                           LineOfJson(ValueAsJson(host, host.Get(notification, property)));
                                   program.transcript.Line(line);
                                   return Value();
                               }});
    program.host.DefineClass(std::move(observer));
}

} // namespace

bool RunDemo(Host &host, std::ostream &out)
{
    Program program{host, Transcript(out), Value()};
    DefineObserver(program);

    program.transcript.Line("observer = New DemoObserver");
    const Value observer = host.New("DemoObserver");
    program.transcript.Line("center = NSNotificationCenterQZL.defaultCenter");
    program.center = host.CallShared("NSNotificationCenterQZL", "defaultCenter");
    program.transcript.Line(R"(center.addObserver(observer, "Greeting"))");
    host.Call(program.center, "addObserver", {observer, "Greeting"});

    PostInEveryWay(program);
    std::atomic<bool> done{false};
    std::thread other([&] {
        const AutoreleasePool pool;
        PostInEveryWay(program);
        done = true;
    });
    const bool finished = host.RunUntil([&] { return done.load(); }, 60);
    other.join();

    program.transcript.Line("center.removeObserver(observer)");
    host.Call(program.center, "removeObserver", {observer});
    program.transcript.Line(R"(center.postNotificationName("Greeting"))");
    host.Call(program.center, "postNotificationName", {"Greeting"});
    program.center = Value();

    out << "\n"
        << program.posted << " notifications posted, " << program.received << " received, "
        << program.received - program.receivedElsewhere << " of them on the main thread, "
        << program.receivedLate << " after the poster went on; none after the observer was removed.\n";
    return finished && program.received == program.posted && program.receivedElsewhere == 0 &&
           program.receivedLate == 0;
}
