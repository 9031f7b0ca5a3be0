// What the other libraries of the plugin family add to a process, as far as the tests need it.
#pragma once

#import <Foundation/Foundation.h>

#include "host/host.h"

/// Adds class methods to NSException and host classes, piece by piece, at any time. Pieces stay for the life
/// of the process; one Family at a time.
class Family {
public:
    explicit Family(qzlhost::Host &host);
    ~Family();
    Family(const Family &) = delete;
    Family &operator=(const Family &) = delete;

    /// The instance registry, through +[NSException GetInstancesDictionaryQZL].
    void OfferRegistry();
    /// The host class NSExceptionQZL and +[NSException NewNSExceptionQZL:].
    void OfferExceptions();
    /// +[NSException PrepareNSExceptionQZL].
    void OfferPreparation();

    int RegistryAsks() const;
    /// How many entries the registry has.
    int RegistryCount() const;
    /// What the registry has for the object; null where there is nothing.
    qzlhost::Instance *Registered(id object) const;
    int ExceptionsWrapped() const;
    /// From now on NewNSExceptionQZL: answers null.
    void RefuseToWrap();
    int Preparations() const;
};
