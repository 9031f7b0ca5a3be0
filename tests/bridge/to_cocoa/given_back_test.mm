// A conversion gives a host value that it reads back once Cocoa has the converted object.
#include "tests/bridge/to_cocoa/member_conversion.h"
#include "tests/support/replaced_method.h"
#include "tests/support/row_names.h"
#include "tests/support/values.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

namespace code = qzlhost::code;

using Unlock = void(void *reference);
using AddObject = void(id self, SEL selector, id object);
using SetObject = void(id self, SEL selector, id object, id key);

/// The events of a conversion, in order.
std::vector<std::string> gEvents;
/// The names of references in the events. Others are not recorded.
std::map<const void *, std::string> gNames;

/// Replaces a host function that takes a reference back, and records its calls.
template <int Kind>
struct NotedUnlock {
    static inline Unlock *original;

    static void Call(void *reference)
    {
        const auto name = gNames.find(reference);
        if (name != gNames.end())
            gEvents.push_back("unlock " + name->second);
        original(reference);
    }

    static void StandIn(Host &unloaded, const char *function)
    {
        original = reinterpret_cast<Unlock *>(unloaded.Resolver()(function));
        unloaded.Replace(function, reinterpret_cast<void *>(&Call));
    }
};

AddObject *gAddObject;
SetObject *gSetObject;

void NoteAddition(id self, SEL selector, id object)
{
    gEvents.push_back("append");
    gAddObject(self, selector, object);
}

void NoteStore(id self, SEL selector, id object, id key)
{
    gEvents.push_back("store");
    gSetObject(self, selector, object, key);
}

void StandInForUnlocks(Host &unloaded)
{
    NotedUnlock<0>::StandIn(unloaded, "REALUnlockObject");
    NotedUnlock<1>::StandIn(unloaded, "REALUnlockString");
    NotedUnlock<2>::StandIn(unloaded, "PluginUnlockText");
}

struct ElementKind {
    const char *name;
    int64_t code;
    Value (*make)(Host &host);
};

constexpr ElementKind kKinds[] = {
    {"Strings", code::String, [](Host &) { return Value("string"); }},
    {"Texts", code::Text, [](Host &) { return Value::TextOf("text"); }},
    {"Dates", code::Date, [](Host &host) { return host.NewDate(2024, 2, 29, 14, 5, 9); }},
    {"Objects", code::Object, [](Host &host) { return WrapperOf(host, "NSTimerQZL", @"object"); }},
};

class ElementsGivenBack : public MemberConversion, public ::testing::WithParamInterface<ElementKind> {};
class EntriesGivenBack : public MemberConversion {
protected:
    /// The events while a Dictionary with this one entry is converted.
    std::vector<std::string> EventsOfEntry(const Value &key, const Value &value)
    {
        const Value dictionary = NewDictionary(host(), {{key, value}});
        gNames = {{key.ObjectPointer(), "key"}, {value.ObjectPointer(), "value"}};
        gNames.erase(nullptr);
        gEvents.clear();
        {
            const ReplacedMethod<SetObject> noted(
                class_getInstanceMethod([[NSMutableDictionary dictionary] class], @selector(setObject:
                                                                                               forKey:)),
                &NoteStore);
            gSetObject = noted.Original();
            ConvertDictionary(dictionary);
        }
        gNames.clear();
        return gEvents;
    }
};

} // namespace

TEST_P(ElementsGivenBack, OneByOneEachAfterItIsAppended)
{
    Host &host = Start({}, StandInForUnlocks);
    DefineWrapperClass(host, "NSTimerQZL");
    const Value element = GetParam().make(host);
    const Value array = host.NewArray(GetParam().code, {element, element});
    for (const void *const reference : {static_cast<const void *>(element.ObjectPointer()),
                                        static_cast<const void *>(element.StringPointer()),
                                        static_cast<const void *>(element.TextPointer())})
        if (reference != nullptr)
            gNames[reference] = "element";
    // With its first date Cocoa fills arrays of its own.
    Convert(array);
    {
        const ReplacedMethod<AddObject> noted(
            class_getInstanceMethod([[NSMutableArray array] class], @selector(addObject:)), &NoteAddition);
        gAddObject = noted.Original();
        gEvents.clear();
        Convert(array);
    }
    gNames.clear();
    EXPECT_EQ(gEvents, (std::vector<std::string>{"append", "unlock element", "append", "unlock element"}));
}

INSTANTIATE_TEST_SUITE_P(Kinds, ElementsGivenBack, ::testing::ValuesIn(kKinds), kNameOfRow);

TEST_F(EntriesGivenBack, KeyThenValueAfterTheyAreStored)
{
    using Events = std::vector<std::string>;
    Host &host = Start({}, StandInForUnlocks);
    DefineWrapperClass(host, "NSTimerQZL");
    const Value key = WrapperOf(host, "NSTimerQZL", @"key");
    const Value value = WrapperOf(host, "NSTimerQZL", @"value");
    EXPECT_EQ(EventsOfEntry(key, 1), (Events{"store", "unlock key"}));
    EXPECT_EQ(EventsOfEntry("key", value), (Events{"store", "unlock value"}));
    EXPECT_EQ(EventsOfEntry(key, value), (Events{"store", "unlock key", "unlock value"}));
    EXPECT_EQ(EventsOfEntry({}, value), Events{"unlock value"}) << "without a key nothing is stored";
}
