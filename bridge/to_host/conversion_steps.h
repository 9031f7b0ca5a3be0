// The steps of the conversion to the host, in the order in which they are tried: each converts the objects of
// a class, or a single object.
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <objc/objc.h>

#include "bridge/to_host/array_to_host.h"
#include "bridge/to_host/dictionary_to_host.h"
#include "bridge/to_host/step_conversions.h"

/// How often a step's class is looked up by its name.
enum class Lookup {
    EachTime,
    /// On first use only: a class that is missing then is skipped for good.
    Once,
};

struct ConversionStep {
    /// The class whose objects take the step; for a step of a single object, that object's name.
    const char *name;
    /// Returns the host value of such an object, with one reference for the caller, or null. Cocoa exceptions
    /// pass.
    REALobject (*convert)(const ConversionSubject &subject) = NewNamedWrapper;
    /// The address of the single object that takes the step; null for a step of a class.
    const CFBooleanRef *object = nullptr;
    Lookup lookup = Lookup::EachTime;
    /// Whether the library is linked to the class, which is then the same as long as the process lives.
    bool isLinked = false;
};

// The first match wins, even where that makes a later step unreachable.
inline constexpr ConversionStep kConversionSteps[] = {
    {.name = "NSURL", .convert = NewURLVariant, .isLinked = true},
    {.name = "NSString", .convert = NewStringVariant, .isLinked = true},
    {.name = "NSData", .convert = NewMemoryBlockOfData, .isLinked = true},
    {.name = "NSArray", .convert = NewArrayOfElements, .isLinked = true},
    {.name = "NSSet", .convert = NewArrayOfMembers, .isLinked = true},
    {.name = "kCFBooleanFalse", .convert = NewFalse, .object = &kCFBooleanFalse},
    {.name = "kCFBooleanTrue", .convert = NewTrue, .object = &kCFBooleanTrue},
    {.name = "NSNumber", .convert = NewNumberVariant, .isLinked = true},
    {.name = "NSDate", .convert = NewDateInstance, .isLinked = true},
    {.name = "NSDictionary", .convert = NewDictionaryOfEntries, .isLinked = true},

    {"NSPathComponentCell"},
    {"NSPathCell"},
    {"NSPathControl"},
    {"NSPipe"},
    {"NSTask"},
    {"NSFileHandle"},
    {"NSClipView"},
    {"NSAnimation"},
    {"NSCoder"},
    {"NSTimeZone"},
    {"NSDateComponents"},
    {"NSAnimationContext"},
    {"NSTimer"},
    {"NSBox"},
    {"NSComboBox"},
    {"NSImageView"},
    {"NSPopUpButton"},
    {"NSTextField"},
    {"NSSearchFieldCell"},
    {"NSSecureTextField"},
    {"NSSecureTextFieldCell"},
    {"NSApplication"},
    {"NSSearchField"},
    {"NSTabView"},
    {"NSTabViewItem"},
    {"NSStepper"},
    {"NSURLRequest"},
    {"NSURLDownload"},
    {"NSURLConnection"},
    {"NSFontPanel"},
    {"NSFontManager"},
    {"NSImage"},
    {"NSImageRep", NewNearestWrapper},
    {"NSShadow"},
    {"NSAffineTransform"},
    {"NSFont"},
    {"NSToolbarItem"},
    {"NSToolbar"},
    {"NSScreen"},
    {"NSCharacterSet"},
    {"NSTextStorage"},
    {"NSColor"},
    {"NSAttributedString", NewNearestWrapper},
    {"NSAssertionHandler"},
    {"NSMenu"},
    {"NSFontDescriptor"},
    {"NSMenuItem"},
    {"NSError"},
    {"NSViewController"},
    {"NSWindowController"},
    {"NSHTTPCookie"},
    {"NSHTTPCookieStorage"},
    {"NSPasteboard"},
    {"NSBundle"},
    {"NSEnumerator"},
    {"NSDirectoryEnumerator"},
    {"NSRunningApplication"},
    {"NSURLCache"},
    {"NSCell", NewNearestWrapper},
    {"NSFileManager"},
    {"NSSound"},
    {"NSBezierPath"},
    {"NSCursor"},
    {"NSEvent"},
    {"NSIndexSet", NewNearestWrapper},
    {"NSCalendar"},
    {"NSView", NewViewWrapper},
    {"NSWindow", NewNearestWrapper},
    {"NSColorList"},
    {"NSColorSpace"},
    {"NSTableColumn"},
    {"NSUndoManager"},
    {"NSScroller"},
    {"NSResponder", NewNearestWrapper},
    {"NSTextFieldCell", NewNearestWrapper},
    {"NSText", NewNearestWrapper},
    {"NSTableHeaderView"},
    {"NSOperation"},
    {"NSNotification"},
    {"NSNotificationCenter", NewNearestWrapper},
    {"NSDistributedNotificationCenter"},
    {"NSUserDefaults"},
    {"NSDockTile"},
    {"NSLocale"},
    {"NSAppleEventDescriptor"},
    {"NSAppleScript"},
    {"NSTableView"},
    {"NSLayoutManager"},
    {"NSTextContainer"},
    {"NSTextView", NewNearestWrapper},
    {"NSTextTab"},
    {"NSParagraphStyle"},
    {"NSPasteboardItem"},
    {"NSRunLoop"},
    {"NSMetadataQuery"},
    {"NSMetadataItem"},
    {"NSPredicate"},
    {"NSCompoundPredicate"},
    {"NSSortDescriptor"},
    {"NSMetadataQueryResultGroup"},
    {"NSComparisonPredicate"},
    {"NSFileWrapper"},
    {"NSTextAttachment"},
    {"NSExpression"},
    {.name = "NSUserNotification", .lookup = Lookup::Once},
    {.name = "NSDraggingImageComponent", .lookup = Lookup::Once},
    {.name = "QuartzFilter", .lookup = Lookup::Once},
    {.name = "QCComposition", .lookup = Lookup::Once},
    {.name = "QCCompositionRepository", .lookup = Lookup::Once},

    {"QZLREALobjectWrapper", UnwrapHostObject},
    {"NSValue", NewStructureInstance},
};

/// The first step that the object takes now; null for none. Any thread. Cocoa exceptions pass.
const ConversionStep *FindConversionStep(id object);
