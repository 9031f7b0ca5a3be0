// The stand-in host: its library, classes and members, and its run loop.
#include "host/host.h"

#include <chrono>

#include "host/calls/class_sources.h"
#include "host/calls/cocoa.h"
#include "host/calls/exceptions.h"
#include "host/calls/instances.h"
#include "host/calls/marshalling.h"
#include "host/calls/members.h"
#include "host/calls/program_calls.h"
#include "host/interface/entry_points.h"
#include "host/language/names.h"
#include "host/runtime.h"

namespace qzlhost {

namespace {

const Class &KnownClass(const ClassRegistry &classes, std::string_view name)
{
    const Class *const type = classes.Find(name);
    if (!type)
        throw UsageError("the host has no class " + std::string(name));
    return *type;
}

std::string CallName(std::string_view className, std::string_view member, const std::vector<Value> &arguments)
{
    std::string name = std::string(className) + "." + std::string(member) + "(";
    for (size_t i = 0; i < arguments.size(); ++i)
        name += (i == 0 ? "" : ", ") + std::to_string(arguments[i].Code());
    return name + ")";
}

Value CallOn(const Class &type, Instance *self, std::string_view method, const std::vector<Value> &arguments)
{
    const NativeMethod &chosen =
        ChooseOverload(FindOverloads(type, method, false), arguments, CallName(type.name, method, arguments));
    return CallFunction(chosen.function, chosen.declaration, self, arguments);
}

const Property &KnownProperty(const Instance &instance, std::string_view name)
{
    const Property *const property = FindProperty(*instance.type, name);
    if (!property)
        throw UsageError("the class " + instance.type->name + " has no property " + std::string(name));
    return *property;
}

} // namespace

Host::Host(HostOptions options)
    : runtime_(std::make_unique<Runtime>(*this, options.version, options.accounts))
{
}

Host::~Host() = default;

Host &Host::Current()
{
    Host *const host = qzlhost::Current<Host>();
    if (!host)
        throw UsageError("there is no host");
    return *host;
}

void Host::Load(const std::string &path)
{
    LoadLibrary(path, Resolver());
}

void *(*Host::Resolver() const)(const char *)
{
    return &ResolveEntryPoint;
}

const std::vector<ClassRecord> &Host::RegisteredClasses() const
{
    return runtime_->classes.records;
}

std::optional<int32_t> Host::DeclaredVersion() const
{
    return runtime_->session.declaredVersion;
}

void Host::DefineClass(ClassDefinition definition)
{
    const std::string name = definition.name;
    if (!runtime_->classes.Add(MakeProgramClass(std::move(definition))))
        throw UsageError("there is a class " + name + " already");
}

bool Host::HasClass(std::string_view name) const
{
    return runtime_->classes.Find(name) != nullptr;
}

std::string Host::ClassOf(const Value &instance) const
{
    return InstanceOf(instance).type->name;
}

bool Host::IsA(const Value &instance, std::string_view className) const
{
    return runtime_->classes.IsA(*InstanceOf(instance).type, className);
}

Value Host::New(std::string_view className, const std::vector<Value> &arguments)
{
    const Class &type = KnownClass(runtime_->classes, className);
    const std::string what = CallName(type.name, "Constructor", arguments);
    const std::vector<Overload> overloads = FindOverloads(type, "Constructor", false);
    const NativeMethod *const constructor = arguments.empty()
                                                ? FindFittingOverload(overloads, arguments, what)
                                                : &ChooseOverload(overloads, arguments, what);
    Value instance = NewByProgram(type);
    if (constructor)
        CallFunction(constructor->function, constructor->declaration, instance.ObjectPointer(), arguments);
    return instance;
}

Value Host::NewWithoutConstructor(std::string_view className)
{
    return Value::Adopt(NewInstance(KnownClass(runtime_->classes, className)));
}

Value Host::Call(const Value &instance, std::string_view method, const std::vector<Value> &arguments)
{
    Instance &self = InstanceOf(instance);
    return CallOn(*self.type, &self, method, arguments);
}

Value Host::CallAs(std::string_view className, const Value &instance, std::string_view method,
                   const std::vector<Value> &arguments)
{
    if (!IsA(instance, className))
        throw UsageError("the instance is not of the class " + std::string(className));
    return CallOn(KnownClass(runtime_->classes, className), &InstanceOf(instance), method, arguments);
}

Value Host::CallShared(std::string_view className, std::string_view method,
                       const std::vector<Value> &arguments)
{
    const Class &type = KnownClass(runtime_->classes, className);
    const NativeMethod &chosen =
        ChooseOverload(FindOverloads(type, method, true), arguments, CallName(type.name, method, arguments));
    return CallFunction(chosen.function, chosen.declaration, nullptr, arguments);
}

Value Host::Get(const Value &instance, std::string_view property)
{
    Instance &self = InstanceOf(instance);
    const Property &found = KnownProperty(self, property);
    if (!found.getter)
        throw UsageError("the property " + found.name + " cannot be read");
    return ReadProperty(found, &self);
}

void Host::Set(const Value &instance, std::string_view property, const Value &value)
{
    Instance &self = InstanceOf(instance);
    const Property &found = KnownProperty(self, property);
    if (Misfit(value, found.type) < 0) {
        throw UsageError("the property " + found.name + " of type " + found.type.name +
                         " does not take a value of code " + std::to_string(value.Code()));
    }
    WriteProperty(found, &self, value);
}

int64_t Host::Constant(std::string_view className, std::string_view name) const
{
    const Class &type = KnownClass(runtime_->classes, className);
    for (const Class *each : runtime_->classes.Chain(type)) {
        for (const ConstantDeclaration &constant : each->constants)
            if (SameName(constant.name, name))
                return ValueOf(constant.value).AsInteger();
    }
    throw UsageError("the class " + type.name + " has no constant " + std::string(name));
}

void *Host::InstanceData(const Value &instance) const
{
    return DataOf(&InstanceOf(instance));
}

bool Host::RunUntil(const std::function<bool()> &done, double seconds)
{
    constexpr double kSlice = 0.01;
    const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    while (!done()) {
        if (std::chrono::steady_clock::now() >= end)
            return false;
        const CocoaScope cocoa;
        RunRunLoop(kSlice);
        ThrowRecorded();
    }
    return true;
}

Value Host::TakeException()
{
    return Value::Share(qzlhost::TakeException().Get());
}

AutoreleasePool::AutoreleasePool() : pool_(nullptr)
{
    RegisterThreadWithCocoa();
    pool_ = PushPool();
}

AutoreleasePool::~AutoreleasePool()
{
    PopPool(pool_);
}

} // namespace qzlhost
