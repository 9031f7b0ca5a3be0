// A dictionary that compares keys by address and retains neither keys nor values.
#include "platform/gnustep/address_dictionary.h"

#include "platform/gnustep/objects.h"

using cocoaport::Object;

@interface CocoaportAddressEnumerator : NSEnumerator {
    CocoaportAddressDictionary *dictionary;
    std::unordered_map<const void *, const void *>::const_iterator *position;
}
- (id)initWithDictionary:(CocoaportAddressDictionary *)theDictionary;
@end

@implementation CocoaportAddressEnumerator

- (id)initWithDictionary:(CocoaportAddressDictionary *)theDictionary
{
    self = [super init];
    if (self != nil) {
        dictionary = [theDictionary retain];
        position = new std::unordered_map<const void *, const void *>::const_iterator(
            theDictionary->entries->begin());
    }
    return self;
}

- (void)dealloc
{
    delete position;
    [dictionary release];
    [super dealloc];
}

- (id)nextObject
{
    if (*position == dictionary->entries->end())
        return nil;
    const void *const key = (*position)->first;
    ++*position;
    return Object(key);
}

@end

@implementation CocoaportAddressDictionary

- (id)init
{
    return [self initWithCapacity:0];
}

- (id)initWithCapacity:(NSUInteger)capacity
{
    entries = new std::unordered_map<const void *, const void *>(capacity);
    return self;
}

- (void)dealloc
{
    delete entries;
    [super dealloc];
}

- (NSUInteger)count
{
    return entries->size();
}

- (id)objectForKey:(id)key
{
    const auto entry = entries->find(key);
    return entry == entries->end() ? nil : Object(entry->second);
}

- (NSEnumerator *)keyEnumerator
{
    return [[[CocoaportAddressEnumerator alloc] initWithDictionary:self] autorelease];
}

- (void)setObject:(id)object forKey:(id)key
{
    entries->insert_or_assign(key, object);
}

- (void)removeObjectForKey:(id)key
{
    entries->erase(key);
}

- (void)removeAllObjects
{
    entries->clear();
}

- (id)mutableCopyWithZone:(NSZone *)zone
{
    CocoaportAddressDictionary *const copy = [[[self class] allocWithZone:zone] init];
    *copy->entries = *entries;
    return copy;
}

- (id)copyWithZone:(NSZone *)zone
{
    return [self mutableCopyWithZone:zone];
}

- (BOOL)isEqual:(id)other
{
    if (![other isKindOfClass:[CocoaportAddressDictionary class]])
        return NO;
    return *static_cast<CocoaportAddressDictionary *>(other)->entries == *entries;
}

- (BOOL)isEqualToDictionary:(NSDictionary *)other
{
    return [self isEqual:other];
}

- (NSUInteger)hash
{
    return entries->size();
}

- (NSString *)descriptionWithLocale:(id)locale indent:(NSUInteger)level
{
    (void)locale;
    (void)level;
    return [NSString stringWithFormat:@"<%@ %p: %zu entries>", [self class], self, entries -> size()];
}

- (NSString *)description
{
    return [self descriptionWithLocale:nil indent:0];
}

@end
