// The classes that the library registers with a host, and the record version for each host version.
#include <limits>

#include "tests/support/plugin_test.h"
#include "tests/support/trace.h"

using qzlhost::ClassRecord;
using qzlhost::Host;
using qzlhost::HostOptions;

namespace {

struct VersionRow {
    std::optional<double> host;
    int32_t record;
};

class RegistrationByVersion : public PluginTest, public ::testing::WithParamInterface<VersionRow> {};

using Registration = PluginTest;

std::vector<std::string> Names(const std::vector<ClassRecord> &records)
{
    std::vector<std::string> names;
    for (const ClassRecord &record : records)
        names.push_back(record.name);
    return names;
}

const std::vector<std::string> kClassesInOrder = {
    "NSNotificationObserverQZL", "NSNotificationQZL",       "NSDistributedNotificationCenterQZL",
    "NSNotificationCenterQZL",   "DRNotificationCenterQZL",
};

enum class Access { Field, Getter, Method, GetterAndSetter, None };

/// The expected record of a member.
struct Member {
    const char *kind;
    const char *text;
    /// The type of a property, else empty.
    const char *type;
    uint64_t flags;
    Access access;
};

struct Class {
    const char *name;
    const char *super;
    uint64_t dataSize;
    bool hooks;
    std::vector<Member> members;
};

const Class kClasses[] = {
    {"NSNotificationObserverQZL",
     "",
     16,
     true,
     {
         {"property", "Handle", "Integer", 6, Access::Field},
         {"method", "Constructor", "", 4, Access::Method},
         {"method", "Destructor", "", 4, Access::Method},
         {"event", "GotNotification(notification as NSNotificationQZL)", "", 0, Access::None},
     }},
    {"NSNotificationQZL",
     "",
     16,
     true,
     {
         {"property", "Handle", "Integer", 6, Access::Field},
         {"property", "userInfo", "Dictionary", 6, Access::Getter},
         {"property", "Name", "String", 6, Access::Getter},
         {"property", "Description", "String", 6, Access::Getter},
         {"property", "objectHandle", "Integer", 6, Access::Getter},
         {"property", "objectVariant", "Variant", 6, Access::Getter},
         {"method", "_exception as NSExceptionQZL", "", 4, Access::Method},
         {"method", "Print", "", 4, Access::Method},
         {"method", "Constructor(handle as integer)", "", 4, Access::Method},
         {"method", "Constructor(name as string, theObject as variant = nil, userInfo as dictionary = nil)",
          "", 4, Access::Method},
         {"shared",
          "notificationWithName(name as string, theObject as variant = nil, userInfo as dictionary = nil) as "
          "NSNotificationQZL",
          "", 4, Access::Method},
     }},
    {"NSDistributedNotificationCenterQZL",
     "NSNotificationCenterQZL",
     0,
     false,
     {
         {"method",
          "postNotificationName(name as string, theObject as string, userInfo as dictionary, options as "
          "UInt32)",
          "", 4, Access::Method},
         {"method",
          "postNotificationName(name as string, theObject as string, userInfo as dictionary, "
          "deliverImmediately as "
          "boolean)",
          "", 4, Access::Method},
         {"method", "Constructor", "", 4, Access::Method},
         {"method", "suspended as boolean", "", 4, Access::GetterAndSetter},
         {"method",
          "addObserver(observer as NSNotificationObserverQZL, name as string, theObject as variant, "
          "suspensionBehavior as integer)",
          "", 4, Access::Method},
         {"constant", "NSNotificationSuspensionBehaviorDrop = 1", "", 0, Access::None},
         {"constant", "NSNotificationSuspensionBehaviorCoalesce = 2", "", 0, Access::None},
         {"constant", "NSNotificationSuspensionBehaviorHold = 3", "", 0, Access::None},
         {"constant", "NSNotificationSuspensionBehaviorDeliverImmediately = 4", "", 0, Access::None},
         {"constant", "NSNotificationDeliverImmediately = 1", "", 0, Access::None},
         {"constant", "NSNotificationPostToAllSessions = 2", "", 0, Access::None},
         {"shared", "NSLocalNotificationCenterType as string", "", 4, Access::Method},
         {"shared", "defaultCenter as NSDistributedNotificationCenterQZL", "", 4, Access::Method},
         {"shared", "notificationCenterForType(name as string) as NSDistributedNotificationCenterQZL", "", 4,
          Access::Method},
     }},
    {"NSNotificationCenterQZL",
     "",
     16,
     true,
     {
         {"property", "Handle", "Integer", 6, Access::Field},
         {"method", "postNotificationName(name as string)", "", 4, Access::Method},
         {"method", "postNotificationName(name as string, theObject as variant)", "", 4, Access::Method},
         {"method", "postNotificationName(name as string, theObject as variant, userInfo as dictionary)", "",
          4, Access::Method},
         {"method", "Constructor", "", 4, Access::Method},
         {"method", "postNotification(notification as NSNotificationQZL)", "", 4, Access::Method},
         {"method", "removeObserver(observer as NSNotificationObserverQZL)", "", 4, Access::Method},
         {"method",
          "removeObserver(observer as NSNotificationObserverQZL, name as string, theObject as variant=nil)",
          "", 4, Access::Method},
         {"method",
          "addObserver(observer as NSNotificationObserverQZL, name as string=\"\", theObject as variant=nil)",
          "", 4, Access::Method},
         {"shared", "defaultCenter as NSNotificationCenterQZL", "", 4, Access::Method},
     }},
    {"DRNotificationCenterQZL",
     "",
     16,
     true,
     {
         {"method",
          "removeObserver(observer as NSNotificationObserverQZL, name as string, theObject as variant=nil)",
          "", 4, Access::Method},
         {"method",
          "addObserver(observer as NSNotificationObserverQZL, name as string=\"\", theObject as variant=nil)",
          "", 4, Access::Method},
         {"method", "Constructor", "", 4, Access::Method},
     }},
};

Access AccessOf(const qzlhost::PropertyRecord &property)
{
    if (property.getter == qzlhost::kFieldAccess && property.setter == qzlhost::kFieldAccess)
        return Access::Field;
    return property.getter != nullptr && property.setter == nullptr ? Access::Getter : Access::None;
}

Access AccessOf(const qzlhost::MethodRecord &method)
{
    if (method.function == nullptr)
        return Access::None;
    return method.setter != nullptr ? Access::GetterAndSetter : Access::Method;
}

/// A member as a line, for comparison.
std::string Line(const std::string &kind, const std::string &text, const std::string &type, uint64_t flags,
                 Access access)
{
    return kind + " | " + text + " | " + type + " | " + std::to_string(flags) + " | " +
           std::to_string(static_cast<int>(access));
}

std::vector<std::string> Lines(const ClassRecord &record)
{
    std::vector<std::string> lines;
    for (const auto &property : record.properties) {
        EXPECT_EQ(property.parameter, 0) << property.name;
        lines.push_back(
            Line("property", property.name, property.type.name, property.flags, AccessOf(property)));
    }
    for (const auto &method : record.methods)
        lines.push_back(Line("method", method.text, "", method.flags, AccessOf(method)));
    for (const auto &event : record.events)
        lines.push_back(Line("event", event.text, "", 0, Access::None));
    for (const auto &constant : record.constants)
        lines.push_back(Line("constant", constant.text, "", 0, Access::None));
    for (const auto &method : record.sharedMethods)
        lines.push_back(Line("shared", method.text, "", method.flags, AccessOf(method)));
    return lines;
}

} // namespace

TEST_P(RegistrationByVersion, DeclaresTheRecordVersionOfTheHost)
{
    HostOptions options;
    options.version = GetParam().host;
    const Host &host = Start(options);

    EXPECT_EQ(host.DeclaredVersion(), GetParam().record);
    ASSERT_EQ(host.RegisteredClasses().size(), 5u);
    for (const ClassRecord &record : host.RegisteredClasses())
        EXPECT_EQ(record.version, static_cast<uint32_t>(GetParam().record)) << record.name;
}

INSTANTIATE_TEST_SUITE_P(
    AllVersions, RegistrationByVersion,
    ::testing::Values(VersionRow{std::nullopt, 9}, VersionRow{0.0, 9}, VersionRow{2011.43, 9},
                      VersionRow{2011.999, 9}, VersionRow{2012.0, 10}, VersionRow{2012.99, 10},
                      VersionRow{2013.0, 11}, VersionRow{2013.02, 11}, VersionRow{2013.03, 12},
                      VersionRow{2013.03999, 12}, VersionRow{2013.04, 13}, VersionRow{2026.1, 13},
                      VersionRow{std::numeric_limits<double>::infinity(), 13},
                      VersionRow{std::numeric_limits<double>::quiet_NaN(), 9}, VersionRow{-2024.01, 9}));

TEST_F(Registration, GivesTheClassesInOrder)
{
    EXPECT_EQ(Names(Start().RegisteredClasses()), kClassesInOrder);
}

TEST_F(Registration, GivesEveryMemberInOrder)
{
    const std::vector<ClassRecord> &records = Start().RegisteredClasses();
    ASSERT_EQ(records.size(), std::size(kClasses));
    for (size_t index = 0; index < records.size(); ++index) {
        const ClassRecord &record = records[index];
        const Class &expected = kClasses[index];
        EXPECT_EQ(record.name, expected.name);
        EXPECT_EQ(record.superName, expected.super) << record.name;
        EXPECT_EQ(record.dataSize, expected.dataSize) << record.name;
        EXPECT_EQ(record.flags, 4u) << record.name;
        EXPECT_EQ(record.constructor != nullptr, expected.hooks) << record.name;
        EXPECT_EQ(record.destructor != nullptr, expected.hooks) << record.name;
        std::vector<std::string> lines;
        for (const Member &member : expected.members)
            lines.push_back(Line(member.kind, member.text, member.type, member.flags, member.access));
        EXPECT_EQ(Lines(record), lines) << record.name;
    }
}

TEST_F(Registration, KeepsToTheRecordFormat)
{
    for (const ClassRecord &record : Start().RegisteredClasses())
        EXPECT_EQ(record.faults, std::vector<std::string>()) << record.name;
}

TEST_F(Registration, WithoutTheHostFunctionTriesEachClassAndGoesOn)
{
    const Host &host = Start({}, [](Host &unloaded) { unloaded.Lack("PluginRegisterClass"); });
    EXPECT_TRUE(host.RegisteredClasses().empty());
    EXPECT_EQ(host.AsksFor("PluginRegisterClass"), 5);
    EXPECT_TRUE(host.DeclaredVersion().has_value());
}

TEST_F(Registration, MissesOnlyTheClassesBeforeTheHostCanRegister)
{
    const Host &host = Start({}, [](Host &unloaded) { unloaded.AnswerFrom("PluginRegisterClass", 3); });
    EXPECT_EQ(Names(host.RegisteredClasses()),
              std::vector<std::string>(kClassesInOrder.begin() + 2, kClassesInOrder.end()));
    EXPECT_EQ(host.AsksFor("PluginRegisterClass"), 3);
}

TEST_F(Registration, AsksForTheHostVersionAndThePluginVersionOnce)
{
    const Host &host = Start();
    EXPECT_EQ(host.AsksFor("REALGetRBVersion"), 1);
    EXPECT_EQ(host.AsksFor("RegisterPluginVersion"), 1);
    EXPECT_EQ(host.AsksFor("PluginRegisterClass"), 1);
}

TEST_F(Registration, ReadsTheVersionBeforeItDeclaresOneAndRegistersLast)
{
    const Host &host = Start();
    EXPECT_EQ(FunctionsCalled(host),
              (std::vector<std::string>{"REALGetRBVersion", "RegisterPluginVersion", "PluginRegisterClass",
                                        "PluginRegisterClass", "PluginRegisterClass", "PluginRegisterClass",
                                        "PluginRegisterClass"}));
}
