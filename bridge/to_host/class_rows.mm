// Turns objects of known Cocoa classes into their wrappers.
#include "bridge/to_host/class_rows.h"

#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <atomic>
#include <iterator>

#include "bridge/to_host/wrappers.h"
#include "notifications/NSDistributedNotificationCenterQZL.h"
#include "notifications/NSNotificationQZL.h"

/// A class method that another library of the family adds for the views that it knows.
@interface NSValue (QZLFamilyViews)
/// A host instance for the view, or null.
+ (REALobject)NewQTKitNSViewQZL:(id)view;
@end

namespace {

/// The registered wrapper of the row's own host class.
REALobject NewNamedWrapper(id object, Class rowClass)
{
    const HostClassName hostClass(rowClass);
    return NewRegisteredWrapper(object, hostClass.Get());
}

REALobject NewViewWrapper(id object, Class rowClass)
{
    if ([NSValue respondsToSelector:@selector(NewQTKitNSViewQZL:)])
        if (const REALobject wrapper = [NSValue NewQTKitNSViewQZL:object])
            return wrapper;
    return NewNSObjectQZL(object, rowClass);
}

REALobject NewNotificationWrapper(id object, Class)
{
    return NewNSNotificationQZL(object);
}

REALobject NewDistributedCenterWrapper(id object, Class)
{
    return NewNSDistributedNotificationCenterQZL(object);
}

/// How often a row's class is looked up by its name.
enum class Lookup {
    /// Until it is there.
    UntilFound,
    /// On first use only: a class that is not there then is left out for good.
    Once,
};

struct ClassRow {
    const char *className;
    Lookup lookup;
    REALobject (*convert)(id object, Class rowClass);
};

// First match wins, also where a later row can then never match.
constexpr ClassRow kClassRows[] = {
    {"NSPathComponentCell", Lookup::UntilFound, NewNamedWrapper},
    {"NSPathCell", Lookup::UntilFound, NewNamedWrapper},
    {"NSPathControl", Lookup::UntilFound, NewNamedWrapper},
    {"NSPipe", Lookup::UntilFound, NewNamedWrapper},
    {"NSTask", Lookup::UntilFound, NewNamedWrapper},
    {"NSFileHandle", Lookup::UntilFound, NewNamedWrapper},
    {"NSClipView", Lookup::UntilFound, NewNamedWrapper},
    {"NSAnimation", Lookup::UntilFound, NewNamedWrapper},
    {"NSCoder", Lookup::UntilFound, NewNamedWrapper},
    {"NSTimeZone", Lookup::UntilFound, NewNamedWrapper},
    {"NSDateComponents", Lookup::UntilFound, NewNamedWrapper},
    {"NSAnimationContext", Lookup::UntilFound, NewNamedWrapper},
    {"NSTimer", Lookup::UntilFound, NewNamedWrapper},
    {"NSBox", Lookup::UntilFound, NewNamedWrapper},
    {"NSComboBox", Lookup::UntilFound, NewNamedWrapper},
    {"NSImageView", Lookup::UntilFound, NewNamedWrapper},
    {"NSPopUpButton", Lookup::UntilFound, NewNamedWrapper},
    {"NSTextField", Lookup::UntilFound, NewNamedWrapper},
    {"NSSearchFieldCell", Lookup::UntilFound, NewNamedWrapper},
    {"NSSecureTextField", Lookup::UntilFound, NewNamedWrapper},
    {"NSSecureTextFieldCell", Lookup::UntilFound, NewNamedWrapper},
    {"NSApplication", Lookup::UntilFound, NewNamedWrapper},
    {"NSSearchField", Lookup::UntilFound, NewNamedWrapper},
    {"NSTabView", Lookup::UntilFound, NewNamedWrapper},
    {"NSTabViewItem", Lookup::UntilFound, NewNamedWrapper},
    {"NSStepper", Lookup::UntilFound, NewNamedWrapper},
    {"NSURLRequest", Lookup::UntilFound, NewNamedWrapper},
    {"NSURLDownload", Lookup::UntilFound, NewNamedWrapper},
    {"NSURLConnection", Lookup::UntilFound, NewNamedWrapper},
    {"NSFontPanel", Lookup::UntilFound, NewNamedWrapper},
    {"NSFontManager", Lookup::UntilFound, NewNamedWrapper},
    {"NSImage", Lookup::UntilFound, NewNamedWrapper},
    {"NSImageRep", Lookup::UntilFound, NewNSObjectQZL},
    {"NSShadow", Lookup::UntilFound, NewNamedWrapper},
    {"NSAffineTransform", Lookup::UntilFound, NewNamedWrapper},
    {"NSFont", Lookup::UntilFound, NewNamedWrapper},
    {"NSToolbarItem", Lookup::UntilFound, NewNamedWrapper},
    {"NSToolbar", Lookup::UntilFound, NewNamedWrapper},
    {"NSScreen", Lookup::UntilFound, NewNamedWrapper},
    {"NSCharacterSet", Lookup::UntilFound, NewNamedWrapper},
    {"NSTextStorage", Lookup::UntilFound, NewNamedWrapper},
    {"NSColor", Lookup::UntilFound, NewNamedWrapper},
    {"NSAttributedString", Lookup::UntilFound, NewNSObjectQZL},
    {"NSAssertionHandler", Lookup::UntilFound, NewNamedWrapper},
    {"NSMenu", Lookup::UntilFound, NewNamedWrapper},
    {"NSFontDescriptor", Lookup::UntilFound, NewNamedWrapper},
    {"NSMenuItem", Lookup::UntilFound, NewNamedWrapper},
    {"NSError", Lookup::UntilFound, NewNamedWrapper},
    {"NSViewController", Lookup::UntilFound, NewNamedWrapper},
    {"NSWindowController", Lookup::UntilFound, NewNamedWrapper},
    {"NSHTTPCookie", Lookup::UntilFound, NewNamedWrapper},
    {"NSHTTPCookieStorage", Lookup::UntilFound, NewNamedWrapper},
    {"NSPasteboard", Lookup::UntilFound, NewNamedWrapper},
    {"NSBundle", Lookup::UntilFound, NewNamedWrapper},
    {"NSEnumerator", Lookup::UntilFound, NewNamedWrapper},
    {"NSDirectoryEnumerator", Lookup::UntilFound, NewNamedWrapper},
    {"NSRunningApplication", Lookup::UntilFound, NewNamedWrapper},
    {"NSURLCache", Lookup::UntilFound, NewNamedWrapper},
    {"NSCell", Lookup::UntilFound, NewNSObjectQZL},
    {"NSFileManager", Lookup::UntilFound, NewNamedWrapper},
    {"NSSound", Lookup::UntilFound, NewNamedWrapper},
    {"NSBezierPath", Lookup::UntilFound, NewNamedWrapper},
    {"NSCursor", Lookup::UntilFound, NewNamedWrapper},
    {"NSEvent", Lookup::UntilFound, NewNamedWrapper},
    {"NSIndexSet", Lookup::UntilFound, NewNSObjectQZL},
    {"NSCalendar", Lookup::UntilFound, NewNamedWrapper},
    {"NSView", Lookup::UntilFound, NewViewWrapper},
    {"NSWindow", Lookup::UntilFound, NewNSObjectQZL},
    {"NSColorList", Lookup::UntilFound, NewNamedWrapper},
    {"NSColorSpace", Lookup::UntilFound, NewNamedWrapper},
    {"NSTableColumn", Lookup::UntilFound, NewNamedWrapper},
    {"NSUndoManager", Lookup::UntilFound, NewNamedWrapper},
    {"NSScroller", Lookup::UntilFound, NewNamedWrapper},
    {"NSResponder", Lookup::UntilFound, NewNSObjectQZL},
    {"NSTextFieldCell", Lookup::UntilFound, NewNSObjectQZL},
    {"NSText", Lookup::UntilFound, NewNSObjectQZL},
    {"NSTableHeaderView", Lookup::UntilFound, NewNamedWrapper},
    {"NSOperation", Lookup::UntilFound, NewNamedWrapper},
    {"NSNotification", Lookup::UntilFound, NewNotificationWrapper},
    {"NSNotificationCenter", Lookup::UntilFound, NewNSObjectQZL},
    {"NSDistributedNotificationCenter", Lookup::UntilFound, NewDistributedCenterWrapper},
    {"NSUserDefaults", Lookup::UntilFound, NewNamedWrapper},
    {"NSDockTile", Lookup::UntilFound, NewNamedWrapper},
    {"NSLocale", Lookup::UntilFound, NewNamedWrapper},
    {"NSAppleEventDescriptor", Lookup::UntilFound, NewNamedWrapper},
    {"NSAppleScript", Lookup::UntilFound, NewNamedWrapper},
    {"NSTableView", Lookup::UntilFound, NewNamedWrapper},
    {"NSLayoutManager", Lookup::UntilFound, NewNamedWrapper},
    {"NSTextContainer", Lookup::UntilFound, NewNamedWrapper},
    {"NSTextView", Lookup::UntilFound, NewNSObjectQZL},
    {"NSTextTab", Lookup::UntilFound, NewNamedWrapper},
    {"NSParagraphStyle", Lookup::UntilFound, NewNamedWrapper},
    {"NSPasteboardItem", Lookup::UntilFound, NewNamedWrapper},
    {"NSRunLoop", Lookup::UntilFound, NewNamedWrapper},
    {"NSMetadataQuery", Lookup::UntilFound, NewNamedWrapper},
    {"NSMetadataItem", Lookup::UntilFound, NewNamedWrapper},
    {"NSPredicate", Lookup::UntilFound, NewNamedWrapper},
    {"NSCompoundPredicate", Lookup::UntilFound, NewNamedWrapper},
    {"NSSortDescriptor", Lookup::UntilFound, NewNamedWrapper},
    {"NSMetadataQueryResultGroup", Lookup::UntilFound, NewNamedWrapper},
    {"NSComparisonPredicate", Lookup::UntilFound, NewNamedWrapper},
    {"NSFileWrapper", Lookup::UntilFound, NewNamedWrapper},
    {"NSTextAttachment", Lookup::UntilFound, NewNamedWrapper},
    {"NSExpression", Lookup::UntilFound, NewNamedWrapper},
    {"NSUserNotification", Lookup::Once, NewNamedWrapper},
    {"NSDraggingImageComponent", Lookup::Once, NewNamedWrapper},
    {"QuartzFilter", Lookup::Once, NewNamedWrapper},
    {"QCComposition", Lookup::Once, NewNamedWrapper},
    {"QCCompositionRepository", Lookup::Once, NewNamedWrapper},
};

/// A row's class once it has been looked up: 0 before, `kAbsent` for one that is left out for good.
std::atomic<uintptr_t> gFoundClasses[std::size(kClassRows)];
constexpr uintptr_t kAbsent = 1;

Class ClassOfRow(size_t index)
{
    const uintptr_t known = gFoundClasses[index].load(std::memory_order_relaxed);
    if (known != 0)
        return known == kAbsent ? Nil : reinterpret_cast<Class>(known);
    const ClassRow &row = kClassRows[index];
    const Class found = objc_getClass(row.className);
    if (found != Nil || row.lookup == Lookup::Once)
        gFoundClasses[index].store(found != Nil ? reinterpret_cast<uintptr_t>(found) : kAbsent,
                                   std::memory_order_relaxed);
    return found;
}

} // namespace

static_assert(std::size(kClassRows) == kClassRowCount);

FoundRow ClassRowOf(id object)
{
    bool isFinal = true;
    for (size_t index = 0; index < kClassRowCount; ++index) {
        const Class rowClass = ClassOfRow(index);
        if (rowClass == Nil)
            isFinal = isFinal && kClassRows[index].lookup == Lookup::Once;
        else if ([object isKindOfClass:rowClass])
            return {index, isFinal};
    }
    return {kClassRowCount, isFinal};
}

REALobject ConvertByClassRow(id object, size_t row)
{
    return kClassRows[row].convert(object, ClassOfRow(row));
}
