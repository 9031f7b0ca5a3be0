// A host program that a test drives by lines of commands: observes and posts between processes.
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>

#include "family/family.h"
#include "host/host.h"
#include "tests/notifications/peer_lines.h"
#include "tests/support/value_model.h"

using qzlhost::AutoreleasePool;
using qzlhost::Host;
using qzlhost::ProgramException;
using qzlhost::Value;

namespace {

constexpr char kCenterClass[] = "NSDistributedNotificationCenterQZL";
constexpr double kNoLimit = 1e9;

/// Does what a test's commands say. Each has a verb, "do", and these arguments:
///   observe     "observer", the test's name for it, made at its first use; "name", "object", "behavior":
///               what is absent is not passed, a null name is the null string
///   remove      "observer", "name", "object"
///   free        "observer", whose reference the program gives back
///   post        "name", "object", "info", "options", "deliverImmediately": they choose the overload; "built"
///               to make a notification first and post that; "times" to post repeatedly, with a "sequence"
///               from 0 on in the user info
///   suspend     "value"
///   suspended   returns the property
///   settle      see Settle
///   quit        ends the program; returns what its host reports: "leaks" and "mistakes"
/// "center" names the way to the centre: New, defaultCenter or notificationCenterForType.
class Program {
public:
    Program(Host &host, Report &report) : host_(host), report_(report)
    {
        qzlhost::ClassDefinition observer;
        observer.name = "PeerObserver";
        observer.super = "NSNotificationObserverQZL";
        observer.events.push_back({"GotNotification(notification as NSNotificationQZL)",
                                   [this](const Value &self, const std::vector<Value> &arguments) {
                                       Receive(self, arguments.at(0));
                                       return Value();
                                   }});
        host_.DefineClass(std::move(observer));
    }

    /// Does a command and returns its result.
    Json Do(const Json &command)
    {
        const std::string verb = command.at("do");
        if (verb == "settle") {
            Settle();
            return nullptr;
        }
        verb_ = verb;
        const auto clear = [](std::string *text) { text->clear(); };
        const std::unique_ptr<std::string, decltype(clear)> end(&verb_, clear);
        return DoAtOnce(verb, command);
    }

private:
    /// Does any command that does not run the run loop.
    Json DoAtOnce(const std::string &verb, const Json &command)
    {
        if (verb == "observe")
            Observe(command);
        else if (verb == "remove")
            host_.Call(Center(command), "removeObserver", Registration(command));
        else if (verb == "free")
            observers_.extract(command.at("observer"));
        else if (verb == "post")
            Post(command);
        else if (verb == "suspend")
            host_.Set(Center(command), "suspended", command.at("value").get<bool>());
        else if (verb == "suspended")
            return host_.Get(Center(command), "suspended").AsBoolean();
        else
            throw std::runtime_error("unknown command " + verb);
        return nullptr;
    }

    /// A text of a command; the null string for null.
    static Value TextOf(const Json &command, const char *key)
    {
        const Json &text = command.at(key);
        return text.is_null() ? Value::EmptyString() : Value(text.get<std::string>());
    }

    /// The centre of a command, made at its first use.
    const Value &Center(const Json &command)
    {
        const std::string way = command.value("center", "New");
        Value &center = centers_[way];
        if (!center.IsNil())
            return center;
        if (way == "New")
            center = host_.New(kCenterClass);
        else if (way == "defaultCenter")
            center = host_.CallShared(kCenterClass, "defaultCenter");
        else if (way == "notificationCenterForType")
            center = host_.CallShared(kCenterClass, "notificationCenterForType",
                                      {host_.CallShared(kCenterClass, "NSLocalNotificationCenterType")});
        else
            throw std::runtime_error("unknown way to a centre: " + way);
        return center;
    }

    const Value &Observer(const Json &command)
    {
        Value &observer = observers_[command.at("observer")];
        if (observer.IsNil())
            observer = host_.New("PeerObserver");
        return observer;
    }

    /// The observer, name and object of a command, as far as it has them.
    std::vector<Value> Registration(const Json &command)
    {
        std::vector<Value> arguments = {Observer(command)};
        if (command.contains("name"))
            arguments.push_back(TextOf(command, "name"));
        if (command.contains("object"))
            arguments.push_back(ValueOf(host_, command.at("object")));
        return arguments;
    }

    void Observe(const Json &command)
    {
        std::vector<Value> arguments = Registration(command);
        if (command.contains("behavior"))
            arguments.push_back(command.at("behavior").get<int64_t>());
        host_.Call(Center(command), "addObserver", arguments);
    }

    void Post(const Json &command)
    {
        if (!command.contains("times")) {
            PostOnce(command);
            return;
        }
        for (int64_t sequence = 0; sequence < command.at("times"); ++sequence) {
            Json each = command;
            each["info"]["dictionary"].push_back({typed::String("sequence"), typed::Integer(sequence)});
            PostOnce(each);
        }
    }

    void PostOnce(const Json &command)
    {
        std::vector<Value> arguments = {TextOf(command, "name")};
        for (const char *key : {"object", "info"})
            if (command.contains(key))
                arguments.push_back(ValueOf(host_, command.at(key)));
        if (command.contains("options"))
            arguments.push_back(command.at("options").get<uint32_t>());
        if (command.contains("deliverImmediately"))
            arguments.push_back(command.at("deliverImmediately").get<bool>());
        if (command.value("built", false))
            host_.Call(Center(command), "postNotification", {host_.New("NSNotificationQZL", arguments)});
        else
            host_.Call(Center(command), "postNotificationName", arguments);
    }

    /// Returns once everything that was posted here has been passed on, and everything that was passed on to
    /// here has raised its event: the daemon answers calls in order, and these wait for its answers.
    void Settle()
    {
        const Value observer = host_.New("PeerObserver");
        const Value &center = Center(Json::object());
        host_.Call(center, "addObserver", {observer, "QZLSettling" + std::to_string(getpid())});
        host_.Call(center, "removeObserver", {observer});
        int turns = 0;
        host_.RunUntil([&] { return turns++ == 3; }, kNoLimit);
    }

    void Receive(const Value &self, const Value &notification)
    {
        std::string name;
        for (const auto &[key, observer] : observers_)
            if (observer.ObjectPointer() == self.ObjectPointer())
                name = key;
        Json event = {{"observer", name}};
        if (!verb_.empty())
            event["during"] = verb_;
        try {
            event["name"] = host_.Get(notification, "Name").AsString();
            event["object"] = ModelOf(host_, host_.Get(notification, "objectVariant"));
            event["info"] = Sorted(ModelOf(host_, host_.Get(notification, "userInfo")));
        } catch (const std::runtime_error &error) {
            event["failure"] = error.what();
        }
        report_.Event(event);
        // It is not used, and would grow with every event.
        host_.ClearTrace();
    }

    Host &host_;
    Report &report_;
    /// The verb of the current command; empty while the run loop runs.
    std::string verb_;
    std::map<std::string, Value> centers_;
    std::map<std::string, Value> observers_;
};

/// Does commands until "quit" or the end of the input.
void Run(Host &host, Program &program, Commands &commands, Report &report)
{
    for (;;) {
        host.RunUntil([&] { return commands.HaveNext(); }, kNoLimit);
        const std::optional<Json> command = commands.Next();
        if (!command || command->at("do") == "quit")
            return;
        try {
            report.Answer(program.Do(*command));
        } catch (const ProgramException &exception) {
            report.Refusal(exception);
        }
    }
}

/// Returns the exit status.
int RunIn(Host &host, const char *library, Commands &commands)
{
    Report report;
    {
        const AutoreleasePool pool;
        Family(host).OfferExceptions();
        host.Load(library);
        Program program(host, report);
        report.Answer("ready");
        Run(host, program, commands, report);
    }
    report.Answer({{"leaks", host.Leaks()}, {"mistakes", host.Mistakes()}});
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: peer_program LIBRARY\n");
        return 2;
    }
    Commands commands;
    try {
        Host host;
        return RunIn(host, argv[1], commands);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "peer_program: %s\n", error.what());
        // The reading thread waits for the end of the input, which the test leaves open when a program fails.
        std::_Exit(1);
    }
}
