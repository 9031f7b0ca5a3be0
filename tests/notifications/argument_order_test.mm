// The order in which members convert their arguments, as the host sees it.
#import <Foundation/Foundation.h>

#include <gmock/gmock.h>

#include "tests/notifications/member_names.h"
#include "tests/support/recording_center.h"

using qzlhost::Host;
using qzlhost::String;
using qzlhost::Value;
using ::testing::ElementsAre;

namespace {

uint32_t (*gEncodingOf)(String *);
/// The strings whose encoding the library asked for, one for each conversion.
std::vector<std::string> gAsked;
std::function<void()> gOnAsk;

uint32_t NoteString(String *string)
{
    gAsked.push_back(Value::Share(string).StringBytes());
    if (gOnAsk)
        gOnAsk();
    return gEncodingOf(string);
}

struct OrderRow {
    const char *testName;
    /// The class of the instance, or null for a shared method of the notification class.
    const char *className;
    const char *member;
    /// A letter for each: 'o' is an observer, the first and the second 's' are the strings "name" and
    /// "object", 'd' is a dictionary with the key "info", 'b' a boolean, 'n' a number.
    const char *arguments;
};

constexpr OrderRow kRows[] = {
    {"PostObject", kCenter, "postNotificationName", "ss"},
    {"PostObjectAndInfo", kCenter, "postNotificationName", "ssd"},
    {"Remove", kCenter, "removeObserver", "oss"},
    {"Add", kCenter, "addObserver", "oss"},
    {"PostWithOptions", kDistributed, "postNotificationName", "ssdn"},
    {"PostWithFlag", kDistributed, "postNotificationName", "ssdb"},
    {"AddWithBehavior", kDistributed, "addObserver", "ossn"},
    {"RemoveFromDiscs", kDiscs, "removeObserver", "oss"},
    {"AddToDiscs", kDiscs, "addObserver", "oss"},
    {"Constructor", kNotification, "Constructor", "ssd"},
    {"NotificationWithName", nullptr, "notificationWithName", "ssd"},
};

class ArgumentOrder : public PluginTest, public ::testing::WithParamInterface<OrderRow> {
protected:
    Host &StartNoting()
    {
        return Start({}, [](Host &unloaded) {
            constexpr char kFunction[] = "REALGetStringEncoding";
            gEncodingOf = reinterpret_cast<uint32_t (*)(String *)>(unloaded.Resolver()(kFunction));
            unloaded.Replace(kFunction, reinterpret_cast<void *>(NoteString));
        });
    }

    std::vector<Value> Arguments(const Value &observer)
    {
        std::vector<Value> arguments;
        bool named = false;
        for (const char kind : std::string_view(GetParam().arguments)) {
            switch (kind) {
            case 'o':
                arguments.push_back(observer);
                break;
            case 's':
                arguments.emplace_back(named ? "object" : "name");
                named = true;
                break;
            case 'd': {
                const Value dictionary = host().NewDictionary();
                host().DictionarySet(dictionary, "info", int64_t{1});
                arguments.push_back(dictionary);
                break;
            }
            case 'b':
                arguments.emplace_back(true);
                break;
            default:
                arguments.emplace_back(uint32_t{3});
            }
        }
        return arguments;
    }

    /// Calls the member on a centre, which does nothing with the arguments, or on a new notification.
    void Call(const Value &center, const std::vector<Value> &arguments)
    {
        const OrderRow &row = GetParam();
        if (row.className == nullptr)
            host().CallShared(kNotification, row.member, arguments);
        else if (row.className == std::string_view(kNotification))
            host().New(kNotification, arguments);
        else
            host().Call(center, row.member, arguments);
    }
};

/// For members with an observer among their arguments.
class ObserverInArguments : public ArgumentOrder {};

std::vector<OrderRow> RowsWithObserver()
{
    std::vector<OrderRow> rows;
    for (const OrderRow &row : kRows)
        if (row.arguments[0] == 'o')
            rows.push_back(row);
    return rows;
}

} // namespace

TEST_P(ArgumentOrder, IsNameObjectUserInfo)
{
    Host &host = StartNoting();
    RecordedMessages recorded;
    const OrderRow &row = GetParam();
    const bool isCenter = row.className != nullptr && row.className != std::string_view(kNotification);
    const Value center = isCenter ? WrapperOf(host, row.className, recorded.NewCenter()) : Value();
    const std::vector<Value> arguments = Arguments(host.New(kObserver));
    gAsked.clear();

    Call(center, arguments);

    if (std::string_view(row.arguments).find('d') == std::string_view::npos)
        EXPECT_THAT(gAsked, ElementsAre("name", "object"));
    else
        EXPECT_THAT(gAsked, ElementsAre("name", "object", "info"));
}

INSTANTIATE_TEST_SUITE_P(Members, ArgumentOrder, ::testing::ValuesIn(kRows),
                         [](const auto &parameter) { return std::string(parameter.param.testName); });

TEST_P(ObserverInArguments, IsReadAfterTheNameAndBeforeTheObject)
{
    Host &host = StartNoting();
    RecordedMessages recorded;
    const Value center = WrapperOf(host, GetParam().className, recorded.NewCenter());
    const Value observer = host.New(kObserver);
    const id handle = HandleOf<id>(host, observer);
    // Their handles replace the observer's own during the conversions.
    const Value second = host.New(kObserver);
    const Value third = host.New(kObserver);
    recorded.Label(handle, "read before the name");
    recorded.Label(HandleOf<id>(host, second), "read after the name");
    recorded.Label(HandleOf<id>(host, third), "read after the object");
    gOnAsk = [&] {
        const bool isName = gAsked.back() == "name";
        *static_cast<id *>(host.InstanceData(observer)) = HandleOf<id>(host, isName ? second : third);
    };

    host.Call(center, GetParam().member, Arguments(observer));

    gOnAsk = nullptr;
    *static_cast<id *>(host.InstanceData(observer)) = handle;
    EXPECT_THAT(recorded.Take(), ElementsAre(::testing::HasSubstr("Observer: read after the name ")));
}

INSTANTIATE_TEST_SUITE_P(Members, ObserverInArguments, ::testing::ValuesIn(RowsWithObserver()),
                         [](const auto &parameter) { return std::string(parameter.param.testName); });
