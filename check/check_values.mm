// Values to Cocoa and back: each becomes the object of a notification, and is read from there again.
#include <CoreFoundation/CoreFoundation.h>

#include "check/groups.h"
#include "check/programs.h"

namespace {

/// The Cocoa object as text.
NSString *CocoaText(id object)
{
    if (object == Bridged(kCFBooleanTrue))
        return @"YES";
    if (object == Bridged(kCFBooleanFalse))
        return @"NO";
    if ([object isKindOfClass:[NSString class]])
        return Quoted(object);
    if ([object isKindOfClass:[NSDate class]])
        return Text({ @(static_cast<int64_t>([object timeIntervalSinceReferenceDate])), @" s" });
    if ([object isKindOfClass:[NSData class]])
        return Text({ @([object length]), @" bytes" });
    if ([object isKindOfClass:[NSArray class]] || [object isKindOfClass:[NSDictionary class]])
        return Text({ @([object count]), @" elements" });
    return Text({object});
}

Instance StringIn(uint32_t encoding, const char *bytes, NSUInteger length)
{
    return Variant(code::String, StringOfBytes([NSData dataWithBytes:bytes length:length], encoding));
}

Instance ArrayOf(int64_t code, NSArray *elements)
{
    return Variant(code::Array + code, elements);
}

Instance Nested()
{
    const Instance inner = Value(@"Dictionary", @{@"b" : Variant(code::Int64, @2)});
    const Instance array = ArrayOf(code::Object, @[ inner, Variant(code::Boolean, @true) ]);
    return Value(@"Dictionary", @{@"a" : array, @"c" : Variant(code::String, String(@"d"))});
}

struct Row {
    NSString *what;
    Instance (*value)();
    /// The Cocoa object and what comes back.
    NSString *expected;
};

const Row kRows[] = {
    {@"Nil", [] { return Instance(nil); }, @"nil > Nil"},
    {@"Integer, the highest", [] { return Variant(code::Integer, @(INT64_MAX)); },
     @"9223372036854775807 > Integer 9223372036854775807"},
    {@"Int64, the lowest", [] { return Variant(code::Int64, @(INT64_MIN)); },
     @"-9223372036854775808 > Integer -9223372036854775808"},
    {@"Int64, more than a double holds", [] { return Variant(code::Int64, @9007199254740993); },
     @"9007199254740993 > Integer 9007199254740993"},
    {@"Int64 1, which is no Boolean", [] { return Variant(code::Int64, @1); }, @"1 > Integer 1"},
    {@"Boolean true", [] { return Variant(code::Boolean, @true); }, @"YES > Boolean true"},
    {@"Boolean false", [] { return Variant(code::Boolean, @false); }, @"NO > Boolean false"},
    {@"Single", [] { return Variant(code::Single, @1.5); }, @"1.5 > Single 1.5"},
    {@"Double", [] { return Variant(code::Double, @0.1); }, @"0.1 > Double 0.1"},
    {@"String, empty", [] { return Variant(code::String, nil); }, @"\"\" > \"\""},
    {@"String in UTF-8", [] { return Variant(code::String, String(@"Grüße 🎵")); },
     @"\"Grüße 🎵\" > \"Grüße 🎵\""},
    {@"String in UTF-16", [] { return StringIn(0x0100, "\x3C\xD8\xB5\xDF\xE9\0", 6); }, @"\"🎵é\" > \"🎵é\""},
    {@"String in UTF-32, with its mark", [] { return StringIn(0x0C000100, "\xFF\xFE\0\0\xB5\xF3\x01\0", 8); },
     @"\"🎵\" > \"🎵\""},
    {@"String in Mac Roman", [] { return StringIn(0, "\x8E\xC6", 2); }, @"\"é∆\" > \"é∆\""},
    {@"String in Windows Latin 1", [] { return StringIn(0x0500, "\xE9\x80", 2); }, @"\"é€\" > \"é€\""},
    {@"String in ISO Latin 1", [] { return StringIn(0x0201, "\xE9\xFF", 2); }, @"\"éÿ\" > \"éÿ\""},
    {@"String in ASCII", [] { return StringIn(0x0600, "abc", 3); }, @"\"abc\" > \"abc\""},
    {@"String of raw bytes, read as Mac Roman", [] { return StringIn(kUnknownEncoding, "\x8E\xA5", 2); },
     @"\"é•\" > \"é•\""},
    {@"String with NUL, which cuts it on return", [] { return Variant(code::String, String(@"a\0b")); },
     @"\"a\\0b\" > \"a\""},
    {@"Date, leap day", [] { return Date(@[ @2024, @2, @29, @14, @5, @9 ]); },
     @"730904709 s > 2024-02-29 14:05:09"},
    {@"Date, last second before summer time", [] { return Date(@[ @2024, @3, @31, @1, @59, @59 ]); },
     @"733539599 s > 2024-03-31 01:59:59"},
    {@"Date, first second of summer time", [] { return Date(@[ @2024, @3, @31, @3, @0, @0 ]); },
     @"733539600 s > 2024-03-31 03:00:00"},
    {@"Date, after summer time", [] { return Date(@[ @2024, @10, @27, @3, @0, @0 ]); },
     @"751687200 s > 2024-10-27 03:00:00"},
    {@"Date, long ago", [] { return Date(@[ @1950, @1, @1, @0, @0, @0 ]); },
     @"-1609462800 s > 1950-01-01 00:00:00"},
    {@"MemoryBlock", [] { return Value(@"MemoryBlock", [NSMutableData dataWithLength:3]); },
     @"3 bytes > MemoryBlock of 3 bytes"},
    {@"MemoryBlock, empty", [] { return Value(@"MemoryBlock", [NSMutableData data]); }, @"nil > Nil"},
    {@"MemoryBlock of a MiB", [] { return Value(@"MemoryBlock", [NSMutableData dataWithLength:1 << 20]); },
     @"1048576 bytes > MemoryBlock of 1048576 bytes"},
    {@"Array of Integers", [] { return ArrayOf(code::Integer, @[ @1, @(INT64_MAX) ]); },
     @"2 elements > {Integer 1, Integer 9223372036854775807}"},
    {@"Array of Doubles", [] { return ArrayOf(code::Double, @[ @0.5 ]); }, @"1 elements > {Double 0.5}"},
    {@"Array of Singles", [] { return ArrayOf(code::Single, @[ @0.5 ]); }, @"1 elements > {Single 0.5}"},
    {@"Array of Booleans", [] { return ArrayOf(code::Boolean, @[ @true, @false ]); },
     @"2 elements > {Boolean true, Boolean false}"},
    {@"Array of Strings", [] { return ArrayOf(code::String, @[ String(@"a"), String(@"é") ]); },
     @"2 elements > {\"a\", \"é\"}"},
    {@"Array of Dates", [] { return ArrayOf(code::Date, @[ Date(@[ @2024, @1, @2, @3, @4, @5 ]) ]); },
     @"1 elements > {2024-01-02 03:04:05}"},
    {@"Array, empty", [] { return ArrayOf(code::Object, [NSArray array]); }, @"0 elements > {}"},
    {@"Dictionary with nested values", Nested, @"2 elements > {a: {{b: Integer 2}, Boolean true}, c: \"d\"}"},
};

} // namespace

void CheckValues()
{
    [NSTimeZone setDefaultTimeZone:[NSTimeZone timeZoneWithName:@"Europe/Berlin"]];
    for (const Row &row : kRows) {
        Check(row.what, row.expected, [&] {
            const Instance notification = NewNotification(row.value());
            const id object = [HandleOf(notification) object];
            return Text({CocoaText(object), @" > ", TextOf(VariantOf(object))});
        });
    }
    for (const NSUInteger length : {99u, 100u, 100000u}) {
        Check(Text({ @"String of ", @(length), @" units" }), @"the same > the same", [&] {
            NSString *const text = [@"" stringByPaddingToLength:length withString:@"é" startingAtIndex:0];
            const id object = [HandleOf(NewNotification(Variant(code::String, String(text)))) object];
            NSString *const back = TextOfString(VariantOf(object)->value);
            return Text({[object isEqual:text] ? @"the same" : Quoted(object), @" > ",
                         [back isEqual:text] ? @"the same" : Quoted(back)});
        });
    }
    Check(@"User info, through a notification", @"{a: {{b: Integer 2}, Boolean true}, c: \"d\"}", [] {
        const Instance notification = NewNotification(nil, Nested());
        return TextOf([Call<Instance>(notification->type, "userInfo", notification, int64_t{0}) autorelease]);
    });
    Check(@"No instance or string is left over", @"0", [] {
        const int64_t before = LivingReferences();
        @autoreleasepool {
            for (const Row &row : kRows)
                VariantOf([HandleOf(NewNotification(row.value())) object]);
        }
        return Text({ @(LivingReferences() - before) });
    });
}
