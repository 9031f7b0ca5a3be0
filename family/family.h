// What the other plugins of the family add to a process.
#pragma once

#include <objc/objc.h>

#include <ostream>
#include <string>

#include "host/host.h"

/// A structure of QuickTime or Core Media that the family converts to a host instance and back.
struct FamilyTime {
    const char *hostClass;
    const char *objCType;
    size_t size;
    /// The method of a value that makes the host instance.
    const char *toHost;
    /// The class method of NSValue that makes a value of the host instance.
    const char *toCocoa;
};

/// For the messages of the test framework.
inline std::ostream &operator<<(std::ostream &stream, const FamilyTime &time)
{
    return stream << time.hostClass;
}

inline constexpr FamilyTime kFamilyTimes[] = {
    {"QTKitTimeQZL", "{?=qqq}", 24, "QTTimeValueQZL", "valueWithQTTimeQZL:"},
    {"QTKitTimeRangeQZL", "{?={?=qqq}{?=qqq}}", 48, "QTTimeRangeValueQZL", "valueWithQTTimeRangeQZL:"},
    {"CMTimeQZL", "{?=qiIq}", 24, "CMTimeValueQZL", "valueWithCMTimeQZL:"},
    {"CMTimeRangeQZL", "{?={?=qiIq}{?=qiIq}}", 48, "CMTimeRangeValueQZL", "valueWithCMTimeRangeQZL:"},
    {"CMTimeMappingQZL", "{?={?={?=qiIq}{?=qiIq}}{?={?=qiIq}{?=qiIq}}}", 96, "CMTimeMappingValueQZL",
     "valueWithCMTimeMappingQZL:"},
};

/// The class methods that the family adds to NSException.
enum class FamilyMethod {
    /// GetInstancesDictionaryQZL
    Registry,
    /// PrepareNSExceptionQZL
    Preparation,
    /// NewNSExceptionQZL:
    Wrapping,
};

/// Adds methods to Cocoa's classes, and host classes, piece by piece and at any time. The pieces stay for the
/// life of the process. There is one Family at a time.
class Family {
public:
    explicit Family(qzlhost::Host &host);
    Family(const Family &) = delete;
    Family &operator=(const Family &) = delete;

    // NSException

    void Offer(FamilyMethod method);
    /// The instance registry, through +[NSException GetInstancesDictionaryQZL].
    void OfferRegistry() { Offer(FamilyMethod::Registry); }
    /// The host class NSExceptionQZL and +[NSException NewNSExceptionQZL:].
    void OfferExceptions();
    /// The host class NSExceptionQZL alone.
    void OfferExceptionClass();
    /// +[NSException PrepareNSExceptionQZL].
    void OfferPreparation() { Offer(FamilyMethod::Preparation); }

    /// From now on the method raises a Cocoa exception, or no longer does.
    void Raise(FamilyMethod method, bool raises = true);
    /// From now on GetInstancesDictionaryQZL returns null, or the registry again.
    void WithholdRegistry(bool withholds = true);
    /// From now on NewNSExceptionQZL: returns null.
    void RefuseToWrap();

    int RegistryAsks() const;
    /// How many entries the registry has.
    int RegistryCount() const;
    /// The registry's entry for the object; null if there is none.
    qzlhost::Instance *Registered(id object) const;
    int ExceptionsWrapped() const;
    int Preparations() const;

    // Host objects in Cocoa

    /// The Cocoa class QZLREALobjectWrapper with +wrap: and -unwrap. A wrapper holds a reference of its own;
    /// -unwrap returns the instance with one for the caller.
    void OfferObjectWrapper();
    /// The host instance in a QZLREALobjectWrapper, borrowed; null for any other object.
    qzlhost::Instance *Wrapped(id object) const;
    int Unwraps() const;

    // Times

    /// The host class, whose instance data is the structure.
    void OfferTimeClass(const FamilyTime &time);
    /// The method of NSValue that makes the host instance; it returns null without the host class.
    void OfferTimeToHost(const FamilyTime &time);
    /// The class method of NSValue that makes an autoreleased value.
    void OfferTimeToCocoa(const FamilyTime &time);
    /// How often the methods of times were called.
    int TimesMade() const;
    /// The value whose host instance was asked for last, and what it returned.
    id LastTimeAsked() const;
    qzlhost::Instance *LastTimeAnswered() const;

private:
    qzlhost::Host &host_;
};
