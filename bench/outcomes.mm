// The outcomes of works: how they are given back, and how they read.
#include "bench/outcomes.h"

#import <Foundation/Foundation.h>

#include <string_view>

#include "bench/host_functions.h"
#include "host/host.h"
#include "qzlhost/value_json.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

std::string Summary(std::string_view bytes)
{
    return std::to_string(bytes.size()) + " bytes " + std::to_string(std::hash<std::string_view>()(bytes));
}

} // namespace

void GiveBack(REALobject object)
{
    if (object != nullptr)
        gHost.unlockObject(object);
}

void GiveBack(REALstring string)
{
    if (string != nullptr)
        gHost.unlockString(string);
}

void GiveBack(const NotificationParts &parts)
{
    GiveBack(parts.name);
    GiveBack(parts.object);
    GiveBack(parts.userInfo);
}

std::string TextOf(id object)
{
    if (object == nil)
        return "nil";
    const std::string className = [NSStringFromClass([object class]) UTF8String];
    if ([object isKindOfClass:[NSData class]])
        return className + " " + Summary({static_cast<const char *>([object bytes]), [object length]});
    return className + " " + [[object description] UTF8String];
}

std::string TextOf(int64_t number)
{
    return std::to_string(number);
}

std::string TextOf(REALobject object)
{
    Host &host = Host::Current();
    const Value value = Value::Share(reinterpret_cast<qzlhost::Instance *>(object));
    if (value.Code() == qzlhost::code::Object && host.IsA(value, "MemoryBlock"))
        return Summary(host.MemoryBlockBytes(value));
    return std::to_string(value.Code()) + " " + LineOfJson(ValueAsJson(host, value));
}

std::string TextOf(REALstring string)
{
    const Value value = Value::Share(reinterpret_cast<qzlhost::String *>(string));
    return std::to_string(value.StringEncoding()) + " " + value.StringBytes();
}

std::string TextOf(const NotificationParts &parts)
{
    return TextOf(parts.name) + "; " + TextOf(parts.object) + "; " + TextOf(parts.userInfo);
}
