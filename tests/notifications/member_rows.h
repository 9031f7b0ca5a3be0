// Every member of the library's classes, and what makes Cocoa raise an exception in it.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "tests/notifications/member_names.h"

/// The instance that a member is called on.
enum class Self {
    /// A shared method has none.
    None,
    /// Without a handle.
    Bare,
    /// With the handle that its constructor gave it.
    Constructed,
    /// With a handle that raises at every message.
    Raising,
};

/// What raises, apart from the handle and the conversion of the arguments.
struct Trouble {
    enum class Kind { None, Method, LocalType, Registry, Preparation } kind = Kind::None;
    const char *cocoaClass = nullptr;
    const char *selector = nullptr;
};

inline constexpr Trouble kNoTrouble = {};
/// The constant NSLocalNotificationCenterType raises at every message.
inline constexpr Trouble kLocalType = {Trouble::Kind::LocalType};
/// The family's class methods raise.
inline constexpr Trouble kRegistry = {Trouble::Kind::Registry};
inline constexpr Trouble kPreparation = {Trouble::Kind::Preparation};

/// The class method raises.
constexpr Trouble RaisingIn(const char *cocoaClass, const char *selector)
{
    return {Trouble::Kind::Method, cocoaClass, selector};
}

enum class Argument {
    Nothing,
    Name,
    /// The empty string: nil in Cocoa.
    NoName,
    UnknownType,
    Object,
    /// An array that Cocoa refuses to hold.
    ArrayWithNil,
    Info,
    /// A dictionary that contains such an array.
    InfoWithNil,
    Observer,
    /// An observer whose Cocoa object lacks the method that centres call.
    DeafObserver,
    Notification,
    /// The address of an object that raises at every message.
    RaisingAddress,
    True,
    One,
};

struct MemberRow {
    const char *testName;
    const char *className;
    const char *member;
    Self self;
    Trouble trouble;
    std::vector<Argument> arguments;
    /// The Cocoa exception's name; null for a member that calls nothing that could raise.
    const char *raises;
    /// Whether GNUstep leaks the text that it is composing when a description raises.
    bool losesText = false;
};

inline constexpr char kPost1[] = "postNotificationName(name as string)";
inline constexpr char kPost2[] = "postNotificationName(name as string, theObject as variant)";
inline constexpr char kPost3[] =
    "postNotificationName(name as string, theObject as variant, userInfo as dictionary)";
inline constexpr char kPostOptions[] =
    "postNotificationName(name as string, theObject as string, userInfo as dictionary, options as UInt32)";
inline constexpr char kPostAtOnce[] = "postNotificationName(name as string, theObject as string, userInfo as "
                                      "dictionary, deliverImmediately as boolean)";
inline constexpr char kPost[] = "postNotification(notification as NSNotificationQZL)";
inline constexpr char kRemove1[] = "removeObserver(observer as NSNotificationObserverQZL)";
inline constexpr char kRemove3[] =
    "removeObserver(observer as NSNotificationObserverQZL, name as string, theObject as variant=nil)";
inline constexpr char kAdd[] =
    "addObserver(observer as NSNotificationObserverQZL, name as string=\"\", theObject as variant=nil)";
inline constexpr char kAddSuspending[] = "addObserver(observer as NSNotificationObserverQZL, name as string, "
                                         "theObject as variant, suspensionBehavior as integer)";
inline constexpr char kBuildShared[] =
    "notificationWithName(name as string, theObject as variant = nil, userInfo "
    "as dictionary = nil) as NSNotificationQZL";

/// The names of the exceptions that the test, the stand-in family and Foundation raise.
inline constexpr char kByTest[] = "QZLRaised";
inline constexpr char kByFamily[] = "FamilyFailed";
inline constexpr char kByFoundation[] = "NSInvalidArgumentException";

// clang-format off
inline const MemberRow kMemberRows[] = {
    {"ObserverBegins", kObserver, kBegin, Self::Bare, kRegistry, {}, kByFamily},
    {"ObserverBeginsUnprepared", kObserver, kBegin, Self::Bare, kPreparation, {}, kByFamily},
    {"ObserverEnds", kObserver, kEnd, Self::Raising, kNoTrouble, {}, kByTest},
    {"ObserverEndsUnregistered", kObserver, kEnd, Self::Bare, kRegistry, {}, kByFamily},
    {"ObserverConstructor", kObserver, "Constructor", Self::Bare, RaisingIn("NSNotificationObserver", "alloc"), {}, kByTest},
    {"ObserverDestructorAtDistributed", kObserver, "Destructor", Self::Constructed, RaisingIn("NSDistributedNotificationCenter", "defaultCenter"), {}, kByTest},
    {"ObserverDestructorAtDefault", kObserver, "Destructor", Self::Constructed, RaisingIn("NSNotificationCenter", "defaultCenter"), {}, kByTest},
    {"ObserverDestructorAtService", kObserver, "Destructor", Self::Constructed, RaisingIn("IMService", "notificationCenter"), {}, kByTest},
    {"ObserverDestructorAtWorkspace", kObserver, "Destructor", Self::Constructed, RaisingIn("NSWorkspace", "sharedWorkspace"), {}, kByTest},

    {"NotificationBegins", kNotification, kBegin, Self::Bare, kRegistry, {}, kByFamily},
    {"NotificationBeginsUnprepared", kNotification, kBegin, Self::Bare, kPreparation, {}, kByFamily},
    {"NotificationEnds", kNotification, kEnd, Self::Raising, kNoTrouble, {}, kByTest},
    {"UserInfo", kNotification, "userInfo", Self::Raising, kNoTrouble, {}, kByTest},
    {"Name", kNotification, "Name", Self::Raising, kNoTrouble, {}, kByTest},
    {"Description", kNotification, "Description", Self::Raising, kNoTrouble, {}, kByTest},
    {"ObjectHandle", kNotification, "objectHandle", Self::Raising, kNoTrouble, {}, kByTest},
    {"ObjectVariant", kNotification, "objectVariant", Self::Raising, kNoTrouble, {}, kByTest},
    {"Exception", kNotification, "_exception as NSExceptionQZL", Self::Raising, kNoTrouble, {}, nullptr},
    {"Print", kNotification, "Print", Self::Raising, kNoTrouble, {}, kByTest, true},
    {"ConstructorWithHandle", kNotification, "Constructor(handle as integer)", Self::Bare, kNoTrouble, {Argument::RaisingAddress}, kByTest},
    {"ConstructorByName", kNotification, kBuild, Self::Bare, RaisingIn("NSNotification", "notificationWithName:object:userInfo:"), {Argument::Name, Argument::Object, Argument::Info}, kByTest},
    {"ConstructorConvertsObject", kNotification, kBuild, Self::Bare, kNoTrouble, {Argument::Name, Argument::ArrayWithNil, Argument::Nothing}, kByFoundation},
    {"ConstructorConvertsInfo", kNotification, kBuild, Self::Bare, kNoTrouble, {Argument::Name, Argument::Nothing, Argument::InfoWithNil}, kByFoundation},
    {"WithName", kNotification, kBuildShared, Self::None, RaisingIn("NSNotification", "notificationWithName:object:userInfo:"), {Argument::Name, Argument::Object, Argument::Info}, kByTest},
    {"WithNameConvertsObject", kNotification, kBuildShared, Self::None, kNoTrouble, {Argument::Name, Argument::ArrayWithNil, Argument::Nothing}, kByFoundation},
    {"WithNameConvertsInfo", kNotification, kBuildShared, Self::None, kNoTrouble, {Argument::Name, Argument::Nothing, Argument::InfoWithNil}, kByFoundation},

    {"CenterBegins", kCenter, kBegin, Self::Bare, kRegistry, {}, kByFamily},
    {"CenterBeginsUnprepared", kCenter, kBegin, Self::Bare, kPreparation, {}, kByFamily},
    {"CenterEnds", kCenter, kEnd, Self::Raising, kNoTrouble, {}, kByTest},
    {"PostName", kCenter, kPost1, Self::Raising, kNoTrouble, {Argument::Name}, kByTest},
    {"PostNoName", kCenter, kPost1, Self::Constructed, kNoTrouble, {Argument::NoName}, kByFoundation},
    {"PostObject", kCenter, kPost2, Self::Raising, kNoTrouble, {Argument::Name, Argument::Object}, kByTest},
    {"PostObjectWithoutName", kCenter, kPost2, Self::Constructed, kNoTrouble, {Argument::NoName, Argument::Object}, kByFoundation},
    {"PostConvertsObject", kCenter, kPost2, Self::Constructed, kNoTrouble, {Argument::Name, Argument::ArrayWithNil}, kByFoundation},
    {"PostInfo", kCenter, kPost3, Self::Raising, kNoTrouble, {Argument::Name, Argument::Object, Argument::Info}, kByTest},
    {"PostInfoWithoutName", kCenter, kPost3, Self::Constructed, kNoTrouble, {Argument::NoName, Argument::Object, Argument::Info}, kByFoundation},
    {"PostConvertsInfo", kCenter, kPost3, Self::Constructed, kNoTrouble, {Argument::Name, Argument::Object, Argument::InfoWithNil}, kByFoundation},
    {"CenterConstructor", kCenter, "Constructor", Self::Bare, RaisingIn("NSNotificationCenter", "defaultCenter"), {}, kByTest},
    {"Post", kCenter, kPost, Self::Raising, kNoTrouble, {Argument::Notification}, kByTest},
    {"PostNothing", kCenter, kPost, Self::Constructed, kNoTrouble, {Argument::Nothing}, kByFoundation},
    {"Remove", kCenter, kRemove1, Self::Raising, kNoTrouble, {Argument::Observer}, kByTest},
    {"RemoveName", kCenter, kRemove3, Self::Raising, kNoTrouble, {Argument::Observer, Argument::Name, Argument::Object}, kByTest},
    {"RemoveConvertsObject", kCenter, kRemove3, Self::Constructed, kNoTrouble, {Argument::Observer, Argument::Name, Argument::ArrayWithNil}, kByFoundation},
    {"Add", kCenter, kAdd, Self::Raising, kNoTrouble, {Argument::Observer, Argument::Name, Argument::Object}, kByTest},
    {"AddDeaf", kCenter, kAdd, Self::Constructed, kNoTrouble, {Argument::DeafObserver, Argument::Name, Argument::Object}, kByFoundation},
    {"AddConvertsObject", kCenter, kAdd, Self::Constructed, kNoTrouble, {Argument::Observer, Argument::Name, Argument::ArrayWithNil}, kByFoundation},
    {"DefaultCenter", kCenter, "defaultCenter as NSNotificationCenterQZL", Self::None, RaisingIn("NSNotificationCenter", "defaultCenter"), {}, kByTest},

    {"PostOptions", kDistributed, kPostOptions, Self::Raising, kNoTrouble, {Argument::Name, Argument::Name, Argument::Info, Argument::One}, kByTest},
    {"PostOptionsWithoutName", kDistributed, kPostOptions, Self::Constructed, kNoTrouble, {Argument::NoName, Argument::Name, Argument::Info, Argument::One}, kByFoundation},
    {"PostOptionsConvertsInfo", kDistributed, kPostOptions, Self::Constructed, kNoTrouble, {Argument::Name, Argument::Name, Argument::InfoWithNil, Argument::One}, kByFoundation},
    {"PostAtOnce", kDistributed, kPostAtOnce, Self::Raising, kNoTrouble, {Argument::Name, Argument::Name, Argument::Info, Argument::True}, kByTest},
    {"PostAtOnceWithoutName", kDistributed, kPostAtOnce, Self::Constructed, kNoTrouble, {Argument::NoName, Argument::Name, Argument::Info, Argument::True}, kByFoundation},
    {"PostAtOnceConvertsInfo", kDistributed, kPostAtOnce, Self::Constructed, kNoTrouble, {Argument::Name, Argument::Name, Argument::InfoWithNil, Argument::True}, kByFoundation},
    {"DistributedConstructor", kDistributed, "Constructor", Self::Bare, RaisingIn("NSDistributedNotificationCenter", "defaultCenter"), {}, kByTest},
    {"DistributedConstructorAgain", kDistributed, "Constructor", Self::Constructed, RaisingIn("NSDistributedNotificationCenter", "defaultCenter"), {}, kByTest},
    {"Suspended", kDistributed, "suspended as boolean", Self::Raising, kNoTrouble, {}, kByTest},
    {"SetSuspended", kDistributed, "suspended as boolean =", Self::Raising, kNoTrouble, {Argument::True}, kByTest},
    {"AddSuspending", kDistributed, kAddSuspending, Self::Raising, kNoTrouble, {Argument::Observer, Argument::Name, Argument::Object, Argument::One}, kByTest},
    {"AddSuspendingConvertsObject", kDistributed, kAddSuspending, Self::Constructed, kNoTrouble, {Argument::Observer, Argument::Name, Argument::ArrayWithNil, Argument::One}, kByFoundation},
    {"LocalType", kDistributed, "NSLocalNotificationCenterType as string", Self::None, kLocalType, {}, kByTest},
    {"DistributedDefaultCenter", kDistributed, "defaultCenter as NSDistributedNotificationCenterQZL", Self::None, RaisingIn("NSDistributedNotificationCenter", "defaultCenter"), {}, kByTest},
    {"CenterForType", kDistributed, kForType, Self::None, RaisingIn("NSDistributedNotificationCenter", "notificationCenterForType:"), {Argument::Name}, kByTest},
    {"CenterForUnknownType", kDistributed, kForType, Self::None, kNoTrouble, {Argument::UnknownType}, kByFoundation},

    {"DiscsBegin", kDiscs, kBegin, Self::Bare, kRegistry, {}, kByFamily},
    {"DiscsBeginUnprepared", kDiscs, kBegin, Self::Bare, kPreparation, {}, kByFamily},
    {"DiscsEnd", kDiscs, kEnd, Self::Raising, kNoTrouble, {}, kByTest},
    {"DiscsRemove", kDiscs, kRemove3, Self::Raising, kNoTrouble, {Argument::Observer, Argument::Name, Argument::Object}, kByTest},
    {"DiscsRemoveConvertsObject", kDiscs, kRemove3, Self::Constructed, kNoTrouble, {Argument::Observer, Argument::Name, Argument::ArrayWithNil}, kByFoundation},
    {"DiscsAdd", kDiscs, kAdd, Self::Raising, kNoTrouble, {Argument::Observer, Argument::Name, Argument::Object}, kByTest},
    {"DiscsAddNothing", kDiscs, kAdd, Self::Constructed, kNoTrouble, {Argument::Nothing, Argument::Name, Argument::Object}, kByFoundation},
    {"DiscsConstructor", kDiscs, "Constructor", Self::Bare, RaisingIn("DRNotificationCenter", "currentRunLoopCenter"), {}, kByTest},
};
// clang-format on

inline std::string KeyOf(const MemberRow &row)
{
    return std::string(row.className) + ": " + row.member;
}

/// For the messages of the test framework.
inline std::ostream &operator<<(std::ostream &stream, const MemberRow &row)
{
    return stream << KeyOf(row);
}
