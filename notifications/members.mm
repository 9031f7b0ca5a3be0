// Argument checks that members of several notification classes make.
#include "notifications/members.h"

#include "bridge/to_host/wrappers.h"
#include "frame/errors.h"

bool ConstructorCalledTooOften(REALobject instance)
{
    if (WrapperHandle(instance) == nil)
        return false;
    RaiseException("UnsupportedOperationException",
                   "Constructor called too often. Object is already initialized.");
    return true;
}

bool ObserverIsMissing(REALobject observer)
{
    if (WrapperHandle(observer) != nil)
        return false;
    RaiseException("NilObjectException", "Observer is nil.");
    return true;
}
