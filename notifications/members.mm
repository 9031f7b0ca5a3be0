// Argument checks and conversions that members of several notification classes make.
#include "notifications/members.h"

#include "bridge/instance_data.h"
#include "bridge/to_cocoa/dictionary_to_cocoa.h"
#include "bridge/to_cocoa/string_to_cocoa.h"
#include "bridge/to_cocoa/variant_to_object.h"
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

// Braced initialisers are evaluated from left to right.

ObserverArguments ConvertObserverArguments(REALobject observer, REALstring name, REALobject theObject)
{
    return {NewNSString(name), WrapperHandle(observer), GetVariantAsNSObject(theObject)};
}

PostArguments ConvertPostArguments(REALstring name, REALobject theObject, REALdictionary userInfo)
{
    return {NewNSString(name), GetVariantAsNSObject(theObject), NewNSDictionary(userInfo)};
}

PostArguments ConvertPostArguments(REALstring name, REALstring theObject, REALdictionary userInfo)
{
    return {NewNSString(name), NewNSString(theObject), NewNSDictionary(userInfo)};
}
