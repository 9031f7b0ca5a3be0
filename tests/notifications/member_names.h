// Names of the library's classes and members that several tests of them use.
#pragma once

inline constexpr char kObserver[] = "NSNotificationObserverQZL";
inline constexpr char kNotification[] = "NSNotificationQZL";
inline constexpr char kCenter[] = "NSNotificationCenterQZL";
inline constexpr char kDistributed[] = "NSDistributedNotificationCenterQZL";
inline constexpr char kDiscs[] = "DRNotificationCenterQZL";

/// The hooks of a class, as MemberFunction names them.
inline constexpr char kBegin[] = "constructor hook";
inline constexpr char kEnd[] = "destructor hook";

inline constexpr char kBuild[] =
    "Constructor(name as string, theObject as variant = nil, userInfo as dictionary = nil)";
inline constexpr char kForType[] =
    "notificationCenterForType(name as string) as NSDistributedNotificationCenterQZL";
