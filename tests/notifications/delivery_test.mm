// Deliveries in which something is missing or fails, as their sender sees them.
#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <gmock/gmock.h>

#include "tests/notifications/delivery.h"
#include "tests/support/family_fixture.h"
#include "tests/support/leak_check_pause.h"
#include "tests/support/log_capture.h"

using qzlhost::Host;
using qzlhost::Value;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// An exception with a description that Foundation would not compose.
@interface QZLDescribedException : NSException
@end

@implementation QZLDescribedException
- (NSString *)description
{
    return @"as it describes itself, 100%@";
}
@end

/// An exception whose description raises another.
@interface QZLIndescribableException : NSException
@end

@implementation QZLIndescribableException
- (NSString *)description
{
    [NSException raise:@"Indescribable" format:@"on purpose"];
    return nil;
}
@end

namespace {

using Delivery = PluginWithFamily;
using MemberOfACenter = PluginTest;

bool gHostRaises = false;
void *gOriginal = nullptr;

void RaiseInHost()
{
    if (gHostRaises)
        [NSException raise:@"FromTheHost" format:@"on purpose"];
}

void *RaisingEventInstance(qzlhost::Instance *instance, void *key)
{
    RaiseInHost();
    return reinterpret_cast<void *(*)(qzlhost::Instance *, void *)>(gOriginal)(instance, key);
}

qzlhost::Instance *RaisingNewInstance(const char *name)
{
    RaiseInHost();
    return reinterpret_cast<qzlhost::Instance *(*)(const char *)>(gOriginal)(name);
}

void RaisingUnlockObject(qzlhost::Instance *instance)
{
    RaiseInHost();
    reinterpret_cast<void (*)(qzlhost::Instance *)>(gOriginal)(instance);
}

id gThrown = nil;

uint32_t ThrowingEncodingOf(qzlhost::String *string)
{
    if (gThrown != nil)
        @throw gThrown;
    return reinterpret_cast<uint32_t (*)(qzlhost::String *)>(gOriginal)(string);
}

struct HostFunction {
    const char *name;
    void *raising;
    /// How often the handler runs.
    size_t events;
    /// The wrappers that are not given back.
    int left;
};

const HostFunction kFunctionsOfADelivery[] = {
    {"GetEventInstance", reinterpret_cast<void *>(RaisingEventInstance), 0, 0},
    {"PluginNewInstance", reinterpret_cast<void *>(RaisingNewInstance), 0, 0},
    {"REALUnlockObject", reinterpret_cast<void *>(RaisingUnlockObject), 1, 1},
};

class ExceptionOfTheHost : public PluginTest, public ::testing::WithParamInterface<HostFunction> {};

/// What Foundation logs for these arguments.
template <typename... Arguments>
std::vector<std::string> LogOf(NSString *format, Arguments... arguments)
{
    const LogCapture log;
    NSLog(format, arguments...);
    return log.Lines();
}

} // namespace

TEST_F(Delivery, LogsTheExceptionItselfOnceAndRaisesNothing)
{
    Host &host = StartWithFamily();
    family().OfferExceptions();
    NSException *const exception = [QZLDescribedException exceptionWithName:@"FromTheHandler"
                                                                     reason:@"on purpose"
                                                                   userInfo:nil];
    ObserverProgram program(host, "ProgramObserver", [&](const Value &) { @throw exception; });
    const Value observer = program.NewObserver();
    host.ClearTrace();

    std::vector<std::string> lines;
    {
        const LogCapture log;
        EXPECT_NO_THROW(Deliver(host, observer));
        lines = log.Lines();
    }

    EXPECT_EQ(program.received.size(), 1u);
    EXPECT_EQ(lines, LogOf(@"%@", @"as it describes itself, 100%@"));
    EXPECT_EQ(host.CallsOf("RuntimeRaiseException"), 0);
    EXPECT_EQ(family().ExceptionsWrapped(), 0);
    EXPECT_TRUE(host.TakeException().IsNil());
}

TEST_F(Delivery, OfAnExceptionThatCannotBeDescribedEndsQuietly)
{
    Host &host = StartWithFamily();
    ObserverProgram program(host, "ProgramObserver", [](const Value &) {
        @throw [QZLIndescribableException exceptionWithName:@"FromTheHandler" reason:nil userInfo:nil];
    });
    const Value observer = program.NewObserver();

    {
        // Foundation leaks the text that it is composing.
        const LeakCheckPause pause;
        EXPECT_NO_THROW(Deliver(host, observer));
    }

    EXPECT_EQ(program.received.size(), 1u);
}

TEST_F(Delivery, WithoutAnExceptionLogsNothing)
{
    Host &host = StartWithFamily();
    ObserverProgram program(host);
    const Value observer = program.NewObserver();
    const LogCapture log;

    Deliver(host, observer);

    EXPECT_EQ(program.received.size(), 1u);
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_P(ExceptionOfTheHost, IsLoggedByTheDelivery)
{
    const HostFunction &function = GetParam();
    Host &host = Start({}, [&](Host &unloaded) {
        gOriginal = unloaded.Resolver()(function.name);
        unloaded.Replace(function.name, function.raising);
    });
    ObserverProgram program(host);
    const Value observer = program.NewObserver();

    std::vector<std::string> lines;
    {
        // A wrapper that is not given back keeps its notification.
        const LeakCheckPause pause;
        const LogCapture log;
        gHostRaises = true;
        EXPECT_NO_THROW(Deliver(host, observer));
        gHostRaises = false;
        lines = log.Lines();
    }

    EXPECT_EQ(program.received.size(), function.events);
    EXPECT_THAT(lines, ElementsAre(::testing::HasSubstr("FromTheHost")));
    ExpectLeaks("NSNotificationQZL", static_cast<size_t>(function.left));
    ExpectCocoaObjects("GSNotification", function.left);
}

INSTANTIATE_TEST_SUITE_P(Functions, ExceptionOfTheHost, ::testing::ValuesIn(kFunctionsOfADelivery),
                         [](const auto &parameter) { return std::string(parameter.param.name); });

TEST_F(Delivery, LetsAnObjectThatIsNoExceptionPass)
{
    Host &host = StartWithFamily();
    NSString *const thrown = @"no exception of Cocoa's";
    ObserverProgram program(host, "ProgramObserver", [&](const Value &) { @throw thrown; });
    const Value observer = program.NewObserver();
    const LogCapture log;
    id caught = nil;

    @try {
        Deliver(host, observer);
    } @catch (id object) {
        caught = object;
    }

    EXPECT_EQ(caught, thrown);
    EXPECT_EQ(program.received.size(), 1u);
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(MemberOfACenter, LetsAnObjectThatIsNoExceptionPass)
{
    NSString *const thrown = @"no exception of Cocoa's";
    Host &host = Start({}, [](Host &unloaded) {
        gOriginal = unloaded.Resolver()("REALGetStringEncoding");
        unloaded.Replace("REALGetStringEncoding", reinterpret_cast<void *>(ThrowingEncodingOf));
    });
    const Value center = DefaultCenter(host);
    const LogCapture log;
    id caught = nil;

    gThrown = thrown;
    @try {
        host.Call(center, "postNotificationName", {"AName"});
    } @catch (id object) {
        caught = object;
    }
    gThrown = nil;

    EXPECT_EQ(caught, thrown);
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(Delivery, WithoutATargetAsksTheHostForNothing)
{
    Host &host = StartWithFamily();
    ObserverProgram program(host);
    const Value observer = program.NewObserver();
    const id without = [[objc_getClass("NSNotificationObserver") alloc] initWithTarget:nullptr];
    ASSERT_NE(without, nil);
    host.ClearTrace();

    DeliverTo(without);
    EXPECT_THAT(host.Trace(), IsEmpty());
    Deliver(host, observer);

    EXPECT_EQ(program.received.size(), 1u);
    EXPECT_EQ(host.CallsOf("GetEventInstance"), 1);
    [without release];
}

TEST_F(Delivery, PassesNilWhereTheWrapperCannotBeMade)
{
    Host &host = StartWithFamily();
    std::vector<bool> wereNil;
    ObserverProgram program(host, "ProgramObserver",
                            [&](const Value &notification) { wereNil.push_back(notification.IsNil()); });
    const Value observer = program.NewObserver();

    Deliver(host, observer);
    host.Fail("PluginNewInstance");
    Deliver(host, observer);
    host.Fail("PluginNewInstance", false);
    Deliver(host, observer);

    EXPECT_THAT(wereNil, ElementsAre(false, true, false));
}
