// A small plugin library for the host's own tests: two classes whose members show how they were called.
#include <cstdint>
#include <mutex>
#include <string>

namespace {

struct Object;
struct String;

void *(*gResolve)(const char *) = nullptr;
int64_t gRecordVersion = 13;

template <typename F>
F *HostFunction(const char *name)
{
    return reinterpret_cast<F *>(gResolve(name));
}

String *NewString(const std::string &text)
{
    auto *const build =
        HostFunction<String *(const char *, int32_t, uint32_t)>("REALBuildStringWithEncoding");
    return build(text.data(), static_cast<int32_t>(text.size()), 0x08000100);
}

std::string Contents(String *string)
{
    return HostFunction<const char *(String *)>("StringGetCString")(string);
}

Object *NewObject(const char *className)
{
    return HostFunction<Object *(const char *)>("PluginNewInstance")(className);
}

Object *Locked(Object *object)
{
    HostFunction<void(Object *)>("REALLockObject")(object);
    return object;
}

void Release(Object *object)
{
    HostFunction<void(Object *)>("REALUnlockObject")(object);
}

/// The instance data of both classes.
struct Data {
    int64_t handle;
    int16_t small;
    bool on;
};

Data *DataOf(Object *object)
{
    return reinterpret_cast<Data *>(reinterpret_cast<char *>(object) + 48);
}

// What ran, in order

std::mutex gLogMutex;
std::string gLogText;

void Log(const char *what)
{
    std::lock_guard lock(gLogMutex);
    gLogText += what;
}

void BaseInit(Object *)
{
    Log("BaseInit ");
}

void BaseFinal(Object *)
{
    Log("BaseFinal ");
}

void BaseConstructor(Object *self, int64_t start)
{
    Log("BaseConstructor ");
    DataOf(self)->handle = start;
}

void BaseDestructor(Object *)
{
    Log("BaseDestructor ");
}

void DerivedInit(Object *)
{
    Log("DerivedInit ");
}

void DerivedFinal(Object *)
{
    Log("DerivedFinal ");
}

void DerivedDestructor(Object *)
{
    Log("DerivedDestructor ");
}

String *TakeLog()
{
    std::lock_guard lock(gLogMutex);
    String *const text = NewString(gLogText);
    gLogText.clear();
    return text;
}

// Overloads

String *PickInteger(Object *, int64_t)
{
    return NewString("integer");
}
String *PickDerivedInteger(Object *, int64_t)
{
    return NewString("derived integer");
}
String *PickDouble(Object *, double)
{
    return NewString("double");
}
String *PickString(Object *, String *)
{
    return NewString("string");
}
String *PickVariant(Object *, Object *)
{
    return NewString("variant");
}
String *PickFlag(Object *, String *, bool flag)
{
    return NewString(flag ? "true" : "false");
}
String *PickOptions(Object *, String *, uint32_t options)
{
    return NewString(std::to_string(options));
}
String *PickBase(Object *, Object *other)
{
    return NewString(other ? "base" : "nothing");
}
int64_t PairLeft(Object *, Object *, int64_t)
{
    return 1;
}
int64_t PairRight(Object *, int64_t, Object *)
{
    return 2;
}

// Values that pass through

Object *Echo(Object *, Object *value)
{
    return Locked(value);
}
Object *Borrowed(Object *, Object *value)
{
    return value;
}
bool IsNull(Object *, String *text)
{
    return text == nullptr;
}
double Half(Object *, double number)
{
    return number / 2;
}
float HalfSingle(Object *, float number)
{
    return number / 2;
}
int64_t Sum(Object *, int8_t a, uint8_t b, int16_t c, uint16_t d, int32_t e, uint32_t f)
{
    return a + b + c + d + e + static_cast<int64_t>(f);
}

// Properties

int64_t GetTick(Object *self, int64_t parameter)
{
    return DataOf(self)->handle * parameter;
}
void SetTick(Object *self, int64_t parameter, int64_t value)
{
    DataOf(self)->handle = value / parameter;
}
String *GetTitle(Object *, int64_t)
{
    return NewString("the title");
}
bool GetOn(Object *self)
{
    return DataOf(self)->on;
}
void SetOn(Object *self, bool on)
{
    DataOf(self)->on = on;
}
String *Kind()
{
    return NewString("an example");
}

// Mistakes and exceptions

void Raise(Object *, String *className)
{
    Object *const exception = NewObject(Contents(className).c_str());
    String *const message = NewString("raised by the example");
    HostFunction<bool(Object *, const char *, String *)>("REALSetPropValueString")(exception, "Message",
                                                                                   message);
    HostFunction<bool(Object *, const char *, int64_t)>("REALSetPropValueInteger")(exception, "ErrorNumber",
                                                                                   7);
    HostFunction<void(String *)>("REALUnlockString")(message);
    HostFunction<void(Object *)>("RuntimeRaiseException")(exception);
    Release(exception);
}

Object *RaiseWithResult(Object *self, String *className)
{
    Raise(self, className);
    return NewObject("Dictionary");
}

void Leak(Object *, String *className)
{
    NewObject(Contents(className).c_str());
}
void ReleaseArgument(Object *, Object *value)
{
    Release(value);
}
void ReleaseTwice(Object *)
{
    Object *const object = NewObject("Dictionary");
    Release(object);
    Release(object);
}
void ThrowStandard(Object *)
{
    throw std::string("a C++ exception");
}

Object *Make(int64_t start)
{
    Object *const object = NewObject("BaseEX");
    DataOf(object)->handle = start;
    return object;
}

int64_t HandleOf(Object *, Object *other)
{
    return other ? DataOf(other)->handle : -1;
}

// The event

struct EventRow {
    const char *declaration;
    uint64_t key;
    uint64_t zeros[2];
};

alignas(16) EventRow gBaseEvents[] = {{"Fired(what as string, sender as BaseEX)", 0, {}}};

bool Fire(Object *self, String *what)
{
    uint64_t key = gBaseEvents[0].key;
    if (gRecordVersion == 9)
        key = reinterpret_cast<const uint64_t *>(key)[1];
    void *const handler = HostFunction<void *(Object *, uint64_t)>("GetEventInstance")(self, key);
    if (handler)
        reinterpret_cast<void (*)(Object *, String *, Object *)>(handler)(self, what, self);
    return handler != nullptr;
}

/// Looks the handler up by the content of the slot, which is the key from version 10 on.
bool HasHandlerForSlot(Object *self)
{
    return HostFunction<void *(Object *, uint64_t)>("GetEventInstance")(self, gBaseEvents[0].key) != nullptr;
}

// The records

struct PropertyRow {
    void *zero;
    const char *name;
    const char *type;
    uint64_t flags;
    void *getter;
    void *setter;
    int64_t parameter;
    uint64_t zeros[5];
};

struct MethodRow {
    void *function;
    void *setter;
    const char *declaration;
    uint64_t flags;
    uint64_t zeros[2];
};

struct ConstantRow {
    const char *declaration;
    uint64_t zeros[4];
};

struct ClassRow {
    uint64_t version;
    const char *name;
    const char *super;
    uint64_t dataSize;
    uint64_t system;
    void *constructor;
    void *destructor;
    PropertyRow *properties;
    uint64_t propertyCount;
    MethodRow *methods;
    uint64_t methodCount;
    EventRow *events;
    uint64_t eventCount;
    uint64_t zeros13[5];
    ConstantRow *constants;
    uint64_t constantCount;
    uint64_t flags;
    uint64_t zeros21[2];
    MethodRow *sharedMethods;
    uint64_t sharedMethodCount;
    uint64_t zeros25[5];
};
static_assert(sizeof(ClassRow) == 240 && sizeof(PropertyRow) == 96 && sizeof(MethodRow) == 48);

template <typename F>
void *Address(F *function)
{
    return reinterpret_cast<void *>(function);
}

void *const kField = reinterpret_cast<void *>(~uintptr_t{0});

template <typename F>
MethodRow Member(const char *declaration, F *function)
{
    return {Address(function), nullptr, declaration, 4, {}};
}

alignas(16) PropertyRow gBaseProperties[] = {
    {nullptr, "Handle", "Integer", 6, kField, kField, 0, {}},
    {nullptr, "Small", "Int16", 6, kField, kField, 8, {}},
    {nullptr, "Tick", "Integer", 6, Address(&GetTick), Address(&SetTick), 3, {}},
    {nullptr, "Title", "String", 6, Address(&GetTitle), nullptr, 0, {}},
};

alignas(16) MethodRow gBaseMethods[] = {
    Member("Constructor(start as integer = 5)", &BaseConstructor),
    Member("Destructor", &BaseDestructor),
    Member("Pick(i as integer) as string", &PickInteger),
    Member("Pick(d as double) as string", &PickDouble),
    Member("Pick(s as string) as string", &PickString),
    Member("Pick(v as variant) as string", &PickVariant),
    Member("Pick(s as string, flag as boolean) as string", &PickFlag),
    Member("Pick(s as string, options as UInt32) as string", &PickOptions),
    Member("Pick(other as BaseEX) as string", &PickBase),
    Member("Pair(a as variant, b as integer) as integer", &PairLeft),
    Member("Pair(a as integer, b as variant) as integer", &PairRight),
    Member("Echo(value as variant) as variant", &Echo),
    Member("Borrowed(value as variant) as variant", &Borrowed),
    Member("IsNull(text as string = \"\") as boolean", &IsNull),
    Member("Half(number as double) as double", &Half),
    Member("HalfSingle(number as single) as single", &HalfSingle),
    Member("Sum(a as Int8, b as UInt8, c as Int16, d as UInt16, e as Int32, f as UInt32) as integer", &Sum),
    {Address(&GetOn), Address(&SetOn), "on as boolean", 4, {}},
    Member("Raise(className as string)", &Raise),
    Member("RaiseWithResult(className as string) as Dictionary", &RaiseWithResult),
    Member("Leak(className as string)", &Leak),
    Member("ReleaseArgument(value as variant)", &ReleaseArgument),
    Member("ReleaseTwice", &ReleaseTwice),
    Member("ThrowStandard", &ThrowStandard),
    Member("HandleOf(other as BaseEX) as integer", &HandleOf),
    Member("Fire(what as string) as boolean", &Fire),
    Member("HasHandlerForSlot() as boolean", &HasHandlerForSlot),
};

alignas(16) ConstantRow gBaseConstants[] = {{"Answer = 42", {}}, {"Below = -1", {}}};

alignas(16) MethodRow gBaseShared[] = {
    Member("Make(start as integer) as BaseEX", &Make),
    Member("Kind as string", &Kind),
    Member("TakeLog() as string", &TakeLog),
};

alignas(16) MethodRow gDerivedMethods[] = {
    Member("Pick(i as integer) as string", &PickDerivedInteger),
    Member("Destructor", &DerivedDestructor),
};

template <typename T, size_t N>
constexpr uint64_t Count(T (&)[N])
{
    return N;
}

ClassRow MakeBase()
{
    ClassRow row{};
    row.name = "BaseEX";
    row.dataSize = 16;
    row.constructor = Address(&BaseInit);
    row.destructor = Address(&BaseFinal);
    row.properties = gBaseProperties;
    row.propertyCount = Count(gBaseProperties);
    row.methods = gBaseMethods;
    row.methodCount = Count(gBaseMethods);
    row.events = gBaseEvents;
    row.eventCount = Count(gBaseEvents);
    row.constants = gBaseConstants;
    row.constantCount = Count(gBaseConstants);
    row.flags = 4;
    row.sharedMethods = gBaseShared;
    row.sharedMethodCount = Count(gBaseShared);
    return row;
}

ClassRow MakeDerived()
{
    ClassRow row{};
    row.name = "DerivedEX";
    row.super = "BaseEX";
    row.constructor = Address(&DerivedInit);
    row.destructor = Address(&DerivedFinal);
    row.methods = gDerivedMethods;
    row.methodCount = Count(gDerivedMethods);
    row.flags = 4;
    return row;
}

alignas(16) ClassRow gDerivedClass = MakeDerived();
alignas(16) ClassRow gBaseClass = MakeBase();

void Register(ClassRow &row)
{
    row.version = static_cast<uint32_t>(gRecordVersion);
    if (auto *const registerClass = HostFunction<void(ClassRow *)>("PluginRegisterClass"))
        registerClass(&row);
}

} // namespace

extern "C" __attribute__((visibility("default"))) void REALPluginMain(void *(*resolver)(const char *))
{
    gResolve = resolver;
    auto *const version = HostFunction<double()>("REALGetRBVersion");
    gRecordVersion = version && version() >= 2013.04 ? 13 : 9;
    HostFunction<void(int32_t)>("RegisterPluginVersion")(static_cast<int32_t>(gRecordVersion));
    Register(gDerivedClass);
    Register(gBaseClass);
}
