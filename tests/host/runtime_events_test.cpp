// Events, programs' classes, and exceptions between program and library.
#include <thread>

#include "tests/host/runtime_test.h"

namespace qzlhost {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

constexpr const char *kFired = "Fired(what as string, sender as BaseEX)";

HostOptions OptionsFor(double version)
{
    HostOptions options;
    options.version = version;
    return options;
}

class EventsOfVersion : public RuntimeTest, public testing::WithParamInterface<double> {
protected:
    EventsOfVersion() : RuntimeTest(OptionsFor(GetParam())) { LoadExample(host); }
};

} // namespace

TEST_P(EventsOfVersion, ReachTheProgramsHandler)
{
    std::vector<std::string> heard;
    Value sender;
    ClassDefinition listener{"Listener", "DerivedEX"};
    listener.events.push_back({kFired, [&](const Value &self, const std::vector<Value> &arguments) {
                                   heard.push_back(arguments.at(0).AsString());
                                   sender = arguments.at(1);
                                   EXPECT_EQ(sender.ObjectPointer(), self.ObjectPointer());
                                   return Value();
                               }});
    host.DefineClass(std::move(listener));
    const Value instance = host.New("Listener", {6});
    EXPECT_TRUE(host.Call(instance, "Fire", {"now"}).AsBoolean());
    EXPECT_THAT(heard, ElementsAre("now"));
    EXPECT_EQ(host.References(instance), 2);
    EXPECT_EQ(host.Get(instance, "Handle").AsInteger(), 6);
}

TEST_P(EventsOfVersion, WithoutAHandlerFindNone)
{
    EXPECT_FALSE(host.Call(host.New("BaseEX"), "Fire", {"now"}).AsBoolean());
}

TEST_P(EventsOfVersion, FindTheHandlerByTheSlotsContentFromVersion10OnOnly)
{
    ClassDefinition listener{"Listener", "BaseEX"};
    listener.events.push_back({kFired, [](const Value &, const std::vector<Value> &) { return Value(); }});
    host.DefineClass(std::move(listener));
    const Value instance = host.New("Listener");
    EXPECT_EQ(host.Call(instance, "HasHandlerForSlot").AsBoolean(), GetParam() > 2013);
}

INSTANTIATE_TEST_SUITE_P(Versions9And13, EventsOfVersion, testing::Values(2011.0, 2024.01));

using ProgramClasses = ExampleTest;

TEST_F(ProgramClasses, HaveMethodsPropertiesDataAndHooks)
{
    std::string log;
    ClassDefinition wrapper{"WrapperEX", ""};
    wrapper.dataSize = 8;
    wrapper.constructor = [&](Instance *instance) {
        log += "constructor ";
        *reinterpret_cast<int64_t *>(reinterpret_cast<char *>(instance) + 48) = 12;
    };
    wrapper.destructor = [&](Instance *) { log += "destructor "; };
    wrapper.methods = {{"Constructor(text as string)",
                        [&](const Value &, const std::vector<Value> &arguments) {
                            log += "Constructor(" + arguments[0].AsString() + ") ";
                            return Value();
                        }},
                       {"Destructor",
                        [&](const Value &self, const std::vector<Value> &) {
                            log += "Destructor(" + Host::Current().ClassOf(self) + ") ";
                            return Value();
                        }},
                       {"Twice(number as integer) as integer",
                        [](const Value &, const std::vector<Value> &arguments) {
                            return Value(arguments[0].AsInteger() * 2);
                        }},
                       {"Copy(value as variant) as variant",
                        [](const Value &, const std::vector<Value> &arguments) { return arguments[0]; }},
                       {"name as string", [](const Value &, const std::vector<Value> &arguments) {
                            return arguments.empty() ? Value("a name") : Value();
                        }}};
    host.DefineClass(std::move(wrapper));
    {
        const Value instance = host.New("WrapperEX", {"text"});
        EXPECT_EQ(*static_cast<int64_t *>(host.InstanceData(instance)), 12);
        EXPECT_EQ(host.Call(instance, "Twice", {21}).AsInteger(), 42);
        EXPECT_EQ(host.Call(instance, "Copy", {"text"}).AsString(), "text");
        EXPECT_EQ(host.Call(instance, "Copy", {instance}).ObjectPointer(), instance.ObjectPointer());
        EXPECT_EQ(host.Get(instance, "Name").AsString(), "a name");
        host.Set(instance, "name", "another");
        EXPECT_EQ(host.References(instance), 1);
    }
    EXPECT_EQ(log, "constructor Constructor(text) Destructor(WrapperEX) destructor ");
}

TEST_F(ProgramClasses, AreMadeByTheLibraryWithoutTheirConstructorMethod)
{
    bool constructed = false;
    ClassDefinition type{"ProgramEX", "BaseEX"};
    type.methods = {{"Constructor(start as integer = 5)", [&](const Value &self, const std::vector<Value> &) {
                         constructed = true;
                         return Host::Current().CallAs("BaseEX", self, "Constructor", {31});
                     }}};
    host.DefineClass(std::move(type));
    {
        const Value made =
            Value::Adopt(HostFunction<Instance *(const char *)>("PluginNewInstance")("programex"));
        EXPECT_FALSE(constructed);
        EXPECT_EQ(host.Get(made, "Handle").AsInteger(), 0);
    }
    const Value instance = host.New("ProgramEX");
    EXPECT_TRUE(constructed);
    EXPECT_EQ(host.Get(instance, "Handle").AsInteger(), 31);
    EXPECT_EQ(HostFunction<Instance *(const char *)>("PluginNewInstance")("NoSuchClass"), nullptr);
}

TEST_F(ProgramClasses, ClassReferencesRecogniseTheirInstances)
{
    host.DefineClass({"ProgramEX", "DerivedEX"});
    const Value instance = host.New("ProgramEX");
    const auto reference = HostFunction<void *(const char *)>("pluginObjectType");
    const auto isA = HostFunction<bool(Instance *, void *)>("RuntimeObjectIsa");
    EXPECT_TRUE(isA(instance.ObjectPointer(), reference("ProgramEX")));
    EXPECT_TRUE(isA(instance.ObjectPointer(), reference("BaseEX")));
    EXPECT_FALSE(isA(instance.ObjectPointer(), reference("Dictionary")));
    EXPECT_EQ(reference("NoSuchClass"), nullptr);
    EXPECT_FALSE(isA(instance.ObjectPointer(), nullptr));
    EXPECT_FALSE(isA(nullptr, reference("BaseEX")));
}

TEST_F(ProgramClasses, WithTextsThatAreNoDeclarationsAreRefused)
{
    ClassDefinition bad{"BadEX", "BaseEX"};
    bad.methods = {{"Bad(", [](const Value &, const std::vector<Value> &) { return Value(); }}};
    EXPECT_THROW(host.DefineClass(bad), UsageError);
    bad.methods.clear();
    bad.events = {{"NoSuchEvent()", [](const Value &, const std::vector<Value> &) { return Value(); }}};
    EXPECT_THROW(host.DefineClass(bad), UsageError);
}

TEST(ProgramClassMistakes, AnUnknownSuperclassAndTwiceDeclaredDataAreRecorded)
{
    Host host;
    host.DefineClass({"OrphanEX", "NoSuchClass"});
    host.New("OrphanEX");
    host.DefineClass({"LowerEX", "", 8});
    host.DefineClass({"UpperEX", "LowerEX", 16});
    host.New("UpperEX");
    EXPECT_THAT(host.Mistakes(), ElementsAre(HasSubstr("the superclass NoSuchClass of OrphanEX is not known"),
                                             HasSubstr("both UpperEX and its superclass LowerEX declare")));
}

using Exceptions = ExampleTest;

TEST_F(Exceptions, OfTheLibraryReachTheProgram)
{
    const Value base = host.New("BaseEX");
    try {
        host.Call(base, "Raise", {"NilObjectException"});
        FAIL() << "nothing was thrown";
    } catch (const ProgramException &exception) {
        EXPECT_EQ(exception.ClassName(), "NilObjectException");
        EXPECT_EQ(exception.Message(), "raised by the example");
        EXPECT_EQ(exception.ErrorNumber(), 7);
        EXPECT_TRUE(host.IsA(exception.Exception(), "RuntimeException"));
        EXPECT_EQ(host.Get(exception.Exception(), "Message").AsString(), "raised by the example");
        EXPECT_STREQ(exception.what(), "NilObjectException: raised by the example");
    }
    EXPECT_EQ(host.Call(base, "Pick", {1}).AsString(), "integer");
}

TEST_F(Exceptions, ReleaseTheResultOfTheirCall)
{
    EXPECT_THROW(host.Call(host.New("BaseEX"), "RaiseWithResult", {"RuntimeException"}), ProgramException);
}

TEST_F(Exceptions, OutOfAnEventAreRecordedAndReachTheCaller)
{
    ClassDefinition listener{"Listener", "BaseEX"};
    listener.events.push_back({kFired, [](const Value &self, const std::vector<Value> &) {
                                   return Host::Current().Call(self, "Raise",
                                                               {"UnsupportedOperationException"});
                               }});
    host.DefineClass(std::move(listener));
    EXPECT_EQ(ExceptionClassOf([&] { host.Call(host.New("Listener"), "Fire", {"now"}); }),
              "UnsupportedOperationException");
}

TEST_F(Exceptions, CaughtInAnEventAreGone)
{
    ClassDefinition listener{"Listener", "BaseEX"};
    listener.events.push_back({kFired, [](const Value &self, const std::vector<Value> &) {
                                   EXPECT_THROW(Host::Current().Call(self, "Raise", {"RuntimeException"}),
                                                ProgramException);
                                   return Value();
                               }});
    host.DefineClass(std::move(listener));
    EXPECT_TRUE(host.Call(host.New("Listener"), "Fire", {"now"}).AsBoolean());
}

TEST_F(Exceptions, OtherCppExceptionsOfAnEventPass)
{
    ClassDefinition listener{"Listener", "BaseEX"};
    listener.events.push_back(
        {kFired, [](const Value &, const std::vector<Value> &) -> Value { throw std::string("other"); }});
    host.DefineClass(std::move(listener));
    EXPECT_THROW(host.Call(host.New("Listener"), "Fire", {"now"}), std::string);
}

TEST_F(Exceptions, InsideAHandlerGoToTheHandlersCaller)
{
    const Value exception = host.New("OutOfMemoryException");
    const auto run =
        HostFunction<Instance *(void (*)(void *), void *)>("PluginCallFunctionWithExceptionHandler");
    const Value caught = Value::Adopt(run(
        [](void *argument) {
            HostFunction<void(Instance *)>("RuntimeRaiseException")(static_cast<Instance *>(argument));
        },
        exception.ObjectPointer()));
    EXPECT_EQ(caught.ObjectPointer(), exception.ObjectPointer());
    EXPECT_EQ(host.References(exception), 2);
    EXPECT_EQ(run([](void *) {}, nullptr), nullptr);
    EXPECT_TRUE(host.TakeException().IsNil());
}

TEST_F(Exceptions, AHandlerKeepsWhatWasRecordedBefore)
{
    const Value before = host.New("RuntimeException");
    HostFunction<void(Instance *)>("RuntimeRaiseException")(before.ObjectPointer());
    const auto run =
        HostFunction<Instance *(void (*)(void *), void *)>("PluginCallFunctionWithExceptionHandler");
    EXPECT_EQ(run([](void *) {}, nullptr), nullptr);
    EXPECT_EQ(host.TakeException().ObjectPointer(), before.ObjectPointer());
}

TEST_F(Exceptions, DoNotDisturbTheReadingOfProperties)
{
    const Value before = host.New("RuntimeException");
    HostFunction<void(Instance *)>("RuntimeRaiseException")(before.ObjectPointer());
    int64_t count = -1;
    EXPECT_TRUE(ReadProperty("REALGetPropValueInteger", host.NewDictionary(), "Count", &count));
    EXPECT_EQ(count, 0);
    EXPECT_EQ(host.TakeException().ObjectPointer(), before.ObjectPointer());
}

TEST_F(Exceptions, AreWrittenByNameWithAnEmptyMessage)
{
    const Value exception = host.New("RuntimeException");
    EXPECT_TRUE(HostFunction<bool(Instance *, const char *, String *)>("REALSetPropValueString")(
        exception.ObjectPointer(), "Message", nullptr));
    EXPECT_EQ(host.Get(exception, "Message").StringPointer(), nullptr);
    EXPECT_FALSE(HostFunction<bool(Instance *, const char *, String *)>("REALSetPropValueString")(
        exception.ObjectPointer(), "ErrorNumber", nullptr));
    EXPECT_FALSE(HostFunction<bool(Instance *, const char *, int64_t)>("REALSetPropValueInteger")(
        exception.ObjectPointer(), "Message", 1));
}

TEST(StrayExceptions, OfDestructorsCanBeTakenAndElseAreMistakes)
{
    Host host;
    ClassDefinition type{"FragileEX", ""};
    type.methods = {{"Destructor", [](const Value &, const std::vector<Value> &) -> Value {
                         throw ProgramException(Host::Current().New("IllegalCastException"));
                     }}};
    host.DefineClass(std::move(type));
    host.New("FragileEX");
    EXPECT_EQ(host.ClassOf(host.TakeException()), "IllegalCastException");
    EXPECT_THAT(host.Mistakes(), IsEmpty());
    host.New("FragileEX");
    const Value dictionary = host.New("Dictionary");
    EXPECT_THAT(host.Mistakes(), ElementsAre(HasSubstr("IllegalCastException")));
}

TEST(Threads, ShareOneHost)
{
    Host host;
    LoadExample(host);
    const Value shared = host.NewDictionary();
    const Value array = host.NewArray(code::Object);
    {
        const Value base = host.New("BaseEX");
        std::vector<std::thread> threads;
        for (int t = 0; t < 4; ++t) {
            threads.emplace_back([&, t] {
                for (int i = 0; i < 300; ++i) {
                    const Value mine = host.New("DerivedEX", {i});
                    host.DictionarySet(shared, "key " + std::to_string(t), mine);
                    EXPECT_EQ(host.Call(base, "HandleOf", {mine}).AsInteger(), i);
                    EXPECT_EQ(host.Call(base, "Echo", {std::to_string(i)}).AsString(), std::to_string(i));
                    EXPECT_THROW(host.Call(base, "Raise", {"RuntimeException"}), ProgramException);
                }
            });
        }
        for (std::thread &thread : threads)
            thread.join();
    }
    EXPECT_EQ(host.DictionaryCount(shared), 4);
    EXPECT_THAT(host.Leaks(), IsEmpty());
    EXPECT_THAT(host.Mistakes(), IsEmpty());
}

TEST(Threads, AnExceptionIsRecordedOnItsThreadOnly)
{
    Host host;
    const Value exception = host.New("RuntimeException");
    std::thread thread([&] {
        HostFunction<void(Instance *)>("RuntimeRaiseException")(exception.ObjectPointer());
        EXPECT_EQ(host.References(exception), 2);
    });
    thread.join();
    EXPECT_TRUE(host.TakeException().IsNil());
    EXPECT_EQ(host.References(exception), 1);
}

} // namespace qzlhost
