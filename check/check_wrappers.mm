// Cocoa objects that reach a program as instances of wrapper classes.
#include <CoreFoundation/CoreFoundation.h>

#include "check/groups.h"
#include "check/programs.h"

/// A class that the library does not know.
@interface UnknownThing : NSObject
@end
@implementation UnknownThing
@end

/// Claims to be a Core Foundation object of a type.
@interface CoreFoundationThing : NSObject {
@public
    unsigned long type;
}
@end
@implementation CoreFoundationThing
- (unsigned long)_cfTypeID
{
    return type;
}
@end

namespace {

NSString *const kTypes = @"CFURL CFDictionary CFString CFNumber CFArray CFBoolean CFData CFCharacterSet "
                         @"CFBundle CFSet CFBag CFUUID "
                         @"CFTimeZone CFDate CFAttributedString CFError CTFont CTFontCollection CTFrame "
                         @"CTFramesetter CTGlyphInfo CTLine "
                         @"CTParagraphStyle CTRun CTTypesetter CTRunDelegate";

NSString *WrapperOfType(unsigned long type)
{
    CoreFoundationThing *const thing = [[[CoreFoundationThing alloc] init] autorelease];
    thing->type = type;
    return TextOf(VariantOf(thing));
}

unsigned long NumberOfType(NSString *name)
{
    void *const function = FindSymbol([Text({name, @"GetTypeID"}) UTF8String]);
    return function == nullptr ? 0 : reinterpret_cast<unsigned long (*)()>(function)();
}

} // namespace

void CheckWrappers()
{
    Check(@"A time zone, by its class", @"NSTimeZoneQZL",
          [] { return TextOf(VariantOf([NSTimeZone timeZoneWithName:@"Europe/Berlin"])); });
    Check(@"The same object is the same wrapper", @"yes", [] {
        NSTimeZone *const zone = [NSTimeZone timeZoneWithName:@"Europe/Berlin"];
        return YesOrNo(VariantOf(zone) == VariantOf(zone));
    });
    Check(@"A wrapper is its object again in Cocoa", @"yes", [] {
        NSTimeZone *const zone = [NSTimeZone timeZoneWithName:@"Europe/Berlin"];
        return YesOrNo([HandleOf(NewNotification(VariantOf(zone))) object] == zone);
    });
    Check(@"A freed wrapper gives its object back", @"yes", [] {
        UnknownThing *const thing = [[[UnknownThing alloc] init] autorelease];
        const NSUInteger before = [thing retainCount];
        @autoreleasepool {
            VariantOf(thing);
        }
        return YesOrNo([thing retainCount] == before);
    });
    Check(@"An object of an unknown class is wrapped", @"yes", [] {
        UnknownThing *const thing = [[[UnknownThing alloc] init] autorelease];
        return YesOrNo(HandleOf(VariantOf(thing)) == thing);
    });
    Fact(@"The wrapper of an unknown class", @"NSObjectQZL",
         [] { return TextOf(VariantOf([[[UnknownThing alloc] init] autorelease])); });
    Fact(@"The wrapper of a UUID", @"NSObjectQZL", [] {
        const CFUUIDRef identifier = CFUUIDCreate(nullptr);
        NSString *const wrapper = TextOf(VariantOf(Bridged(identifier)));
        CFRelease(identifier);
        return wrapper;
    });
    Check(@"Core Foundation objects of 26 types", @"each has its wrapper", [] {
        for (NSString *type in [kTypes componentsSeparatedByString:@" "]) {
            NSString *const name = Text({[type isEqual:@"CFData"] ? @"CFBinaryData" : type, @"QZL"});
            NSString *const wrapper = WrapperOfType(NumberOfType(type));
            if (![wrapper isEqual:name])
                return Text({type, @" has ", wrapper});
        }
        return @"each has its wrapper";
    });
    Check(@"A Core Foundation object of another type", @"CFObjectQZL",
          [] { return WrapperOfType(0x7FFFFFF); });
    Check(@"A rectangle, there and back", @"1 2 3 4", [] {
        const id rectangle = [NSValue valueWithRect:NSRect{{1, 2}, {3, 4}}];
        const NSRect back = [[HandleOf(NewNotification(VariantOf(rectangle))) object] rectValue];
        return Text({
            @(back.origin.x), @" ", @(back.origin.y), @" ", @(back.size.width), @" ", @(back.size.height)
        });
    });
    Check(@"A range, there and back", @"5 7", [] {
        const id range = [NSValue valueWithRange:NSMakeRange(5, 7)];
        const NSRange back = [[HandleOf(NewNotification(VariantOf(range))) object] rangeValue];
        return Text({ @(back.location), @" ", @(back.length) });
    });
}
