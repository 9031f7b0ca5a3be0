// The host's values, made of Foundation's, and as text.
#include <CoreFoundation/CoreFoundation.h>

#include "check/host.h"
#include "check/text.h"

namespace {

NSString *const kDateProperties = @"Year Month Day Hour Minute Second";

/// "2024-02-29 14:05:09".
NSString *TextOfDate(NSDictionary *properties)
{
    NSMutableString *const text = [NSMutableString string];
    const unichar separators[] = {'-', '-', ' ', ':', ':', '\0'}, *separator = separators;
    for (NSString *name in [kDateProperties componentsSeparatedByString:@" "]) {
        NSNumber *const number = [properties objectForKey:name];
        NSString *const next = [NSString stringWithCharacters:separator++ length:1];
        [text appendString:Text({[number intValue] < 10 ? @"0" : @"", number, next})];
    }
    return [text substringToIndex:[text length] - 1];
}

/// The elements of an array, or the entries of a Dictionary by their keys.
NSString *TextOfElements(id container)
{
    NSMutableArray *const texts = [NSMutableArray array];
    if ([container isKindOfClass:[NSArray class]]) {
        for (id element in container)
            [texts addObject:TextOf(element)];
    } else {
        for (NSString *key in [[container allKeys] sortedArrayUsingSelector:@selector(compare:)])
            [texts addObject:Text({key, @": ", TextOf([container objectForKey:key])})];
    }
    return Text({@"{", [texts componentsJoinedByString:@", "], @"}"});
}

} // namespace

Instance Variant(int64_t code, id value)
{
    const Instance variant = [[[HostInstance alloc] init] autorelease];
    variant->code = code;
    variant->value = [value retain];
    return variant;
}

Instance Value(NSString *className, id value)
{
    const Instance instance = NewInstance(className);
    [instance->value release];
    instance->value = [value retain];
    return instance;
}

Instance Date(NSArray *sixNumbers)
{
    NSArray *const names = [kDateProperties componentsSeparatedByString:@" "];
    const Instance date = Value(@"Date", [NSDictionary dictionaryWithObjects:sixNumbers forKeys:names]);
    date->code = code::Date;
    return date;
}

HostString StringOfBytes(NSData *bytes, uint32_t encoding)
{
    const HostString string = Variant(0, nil);
    string->value = [bytes mutableCopy];
    [string->value appendBytes:"" length:1];
    string->encoding = encoding;
    return string;
}

HostString String(NSString *text)
{
    return StringOfBytes([text dataUsingEncoding:NSUTF8StringEncoding], kCFStringEncodingUTF8);
}

NSString *TextOfString(HostString string)
{
    if (string == nil)
        return @"";
    const auto *const bytes = static_cast<const UInt8 *>([string->value bytes]);
    const auto length = static_cast<CFIndex>([string->value length]) - 1;
    const CFStringRef text = CFStringCreateWithBytes(nullptr, bytes, length, string->encoding, false);
    return [Bridged(text) autorelease];
}

NSString *TextOf(Instance value)
{
    if (value == nil || static_cast<id>(value) == [NSNull null])
        return @"Nil";
    switch (value->code) {
    case code::Integer:
    case code::Int64:
        return Text({@"Integer ", value->value});
    case code::Single:
        return Text({@"Single ", value->value});
    case code::Double:
        return Text({@"Double ", value->value});
    case code::Boolean:
        return [value->value boolValue] ? @"Boolean true" : @"Boolean false";
    case code::String:
        return Quoted(TextOfString(value->value));
    case code::Date:
        return TextOfDate(value->value);
    default:
        break;
    }
    if (value->code > code::Array || [value->type isEqual:@"Dictionary"])
        return TextOfElements(value->value);
    if ([value->type isEqual:@"MemoryBlock"])
        return Text({ @"MemoryBlock of ", @([value->value length]), @" bytes" });
    if ([value->type isEqual:@"FolderItem"])
        return Text({@"FolderItem ", Quoted(value->value)});
    return value->type;
}
