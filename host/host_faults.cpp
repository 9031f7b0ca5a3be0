// The stand-in host: its faults, trace and accounts.
#include "host/host.h"
#include "host/interface/entry_points.h"
#include "host/runtime.h"
#include "host/values/object.h"
#include "host/values/strings.h"

namespace qzlhost {

namespace {

const EntryPoint &KnownFunction(std::string_view name)
{
    const EntryPoint *const entry = FindEntryPoint(name);
    if (!entry)
        throw UsageError("the host has no function " + std::string(name));
    return *entry;
}

const Counted *CountedOf(const Value &value)
{
    if (value.ObjectPointer())
        return value.ObjectPointer();
    if (value.StringPointer())
        return value.StringPointer();
    return value.TextPointer();
}

} // namespace

std::vector<std::string> Host::Functions()
{
    std::vector<std::string> names;
    for (const EntryPoint &entry : EntryPoints())
        names.emplace_back(entry.name);
    return names;
}

void Host::Lack(std::string_view function)
{
    runtime_->session.faults.Lack(KnownFunction(function).name);
}

void Host::AnswerFrom(std::string_view function, int ask)
{
    runtime_->session.faults.AnswerFrom(KnownFunction(function).name, ask);
}

void Host::Fail(std::string_view function, bool fails)
{
    KnownFunction(function).description->fails = fails;
}

void Host::Replace(std::string_view function, void *replacement)
{
    runtime_->session.faults.Replace(KnownFunction(function).name, replacement);
}

void Host::Intercept(Interceptor interceptor)
{
    runtime_->session.interceptor = std::move(interceptor);
}

void Host::LackMethod(std::string_view declaration)
{
    runtime_->session.faults.ReplaceMethod(declaration, nullptr);
}

void Host::ReplaceMethod(std::string_view declaration, void *replacement)
{
    runtime_->session.faults.ReplaceMethod(declaration, replacement);
}

int Host::AsksFor(std::string_view function) const
{
    return runtime_->session.faults.AsksFor(function);
}

std::vector<TraceEntry> Host::Trace() const
{
    return runtime_->session.trace.All();
}

void Host::ClearTrace()
{
    runtime_->session.trace.Clear();
}

int Host::CallsOf(std::string_view function) const
{
    return runtime_->session.trace.CallsOf(function);
}

int64_t Host::References(const Value &value) const
{
    const Counted *const counted = CountedOf(value);
    return counted ? counted->counts.References() : 0;
}

std::vector<std::string> Host::Leaks() const
{
    return runtime_->accounts.Leaks();
}

std::vector<std::string> Host::Mistakes() const
{
    return runtime_->accounts.Mistakes();
}

} // namespace qzlhost
