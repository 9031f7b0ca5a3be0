// One fault in one call of a host function that the library makes.
#include "tests/sweep/faults.h"
#include "tests/support/values.h"

#import <Foundation/Foundation.h>

#include <mutex>
#include <new>
#include <utility>

#include "tests/notifications/member_names.h"
#include "tests/sweep/program.h"

using qzlhost::CallMoment;
using qzlhost::Host;
using qzlhost::Value;

/// An exception that raises another when it is described for a log.
@interface QZLSweptException : NSException
@end

@implementation QZLSweptException
- (NSString *)description
{
    [NSException raise:@"QZLSweptTwice" format:@"raised by a description"];
    return nil;
}
@end

namespace {

struct Plan {
    std::mutex mutex;
    FaultyCall call;
    std::map<std::string, int> calls;
} gPlan;

/// Whether this thread is in the faulty call of a function that gives a reference back.
thread_local bool gIsFaulty = false;

/// Calls members that convert nested values both ways and fill every cache of the library.
void ComeBack(Host &host)
{
    const LibraryCall outside(false);
    const Value inner = NewDictionary(host, {{"inner", "text"}});
    const Value outer = NewDictionary(host, {{"outer", inner}});
    const Value array = host.NewArray(qzlhost::code::Object, {outer, Value("text").Boxed()});
    const Value notification =
        host.CallShared(kNotification, "notificationWithName", {"again", array, outer});
    host.Get(notification, "objectVariant");
    host.Get(notification, "userInfo");
    const Value root =
        host.CallShared(kNotification, "notificationWithName", {"again", host.NewFolderItem("/")});
    host.Get(root, "objectVariant");
    const Value center = host.CallShared(kCenter, "defaultCenter");
    host.CallShared(kNotification, "notificationWithName", {"again", center});
}

/// Returns whether the call goes on.
bool Commit(Fault fault)
{
    switch (fault) {
    case Fault::Fails:
        return false;
    case Fault::ThrowsStandard:
        throw std::bad_alloc();
    case Fault::ThrowsOther:
        throw 1;
    case Fault::RaisesCocoa:
        [[QZLSweptException exceptionWithName:@"QZLSwept" reason:@"raised by the host" userInfo:nil] raise];
        return false;
    case Fault::ComesBack:
        ComeBack(Host::Current());
        return true;
    }
    return true;
}

bool Look(const char *function, CallMoment moment)
{
    if (!InLibrary())
        return true;
    if (moment == CallMoment::Ends)
        return std::exchange(gIsFaulty, false) ? Commit(gPlan.call.fault) : true;
    {
        const std::lock_guard lock(gPlan.mutex);
        const int number = ++gPlan.calls[function];
        if (function != gPlan.call.function || number != gPlan.call.number)
            return true;
    }
    const bool throws = gPlan.call.fault != Fault::Fails && gPlan.call.fault != Fault::ComesBack;
    if (throws && GivesBack(function)) {
        gIsFaulty = true;
        return true;
    }
    return Commit(gPlan.call.fault);
}

} // namespace

bool GivesBack(const std::string &function)
{
    return function == "REALUnlockObject" || function == "REALUnlockString" || function == "PluginUnlockText";
}

void MakeFaulty(Host &host, const FaultyCall &call)
{
    gPlan.call = call;
    gPlan.calls.clear();
    host.Intercept(Look);
}

std::map<std::string, int> EndFaults(Host &host)
{
    host.Intercept(nullptr);
    const std::lock_guard lock(gPlan.mutex);
    return gPlan.calls;
}
