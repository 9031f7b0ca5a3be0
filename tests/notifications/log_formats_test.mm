// The formats with which the library logs. Foundation itself ends a line where a format does not.
#import <Foundation/Foundation.h>
#include <dlfcn.h>
#include <gmock/gmock.h>

#include "tests/notifications/delivery.h"
#include "tests/notifications/member_names.h"
#include "tests/support/plugin_test.h"

using qzlhost::Host;
using qzlhost::Value;
using ::testing::ElementsAre;

namespace {

std::vector<std::string> gFormats;

/// The formats of what was logged since the last call of this.
std::vector<std::string> TakeFormats()
{
    return std::exchange(gFormats, {});
}

using LogFormat = PluginTest;

} // namespace

// Replace Foundation's. Code of a dylib may reach either.

void NSLogv(NSString *format, va_list arguments)
{
    gFormats.push_back([format UTF8String]);
    static const auto original = reinterpret_cast<decltype(&NSLogv)>(dlsym(RTLD_NEXT, "NSLogv"));
    original(format, arguments);
}

void NSLog(NSString *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    NSLogv(format, arguments);
    va_end(arguments);
}

TEST_F(LogFormat, OfPrintEndsTheLine)
{
    Host &host = Start();
    const Value notification = host.New(kNotification, {"AName"});
    TakeFormats();
    host.Call(notification, "Print");
    EXPECT_THAT(TakeFormats(), ElementsAre("%@\n"));
}

TEST_F(LogFormat, OfADeliveryIsTheExceptionAlone)
{
    Host &host = Start();
    ObserverProgram program(host, "ProgramObserver", [](const Value &) {
        [NSException raise:@"FromTheHandler" format:@"on purpose"];
    });
    const Value observer = program.NewObserver();
    TakeFormats();
    Deliver(host, observer);
    EXPECT_THAT(TakeFormats(), ElementsAre("%@"));
}

TEST_F(LogFormat, OfAMembersExceptionEndsTheLine)
{
    Host &host = Start();
    const Value center = DefaultCenter(host);
    TakeFormats();
    // Cocoa refuses it.
    host.Call(center, "postNotification", {Value()});
    EXPECT_THAT(TakeFormats(), ElementsAre("A %@: %@, Info: %@\n"));
}
