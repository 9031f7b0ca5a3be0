// Fills a host Dictionary with the entries of a Cocoa dictionary.
#include "bridge/to_host/dictionary_to_host.h"

#import <Foundation/Foundation.h>

#include "bridge/dictionary_methods.h"
#include "bridge/to_host/object_to_variant.h"
#include "frame/host_references.h"

REALdictionary NSDictionaryRB(NSDictionary *dictionary, const EnclosingContainers *enclosing)
{
    if (dictionary == nil || Encloses(enclosing, dictionary))
        return nullptr;
    const EnclosingContainers here = {dictionary, enclosing};
    HostRef<REALobject> result(REALnewInstance("Dictionary"));
    if (!result)
        return nullptr;

    NSArray *const keys = [dictionary allKeys];
    if (keys == nil)
        return reinterpret_cast<REALdictionary>(result.Release());
    const LastDictionaryScope end;
    const NSUInteger count = [keys count];
    for (NSUInteger index = 0; index < count; ++index) {
        const id key = [keys objectAtIndex:index];
        const id value = [dictionary objectForKey:key];
        HostRef<REALobject> keyVariant(NewVariantFromNSObject(key, &here));
        HostRef<REALobject> valueVariant(NewVariantFromNSObject(value, &here));
        // Only now: converting a nested dictionary replaces the methods.
        gDictionaryMethods.Use(result.Get());
        if (const auto setValue = gDictionaryMethods.LastDictionarySetter.load())
            setValue(result.Get(), keyVariant.Get(), valueVariant.Get());
        keyVariant.GiveBack();
        valueVariant.GiveBack();
    }
    return reinterpret_cast<REALdictionary>(result.Release());
}

REALobject NewDictionaryOfEntries(const ConversionSubject &subject)
{
    return AsInstance(NSDictionaryRB(subject.object, subject.enclosing));
}
