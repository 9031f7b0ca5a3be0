// The program behind "qzlhost watch": prints notifications as they arrive.
#include "qzlhost/watch.h"

#include <ostream>

#include "qzlhost/value_json.h"

using qzlhost::Host;
using qzlhost::Value;
using Json = nlohmann::ordered_json;

namespace {

Json NotificationAsJson(Host &host, const Value &notification)
{
    return {{"name", ValueAsJson(host, host.Get(notification, "Name"))},
            {"object", ValueAsJson(host, host.Get(notification, "objectVariant"))},
            {"userInfo", ValueAsJson(host, host.Get(notification, "userInfo"))}};
}

std::string NotificationAsText(Host &host, const Value &notification)
{
    std::string text = LineOfJson(ValueAsJson(host, host.Get(notification, "Name")));
    for (const auto &[label, property] :
         {std::pair("object", "objectVariant"), std::pair("userInfo", "userInfo")})
        text +=
            std::string(" ") + label + " " + LineOfJson(ValueAsJson(host, host.Get(notification, property)));
    return text;
}

Value ValueOf(const std::optional<std::string> &text)
{
    return text ? Value(*text) : Value();
}

} // namespace

bool RunWatch(Host &host, const WatchOptions &options, std::ostream &out, const std::function<void()> &ready,
              const std::function<bool()> &isStopped)
{
    int64_t received = 0;
    const auto isComplete = [&] { return received == options.count; };
    qzlhost::ClassDefinition watcher;
    watcher.name = "Watcher";
    watcher.super = "NSNotificationObserverQZL";
    watcher.events.push_back({"GotNotification(notification as NSNotificationQZL)",
                              [&](const Value &, const std::vector<Value> &arguments) {
                                  // More may arrive in the same turn of the run loop as the last one.
                                  if (isComplete())
                                      return Value();
                                  ++received;
                                  out << (options.asJson
                                              ? LineOfJson(NotificationAsJson(host, arguments.at(0)))
                                              : NotificationAsText(host, arguments.at(0)))
                                      << '\n'
                                      << std::flush;
                                  return Value();
                              }});
    host.DefineClass(std::move(watcher));

    const Value observer = host.New("Watcher");
    const Value center = NewCenter(host, options.center);
    // Only the host's empty string stands for every name.
    const Value name = options.name ? Value(*options.name) : Value::EmptyString();
    host.Call(center, "addObserver", {observer, name, ValueOf(options.object)});
    ready();
    const bool ended = host.RunUntil([&] { return isComplete() || isStopped(); }, options.seconds);
    host.Call(center, "removeObserver", {observer});
    return ended;
}
