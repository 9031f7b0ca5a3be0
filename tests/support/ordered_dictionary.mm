// A Cocoa dictionary whose entries have an order that a test chooses.
#include "tests/support/ordered_dictionary.h"

@interface QZLOrderedDictionary : NSDictionary {
@public
    NSArray *keys;
    NSArray *values;
}
@end

@implementation QZLOrderedDictionary
- (NSUInteger)count
{
    return [keys count];
}
- (NSArray *)allKeys
{
    return keys;
}
- (NSEnumerator *)keyEnumerator
{
    return [keys objectEnumerator];
}
- (id)objectForKey:(id)key
{
    if ([key isEqual:@"broken"])
        [NSException raise:@"Broken" format:@"no value"];
    const NSUInteger index = [keys indexOfObject:key];
    return index == NSNotFound ? nil : [values objectAtIndex:index];
}
- (void)dealloc
{
    [keys release];
    [values release];
    [super dealloc];
}
@end

NSDictionary *OrderedDictionary(NSArray *keys, NSArray *values)
{
    QZLOrderedDictionary *const made = [[[QZLOrderedDictionary alloc] init] autorelease];
    made->keys = [keys retain];
    made->values = [values retain];
    return made;
}
