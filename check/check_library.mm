// The library itself: what it imports, and the five classes that it registers.
#include <dlfcn.h>
#include <objc/runtime.h>

#include <cstdio>

#include "check/groups.h"
#include "check/programs.h"

namespace {

struct Imports {
    NSString *library, *names;
};

/// The functions and variables of the frameworks that the library uses.
const Imports kImports[] = {
    {@"Core Foundation",
     @"CFArrayGetTypeID CFAttributedStringGetTypeID CFBagGetTypeID CFBooleanGetTypeID CFBundleGetTypeID "
     @"CFCharacterSetGetTypeID CFDataGetTypeID CFDateGetTypeID CFDictionaryGetTypeID CFDictionaryGetValue "
     @"CFDictionaryRemoveValue CFDictionarySetValue CFErrorGetTypeID CFGetTypeID CFNumberGetTypeID CFRelease "
     @"CFRetain CFSetGetTypeID CFStringCreateMutableCopy CFStringCreateWithBytes "
     @"CFStringCreateWithCharacters "
     @"CFStringGetCString CFStringGetCharacters CFStringGetLength CFStringGetTypeID CFStringNormalize "
     @"CFTimeZoneGetTypeID CFURLCopyLastPathComponent CFURLCreateCopyAppendingPathComponent "
     @"CFURLCreateCopyDeletingLastPathComponent CFURLCreateFromFSRef CFURLGetFSRef CFURLGetTypeID "
     @"CFUUIDGetTypeID "
     @"kCFAllocatorDefault kCFBooleanFalse kCFBooleanTrue"},
    {@"the File Manager", @"FSGetCatalogInfo FSRefMakePath"},
    {@"Core Text", @"CTFontCollectionGetTypeID CTFontGetTypeID CTFrameGetTypeID CTFramesetterGetTypeID "
                   @"CTGlyphInfoGetTypeID CTLineGetTypeID CTParagraphStyleGetTypeID CTRunDelegateGetTypeID "
                   @"CTRunGetTypeID CTTypesetterGetTypeID"},
    {@"Foundation", @"NSLocalNotificationCenterType NSLog"},
};

/// The classes of the frameworks that the library names.
NSString *const kClasses =
    @"NSCalendarDate NSData NSDictionary NSDistributedNotificationCenter NSException "
    @"NSMutableArray NSMutableDictionary NSNotification NSNotificationCenter NSNull NSNumber "
    @"NSObject NSTimeZone NSValue NSWorkspace";

/// Each framework and a class of it.
NSString *const kFrameworks[][2] = {{@"Foundation", @"NSFileManager"},
                                    {@"AppKit", @"NSWorkspace"},
                                    {@"InstantMessage", @"IMService"},
                                    {@"DiscRecording", @"DRNotificationCenter"}};

/// A class and its record: the size of the instance data, and how many properties, methods,
/// events, constants and shared methods it has.
struct Registered {
    NSString *name, *description;
};

const Registered kRegistered[] = {
    {@"NSNotificationObserverQZL", @"16 bytes, 1 2 1 0 0"},
    {@"NSNotificationQZL", @"16 bytes, 6 4 0 0 1"},
    {@"NSDistributedNotificationCenterQZL", @"0 bytes, 0 5 0 6 3"},
    {@"NSNotificationCenterQZL", @"16 bytes, 1 8 0 0 1"},
    {kRecording, @"16 bytes, 0 3 0 0 0"},
};

/// Those of the names that the test does not find; "all there" if it finds each.
NSString *Missing(NSString *names, bool (*isThere)(NSString *))
{
    NSMutableArray *const missing = [NSMutableArray array];
    for (NSString *name in [names componentsSeparatedByString:@" "]) {
        if (!isThere(name))
            [missing addObject:name];
    }
    return [missing count] == 0 ? @"all there"
                                : Text({@"without ", [missing componentsJoinedByString:@", "]});
}

NSString *DescriptionOf(NSString *className)
{
    const uint64_t *const record = RecordOf(className);
    if (record == nullptr)
        return @"not registered";
    NSMutableString *const text = [NSMutableString stringWithString:Text({ @(record[3]), @" bytes," })];
    for (const int count : {8, 10, 12, 19, 24})
        [text appendString:Text({ @" ", @(record[count]) })];
    return text;
}

/// The UUID of the loaded Mach-O file; "none" for another kind of file.
NSString *UuidOfLibrary()
{
    constexpr uint32_t kMagic = 0xFEEDFACF, kUuidCommand = 0x1B;
    Dl_info image = {};
    dladdr(FindSymbol("REALPluginMain"), &image);
    const auto *const header = static_cast<const uint32_t *>(image.dli_fbase);
    if (header == nullptr || header[0] != kMagic)
        return @"none";
    const uint32_t *command = header + 8;
    for (uint32_t i = 0; i < header[4] && command[0] != kUuidCommand; ++i)
        command += command[1] / sizeof *command;
    NSMutableString *const text = [NSMutableString string];
    for (int i = 0; i < 16 && command[0] == kUuidCommand; ++i) {
        char byte[3];
        std::snprintf(byte, sizeof byte, "%02X", reinterpret_cast<const uint8_t *>(command + 2)[i]);
        [text appendString:[NSString stringWithUTF8String:byte]];
    }
    return text;
}

/// The version of the framework that a class is from; "not there" without the class.
NSString *VersionOf(NSString *className)
{
    const Class type = NSClassFromString(className);
    if (type == Nil)
        return @"not there";
    NSString *const version =
        [[[NSBundle bundleForClass:type] infoDictionary] objectForKey:@"CFBundleVersion"];
    return version == nil ? @"unknown" : version;
}

} // namespace

void CheckLibrary()
{
    Check(kLoaded, kFiveClasses, [] { return Text({ @([RegisteredClasses() count]), @" classes" }); });
    Fact(@"The library's UUID", nil, UuidOfLibrary);
    for (const auto &framework : kFrameworks)
        Fact(Text({@"The version of ", framework[0]}), nil, [&] { return VersionOf(framework[1]); });
    for (const Imports &imports : kImports) {
        Check(Text({@"What the library uses of ", imports.library}), @"all there", [&] {
            return Missing(imports.names,
                           [](NSString *name) { return FindSymbol([name UTF8String]) != nullptr; });
        });
    }
    Check(@"The classes that the library uses", @"all there", [] {
        return Missing(kClasses, [](NSString *name) { return objc_getClass([name UTF8String]) != Nil; });
    });
    Check(@"The classes come in their order", @"in order", [] {
        NSMutableArray *const expected = [NSMutableArray array];
        for (const Registered &type : kRegistered)
            [expected addObject:type.name];
        return [RegisteredClasses() isEqual:expected] ? @"in order"
                                                      : [RegisteredClasses() componentsJoinedByString:@", "];
    });
    for (const Registered &type : kRegistered) {
        Check(type.name, type.description, [&] { return DescriptionOf(type.name); });
        Check(@"  is made and freed", @"yes", [&] {
            const int64_t before = LivingReferences();
            @autoreleasepool {
                const Instance made =
                    [type.name isEqual:@"NSNotificationQZL"] ? NewNotification(nil) : Constructed(type.name);
                if (HandleOf(made) == nil && (![type.name isEqual:kRecording] || HasRecording()))
                    return @"it has no Cocoa object";
            }
            return LivingReferences() == before ? @"yes" : @"it is not freed";
        });
    }
}
