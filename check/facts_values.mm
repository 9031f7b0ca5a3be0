// Records what the values of this system do where it was not known, beside what they do on Linux.
#include <ApplicationServices/ApplicationServices.h>
#include <objc/runtime.h>

#include "check/groups.h"
#include "check/programs.h"

namespace {

NSString *ClassName(id object)
{
    return [NSString stringWithUTF8String:object_getClassName(object)];
}

NSString *CType(NSNumber *number)
{
    return [NSString stringWithUTF8String:[number objCType]];
}

/// The name and the number of the type that `_cfTypeID` returns; "none" if the object lacks the method.
NSString *TypeName(id object)
{
    const SEL message = @selector(_cfTypeID);
    if (![object respondsToSelector:message])
        return @"none";
    const auto answer = reinterpret_cast<CFTypeID (*)(id, SEL)>([object methodForSelector:message]);
    const CFTypeID type = answer(object, message);
    const CFStringRef name = CFCopyTypeIDDescription(type);
    return Text({ [Bridged(name) autorelease], @", ", @(type) });
}

NSString *TextOfBytes(const char *bytes, CFIndex length, CFStringEncoding encoding)
{
    const CFStringRef text =
        CFStringCreateWithBytes(nullptr, reinterpret_cast<const UInt8 *>(bytes), length, encoding, true);
    return Quoted([Bridged(text) autorelease]);
}

NSString *SecondsAt(NSUInteger month, NSUInteger day, NSUInteger hour)
{
    NSCalendarDate *const date = [NSCalendarDate dateWithYear:2024
                                                        month:month
                                                          day:day
                                                         hour:hour
                                                       minute:30
                                                       second:0
                                                     timeZone:[NSTimeZone timeZoneWithName:@"Europe/Berlin"]];
    return Text({
        @(static_cast<int64_t>([date timeIntervalSinceReferenceDate])), @" s, hour ", @([date hourOfDay])
    });
}

/// What the File Manager reports for the root: its node, its name, whether its parent is an item, its path.
NSString *Root()
{
    FSRef root = {}, parent = {};
    FSCatalogInfo info = {};
    HFSUniStr255 name = {};
    UInt8 path[1024] = {};
    CFURLGetFSRef(reinterpret_cast<CFURLRef>([NSURL fileURLWithPath:@"/"]), &root);
    const OSErr asked = FSGetCatalogInfo(&root, kFSCatInfoNodeID, &info, nullptr, nullptr, &parent);
    const OSErr named = FSGetCatalogInfo(&root, kFSCatInfoNone, nullptr, &name, nullptr, nullptr);
    const OSErr ofParent = FSGetCatalogInfo(&parent, kFSCatInfoNone, nullptr, nullptr, nullptr, nullptr);
    const OSStatus pathed = FSRefMakePath(&root, path, sizeof path);
    return Text({
        @(asked), @" ", @(named), @" ", @(ofParent), @" ", @(pathed), @", node ", @(info.nodeID),
            @", a name of ", @(name.length), @", ",
            [NSString stringWithUTF8String:reinterpret_cast<const char *>(path)]
    });
}

struct NumberFact {
    NSString *what, *onLinux;
    NSNumber *(*make)();
};

const NumberFact kNumbers[] = {
    {@"numberWithBool:", @"C", [] { return [NSNumber numberWithBool:YES]; }},
    {@"numberWithChar:", @"i", [] { return [NSNumber numberWithChar:100]; }},
    {@"numberWithUnsignedChar:", @"i", [] { return [NSNumber numberWithUnsignedChar:100]; }},
    {@"numberWithShort:", @"i", [] { return [NSNumber numberWithShort:100]; }},
    {@"numberWithUnsignedShort:", @"i", [] { return [NSNumber numberWithUnsignedShort:100]; }},
    {@"numberWithInt:", @"i", [] { return [NSNumber numberWithInt:100]; }},
    {@"numberWithUnsignedInt:", @"i", [] { return [NSNumber numberWithUnsignedInt:100]; }},
    {@"numberWithLong:", @"i", [] { return [NSNumber numberWithLong:100]; }},
    {@"numberWithUnsignedLong:", @"i", [] { return [NSNumber numberWithUnsignedLong:100]; }},
    {@"numberWithLongLong:", @"i", [] { return [NSNumber numberWithLongLong:100]; }},
    {@"numberWithUnsignedLongLong: 2^32", @"q",
     [] { return [NSNumber numberWithUnsignedLongLong:1ull << 32]; }},
    {@"numberWithUnsignedLongLong: 2^63", @"Q",
     [] { return [NSNumber numberWithUnsignedLongLong:1ull << 63]; }},
    {@"numberWithFloat:", @"f", [] { return [NSNumber numberWithFloat:100]; }},
    {@"numberWithDouble:", @"d", [] { return [NSNumber numberWithDouble:100]; }},
};

} // namespace

void RecordValueFacts()
{
    for (const NumberFact &number : kNumbers)
        Fact(Text({@"objCType of ", number.what}), number.onLinux, [&] { return CType(number.make()); });
    NSArray *const objects = @[
        @"text", @5, @true, [NSDate date], [NSData data], [NSArray array], [NSDictionary dictionary],
        [NSSet set], [NSURL fileURLWithPath:@"/"], [NSNull null], [NSTimeZone localTimeZone],
        [[[NSObject alloc] init] autorelease]
    ];
    NSString *const names[] = {@"a string", @"a number", @"a boolean",    @"a date",
                               @"data",     @"an array", @"a dictionary", @"a set",
                               @"a URL",    @"NSNull",   @"a time zone",  @"a plain object"};
    for (NSUInteger i = 0; i < [objects count]; ++i)
        Fact(Text({@"_cfTypeID of ", names[i]}), @"none",
             [&] { return TypeName([objects objectAtIndex:i]); });
    Fact(@"The class of a number 1", @"NSIntNumber", [] { return ClassName([NSNumber numberWithInt:1]); });
    Fact(@"The class of a short string", @"GSCInlineString",
         [] { return ClassName([NSString stringWithUTF8String:"a"]); });
    Fact(@"The class of a long string", @"GSMutableString",
         [] { return ClassName([@"" stringByPaddingToLength:100 withString:@"a" startingAtIndex:0]); });
    Fact(@"CFStringGetCString of a lone surrogate", @"no", [] {
        const unichar lone = 0xD800;
        char bytes[16] = {};
        return YesOrNo(CFStringGetCString(reinterpret_cast<CFStringRef>([NSString stringWithCharacters:&lone
                                                                                                length:1]),
                                          bytes, sizeof bytes, kCFStringEncodingUTF8));
    });
    Fact(@"A lone surrogate, back to the host", @"Nil", [] {
        const unichar lone = 0xD800;
        return TextOf(VariantOf([NSString stringWithCharacters:&lone length:1]));
    });
    Fact(@"UTF-16 without a mark, 41 00", @"\"䄀\"",
         [] { return TextOfBytes("\x41\0", 2, kCFStringEncodingUTF16); });
    Fact(@"UTF-32 without a mark, 41 00 00 00", @"nil",
         [] { return TextOfBytes("\x41\0\0\0", 4, kCFStringEncodingUTF32); });
    Fact(@"ASCII with the byte E9", @"\"é\"", [] { return TextOfBytes("\xE9", 1, kCFStringEncodingASCII); });
    Fact(@"The calendar at the missing hour", @"733541400 s, hour 3", [] { return SecondsAt(3, 31, 2); });
    Fact(@"The calendar at the doubled hour", @"751685400 s, hour 2", [] { return SecondsAt(10, 27, 2); });
    Fact(@"The calendar at month 13", @"757380600 s, hour 0", [] { return SecondsAt(13, 1, 0); });
    Fact(@"The root, of the File Manager", @"0 0 -50 0, node 2, a name of 1, /", Root);
    Fact(@"addObject: nil", @"NSInvalidArgumentException: Tried to add nil to array", [] {
        [[NSMutableArray array] addObject:NSClassFromString(@"NoClass")];
        return @"nothing raised";
    });
}
