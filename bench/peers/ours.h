// The library in its host, as the peers' programs use it.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "host/host.h"

/// The host with the library loaded, for as long as the process lives.
inline qzlhost::Host &LoadedHost()
{
    static auto *const host = [] {
        qzlhost::HostOptions options;
        options.accounts = false;
        auto *const made = new qzlhost::Host(options);
        made->Load(QZL_LIBRARY_PATH);
        return made;
    }();
    return *host;
}

/// Defines a program's class that handles the event of the library's observer.
template <typename Handle>
void DefineObserver(const char *name, Handle handle)
{
    qzlhost::ClassDefinition definition;
    definition.name = name;
    definition.super = "NSNotificationObserverQZL";
    definition.events.push_back(
        {"GotNotification(notification as NSNotificationQZL)",
         [handle](const qzlhost::Value &, const std::vector<qzlhost::Value> &arguments) {
             handle(arguments.at(0));
             return qzlhost::Value();
         }});
    LoadedHost().DefineClass(std::move(definition));
}

/// The library's record of the class. Throws std::runtime_error if there is none.
inline const qzlhost::ClassRecord &RecordOf(const std::string &name)
{
    for (const qzlhost::ClassRecord &record : LoadedHost().RegisteredClasses())
        if (record.name == name)
            return record;
    throw std::runtime_error("the library has no class " + name);
}

/// The function behind a method. Throws std::runtime_error if there is no such method.
inline void *MethodOf(const qzlhost::ClassRecord &record, const std::string &text)
{
    for (const qzlhost::MethodRecord &method : record.methods)
        if (method.text == text)
            return method.function;
    throw std::runtime_error("the class has no method " + text);
}

/// A notification's property as compiled code of the host reads it: without looking it up.
template <typename Result>
class Property {
public:
    explicit Property(const std::string &name)
    {
        for (const qzlhost::PropertyRecord &property : RecordOf("NSNotificationQZL").properties)
            if (property.name == name)
                record_ = &property;
        if (!record_)
            throw std::runtime_error("a notification has no " + name);
    }

    qzlhost::Value Of(const qzlhost::Value &notification) const
    {
        using Getter = Result *(*)(qzlhost::Instance *, int64_t parameter);
        return qzlhost::Value::Adopt(
            reinterpret_cast<Getter>(record_->getter)(notification.ObjectPointer(), record_->parameter));
    }

private:
    const qzlhost::PropertyRecord *record_ = nullptr;
};
