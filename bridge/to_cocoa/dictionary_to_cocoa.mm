// Fills a Cocoa dictionary with the entries of a host Dictionary.
#include "bridge/to_cocoa/dictionary_to_cocoa.h"

#import <Foundation/Foundation.h>

#include "bridge/dictionary_methods.h"
#include "bridge/to_cocoa/variant_to_object.h"
#include "frame/host_references.h"

namespace {

id ObjectOrNull(REALobject variant, const EnclosingContainers *enclosing)
{
    const id object = GetVariantAsNSObject(variant, enclosing);
    return object != nil ? object : [NSNull null];
}

} // namespace

NSDictionary *NewNSDictionary(REALdictionary dictionary, const EnclosingContainers *enclosing)
{
    if (dictionary == nullptr || Encloses(enclosing, dictionary))
        return nil;
    const EnclosingContainers here = {dictionary, enclosing};
    const REALobject source = AsInstance(dictionary);
    int64_t count = 0;
    REALGetPropValueInteger(source, "Count", &count);
    if (count <= 0)
        return [NSDictionary dictionary];
    NSMutableDictionary *const result =
        [NSMutableDictionary dictionaryWithCapacity:static_cast<NSUInteger>(count)];
    if (result == nil)
        return nil;

    const LastDictionaryScope end;
    for (int64_t index = 0; index < count; ++index) {
        // Before each use: converting a nested Dictionary replaces the methods.
        gDictionaryMethods.Use(source);
        const auto keyOf = gDictionaryMethods.LastDictionaryKeyGetter.load();
        HostRef<REALobject> key(keyOf == nullptr ? nullptr : keyOf(source, index));
        gDictionaryMethods.Use(source);
        const auto valueOf = gDictionaryMethods.LastDictionaryGetter.load();
        HostRef<REALobject> value(valueOf == nullptr ? nullptr : valueOf(source, key.Get()));
        if (key) {
            const id cocoaKey = ObjectOrNull(key.Get(), &here);
            const id cocoaValue = ObjectOrNull(value.Get(), &here);
            [result setObject:cocoaValue forKey:cocoaKey];
        }
        key.GiveBack();
        value.GiveBack();
    }
    return result;
}
