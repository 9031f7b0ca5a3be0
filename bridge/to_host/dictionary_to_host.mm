// Fills a host Dictionary with the entries of a Cocoa dictionary.
#include "bridge/to_host/dictionary_to_host.h"

#import <Foundation/Foundation.h>

#include "bridge/to_cocoa/dictionary_methods.h"
#include "bridge/to_host/object_to_variant.h"
#include "frame/host_ref.h"

REALdictionary NSDictionaryRB(NSDictionary *dictionary)
{
    if (dictionary == nil)
        return nullptr;
    HostRef<REALobject> result(REALnewInstance("Dictionary"));
    if (!result)
        return nullptr;

    const DictionaryMethodsEnd end;
    NSArray *const keys = [dictionary allKeys];
    const NSUInteger count = [keys count];
    for (NSUInteger index = 0; index < count; ++index) {
        const id key = [keys objectAtIndex:index];
        const id value = [dictionary objectForKey:key];
        const HostRef<REALobject> keyVariant(NewVariantFromNSObject(key));
        const HostRef<REALobject> valueVariant(NewVariantFromNSObject(value));
        // Only now: a value that is a dictionary has taken the methods over.
        gDictionaryMethods.Use(result.Get());
        if (const auto setValue = gDictionaryMethods.LastDictionarySetter.load())
            setValue(result.Get(), keyVariant.Get(), valueVariant.Get());
    }
    return reinterpret_cast<REALdictionary>(result.Release());
}
