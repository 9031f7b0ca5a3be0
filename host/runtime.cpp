// The parts of a host.
#include "host/runtime.h"

#include "host/calls/class_sources.h"
#include "host/calls/cocoa.h"
#include "host/calls/errors.h"
#include "host/calls/exceptions.h"
#include "host/calls/instances.h"
#include "host/interface/builtin_classes.h"
#include "host/interface/entry_points.h"

namespace qzlhost {

Runtime::Runtime(Host &host, std::optional<double> version, bool keepsAccounts) : accounts(keepsAccounts)
{
    Accounts *expected = nullptr;
    if (!gCurrent<Accounts>.compare_exchange_strong(expected, &accounts))
        throw UsageError("there is a host already in this process");
    gCurrent<ClassRegistry> = &classes;
    gCurrent<Session> = &session;
    gCurrent<Host> = &host;
    SetClassHooks();
    WarmUpCocoa();
    for (const EntryPoint &entry : EntryPoints())
        entry.description->fails = false;
    session.version = version;
    session.traces = keepsAccounts;
    if (!version)
        session.faults.Lack("REALGetRBVersion");
    for (const BuiltInClass &table : BuiltInClasses())
        classes.Add(MakeBuiltInClass(table));
}

Runtime::~Runtime()
{
    TakeException();
    accounts.FreeRemains();
    gCurrent<Host> = nullptr;
    gCurrent<Session> = nullptr;
    gCurrent<ClassRegistry> = nullptr;
    gCurrent<Accounts> = nullptr;
}

} // namespace qzlhost
