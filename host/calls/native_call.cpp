// Calls of native functions whose signature is known only at run time, and functions made at run time.
#include "host/calls/native_call.h"

#include <ffi.h>

#include <cstring>
#include <new>
#include <stdexcept>
#include <utility>

namespace qzlhost {

namespace {

ffi_type *ForeignType(NativeType type)
{
    switch (type) {
    case NativeType::Nothing:
        return &ffi_type_void;
    case NativeType::Boolean:
        return &ffi_type_uint8;
    case NativeType::Int8:
        return &ffi_type_sint8;
    case NativeType::UInt8:
        return &ffi_type_uint8;
    case NativeType::Int16:
        return &ffi_type_sint16;
    case NativeType::UInt16:
        return &ffi_type_uint16;
    case NativeType::Int32:
        return &ffi_type_sint32;
    case NativeType::UInt32:
        return &ffi_type_uint32;
    case NativeType::Int64:
        return &ffi_type_sint64;
    case NativeType::UInt64:
        return &ffi_type_uint64;
    case NativeType::Single:
        return &ffi_type_float;
    case NativeType::Double:
        return &ffi_type_double;
    case NativeType::Pointer:
        return &ffi_type_pointer;
    }
    throw std::invalid_argument("no native type");
}

/// A prepared description of a signature for libffi; it points into itself.
class CallInterface {
public:
    explicit CallInterface(const NativeSignature &signature)
    {
        for (const NativeType type : signature.parameters) {
            if (type == NativeType::Nothing)
                throw std::invalid_argument("a parameter of no type");
            parameters_.push_back(ForeignType(type));
        }
        const ffi_status status =
            ffi_prep_cif(&interface_, FFI_DEFAULT_ABI, static_cast<unsigned>(parameters_.size()),
                         ForeignType(signature.result), parameters_.data());
        if (status != FFI_OK)
            throw std::invalid_argument("no call can have this signature");
    }
    CallInterface(const CallInterface &) = delete;
    CallInterface &operator=(const CallInterface &) = delete;

    ffi_cif *Get() { return &interface_; }

private:
    ffi_cif interface_{};
    std::vector<ffi_type *> parameters_;
};

} // namespace

size_t WidthOf(NativeType type)
{
    return type == NativeType::Nothing ? 0 : ForeignType(type)->size;
}

NativeValue Narrowed(NativeType type, NativeValue value)
{
    switch (type) {
    case NativeType::Nothing:
        value.integer = 0;
        break;
    case NativeType::Boolean:
        value.integer = static_cast<uint8_t>(value.integer) != 0 ? 1 : 0;
        break;
    case NativeType::Int8:
        value.integer = static_cast<int8_t>(value.integer); // NOLINT(bugprone-signed-char-misuse): a number
        break;
    case NativeType::UInt8:
        value.integer = static_cast<uint8_t>(value.integer);
        break;
    case NativeType::Int16:
        value.integer = static_cast<int16_t>(value.integer);
        break;
    case NativeType::UInt16:
        value.integer = static_cast<uint16_t>(value.integer);
        break;
    case NativeType::Int32:
        value.integer = static_cast<int32_t>(value.integer);
        break;
    case NativeType::UInt32:
        value.integer = static_cast<uint32_t>(value.integer);
        break;
    case NativeType::Int64:
    case NativeType::UInt64:
    case NativeType::Single:
    case NativeType::Double:
    case NativeType::Pointer:
        break;
    }
    return value;
}

NativeValue CallNative(void *function, const NativeSignature &signature, const NativeValue *arguments)
{
    CallInterface interface(signature);
    const size_t count = signature.parameters.size();
    std::vector<NativeValue> values(count);
    std::vector<void *> addresses(count);
    for (size_t i = 0; i < count; ++i) {
        values[i] = Narrowed(signature.parameters[i], arguments[i]);
        addresses[i] = &values[i];
    }
    NativeValue result{};
    ffi_call(interface.Get(), FFI_FN(function), &result, addresses.data());
    return Narrowed(signature.result, result);
}

struct NativeCallback::Implementation {
    Implementation(NativeSignature itsSignature, Body itsBody)
        : signature(std::move(itsSignature)), interface(signature), body(std::move(itsBody)),
          closure(static_cast<ffi_closure *>(ffi_closure_alloc(sizeof(ffi_closure), &function)))
    {
        if (closure == nullptr)
            throw std::bad_alloc();
        if (ffi_prep_closure_loc(closure, interface.Get(), Enter, this, function) != FFI_OK) {
            ffi_closure_free(closure);
            throw std::invalid_argument("no function can have this signature");
        }
    }
    ~Implementation() { ffi_closure_free(closure); }
    Implementation(const Implementation &) = delete;
    Implementation &operator=(const Implementation &) = delete;

    static void Enter(ffi_cif *, void *result, void **arguments, void *context)
    {
        const auto &self = *static_cast<const Implementation *>(context);
        const std::vector<NativeType> &types = self.signature.parameters;
        std::vector<NativeValue> values(types.size());
        for (size_t i = 0; i < types.size(); ++i) {
            NativeValue value{};
            std::memcpy(&value, arguments[i], ForeignType(types[i])->size);
            values[i] = Narrowed(types[i], value);
        }
        const NativeValue value = Narrowed(self.signature.result, self.body(values.data()));
        switch (self.signature.result) {
        case NativeType::Nothing:
            break;
        case NativeType::Single:
            std::memcpy(result, &value.single, sizeof value.single);
            break;
        // A caller expects whole numbers in the width of a register, however narrow they are.
        default:
            std::memcpy(result, &value, sizeof value);
            break;
        }
    }

    NativeSignature signature;
    CallInterface interface;
    Body body;
    void *function = nullptr;
    ffi_closure *closure;
};

NativeCallback::NativeCallback(NativeSignature signature, Body body)
    : implementation_(std::make_unique<Implementation>(std::move(signature), std::move(body)))
{
}

NativeCallback::~NativeCallback() = default;

void *NativeCallback::Function() const
{
    return implementation_->function;
}

} // namespace qzlhost
