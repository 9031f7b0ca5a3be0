// Calls of members as a program makes them, and members that a program implements.
#include "host/calls/program_calls.h"

#include "host/calls/cocoa.h"
#include "host/calls/errors.h"
#include "host/calls/exceptions.h"
#include "host/calls/fields.h"
#include "host/calls/instances.h"
#include "host/calls/marshalling.h"
#include "host/calls/members.h"
#include "host/values/accounts.h"

namespace qzlhost {

namespace {

/// Drops an exception that nobody took, so that the next call does not throw it.
void DropStrayException()
{
    if (const Held<Instance> stray = TakeException())
        RecordMistake(Describe(stray.Get()) + " was raised where no program could catch it");
}

thread_local int gCallDepth = 0;

/// Surrounds a call that a program makes, so that the call throws only what is raised inside it.
class ProgramCall {
public:
    ProgramCall() = default;
    ~ProgramCall() { --gCallDepth; }
    ProgramCall(const ProgramCall &) = delete;
    ProgramCall &operator=(const ProgramCall &) = delete;

private:
    static bool Enter()
    {
        if (gCallDepth++ == 0)
            DropStrayException();
        return true;
    }

    CocoaScope cocoa_;
    FunctionScope function_{kProgram};
    bool entered_ = Enter();
    ExceptionScope outer_;
};

std::string MessageOf(const Value &exception)
{
    const Property *const message = FindProperty(*exception.ObjectPointer()->type, "Message");
    return message ? ReadProperty(*message, exception.ObjectPointer()).AsString() : std::string();
}

} // namespace

ProgramException::ProgramException(Value exception)
    : std::runtime_error(exception.ObjectPointer()->type->name + ": " + MessageOf(exception)),
      exception_(std::move(exception)), className_(exception_.ObjectPointer()->type->name),
      message_(MessageOf(exception_))
{
    if (const Property *const number = FindProperty(*exception_.ObjectPointer()->type, "ErrorNumber"))
        errorNumber_ = ReadProperty(*number, exception_.ObjectPointer()).AsInteger();
}

Value NewByProgram(const Class &type)
{
    const ProgramCall call;
    Value instance = Value::Adopt(NewInstance(type));
    ThrowRecorded();
    return instance;
}

Value CallFunction(void *function, const Declaration &declaration, Instance *self,
                   const std::vector<Value> &arguments)
{
    const ProgramCall call;
    const Value kept = Value::Share(self);
    const NativeArguments native(declaration, self, arguments);
    Value result = FromNativeResult(declaration.result, native.Call(function, declaration.result.native));
    ThrowRecorded();
    return result;
}

Value ReadProperty(const Property &property, Instance *self)
{
    if (property.getter == kFieldAccess)
        return ReadField(property, self);
    const ProgramCall call;
    const Value kept = Value::Share(self);
    NativeArguments native(Declaration(), self, {});
    if (!property.computed)
        native.AddInteger(property.parameter);
    Value result = FromNativeResult(property.type, native.Call(property.getter, property.type.native));
    ThrowRecorded();
    return result;
}

void WriteProperty(const Property &property, Instance *self, const Value &value)
{
    if (!property.setter)
        throw UsageError("the property " + property.name + " can only be read");
    if (property.setter == kFieldAccess) {
        WriteField(property, self, value);
        return;
    }
    const ProgramCall call;
    const Value kept = Value::Share(self);
    NativeArguments native(Declaration(), self, {});
    if (!property.computed)
        native.AddInteger(property.parameter);
    native.Add(property.type, value);
    native.Call(property.setter, NativeType::Nothing);
    ThrowRecorded();
}

void ThrowRecorded()
{
    if (const Held<Instance> exception = TakeException())
        throw ProgramException(Value::Share(exception.Get()));
}

std::unique_ptr<NativeCallback> MakeCallback(const Declaration &declaration, ProgramBody body)
{
    NativeSignature signature{declaration.result.native, {NativeType::Pointer}};
    for (const Parameter &parameter : declaration.parameters)
        signature.parameters.push_back(parameter.type.native);
    static const Type selfType{TypeKind::Object, NativeType::Pointer, "Object"};
    auto run = [declaration, body = std::move(body)](const NativeValue *native) {
        const CocoaScope cocoa;
        const FunctionScope function(kProgram);
        try {
            const Value self = FromNativeArgument(selfType, native[0]);
            std::vector<Value> arguments;
            for (size_t i = 0; i < declaration.parameters.size(); ++i)
                arguments.push_back(FromNativeArgument(declaration.parameters[i].type, native[i + 1]));
            return ToNativeResult(declaration.result, body(self, arguments));
        } catch (const ProgramException &exception) {
            RecordException(Held<Instance>::Share(exception.Exception().ObjectPointer()));
            return NativeValue{};
        }
    };
    return std::make_unique<NativeCallback>(std::move(signature), std::move(run));
}

} // namespace qzlhost
