// Cocoa objects of the classes that become wrappers, from the first row to the last, and an object of no row.
#include <CoreFoundation/CoreFoundation.h>
#include <objc/runtime.h>

#include "bench/host_functions.h"
#include "bench/inputs.h"
#include "bench/work.h"
#include "bridge/to_host/object_to_variant.h"
#include "family/wrapper_classes.h"

/// A method of Core Foundation's objects that the compiler does not know.
@interface NSObject (QZLBenchTypes)
- (CFTypeID)_cfTypeID;
@end

namespace {

constexpr double kTarget = 1.5;

/// Rows and their numbers. Classes whose first use needs a display or a server, and those whose objects an
/// earlier row takes, are not among them.
constexpr struct {
    const char *number;
    const char *className;
} kRows[] = {
    {"001", "NSPathComponentCell"},
    {"002", "NSPathCell"},
    {"003", "NSPathControl"},
    {"004", "NSPipe"},
    {"005", "NSTask"},
    {"006", "NSFileHandle"},
    {"007", "NSClipView"},
    {"008", "NSAnimation"},
    {"009", "NSCoder"},
    {"010", "NSTimeZone"},
    {"011", "NSDateComponents"},
    {"012", "NSAnimationContext"},
    {"013", "NSTimer"},
    {"014", "NSBox"},
    {"015", "NSComboBox"},
    {"016", "NSImageView"},
    {"017", "NSPopUpButton"},
    {"018", "NSTextField"},
    {"019", "NSSearchFieldCell"},
    {"021", "NSSecureTextFieldCell"},
    {"022", "NSApplication"},
    {"024", "NSTabView"},
    {"025", "NSTabViewItem"},
    {"026", "NSStepper"},
    {"027", "NSURLRequest"},
    {"028", "NSURLDownload"},
    {"029", "NSURLConnection"},
    {"030", "NSFontPanel"},
    {"031", "NSFontManager"},
    {"032", "NSImage"},
    {"033", "NSImageRep"},
    {"034", "NSShadow"},
    {"035", "NSAffineTransform"},
    {"036", "NSFont"},
    {"038", "NSToolbar"},
    {"039", "NSScreen"},
    {"040", "NSCharacterSet"},
    {"041", "NSTextStorage"},
    {"042", "NSColor"},
    {"043", "NSAttributedString"},
    {"044", "NSAssertionHandler"},
    {"045", "NSMenu"},
    {"046", "NSFontDescriptor"},
    {"047", "NSMenuItem"},
    {"048", "NSError"},
    {"049", "NSViewController"},
    {"050", "NSWindowController"},
    {"051", "NSHTTPCookie"},
    {"052", "NSHTTPCookieStorage"},
    {"053", "NSPasteboard"},
    {"054", "NSBundle"},
    {"055", "NSEnumerator"},
    {"057", "NSRunningApplication"},
    {"058", "NSURLCache"},
    {"059", "NSCell"},
    {"060", "NSFileManager"},
    {"061", "NSSound"},
    {"062", "NSBezierPath"},
    {"063", "NSCursor"},
    {"064", "NSEvent"},
    {"065", "NSIndexSet"},
    {"066", "NSCalendar"},
    {"067", "NSView"},
    {"068", "NSWindow"},
    {"069", "NSColorList"},
    {"070", "NSColorSpace"},
    {"071", "NSTableColumn"},
    {"072", "NSUndoManager"},
    {"073", "NSScroller"},
    {"074", "NSResponder"},
    {"075", "NSTextFieldCell"},
    {"076", "NSText"},
    {"077", "NSTableHeaderView"},
    {"078", "NSOperation"},
    {"079", "NSNotification"},
    {"080", "NSNotificationCenter"},
    {"081", "NSDistributedNotificationCenter"},
    {"082", "NSUserDefaults"},
    {"083", "NSDockTile"},
    {"084", "NSLocale"},
    {"085", "NSAppleEventDescriptor"},
    {"086", "NSAppleScript"},
    {"087", "NSTableView"},
    {"088", "NSLayoutManager"},
    {"089", "NSTextContainer"},
    {"090", "NSTextView"},
    {"091", "NSTextTab"},
    {"092", "NSParagraphStyle"},
    {"093", "NSPasteboardItem"},
    {"094", "NSRunLoop"},
    {"095", "NSMetadataQuery"},
    {"096", "NSMetadataItem"},
    {"097", "NSPredicate"},
    {"099", "NSSortDescriptor"},
    {"100", "NSMetadataQueryResultGroup"},
    {"102", "NSFileWrapper"},
    {"103", "NSTextAttachment"},
    {"104", "NSExpression"},
    {"105", "NSUserNotification"},
    {"106", "NSDraggingImageComponent"},
    {"107", "QuartzFilter"},
    {"108", "QCComposition"},
    {"109", "QCCompositionRepository"},
};
constexpr const char *kFirstClass = kRows[0].className;
constexpr const char *kLastClass = kRows[std::size(kRows) - 1].className;
constexpr char kUnknownClass[] = "QZLBenchUnknown";

/// The class of that name, made here where the platform has none.
Class ClassNamed(const char *name)
{
    if (const Class found = objc_getClass(name))
        return found;
    const Class made = objc_allocateClassPair([NSObject class], name, 0);
    objc_registerClassPair(made);
    return made;
}

/// An object of the class that is never initialised, and never freed: few classes could free it.
id ObjectOfClass(const char *name)
{
    DefineWrapperClass(qzlhost::Host::Current(), std::string(name) + "QZL");
    return NSAllocateObject(ClassNamed(name), 0, nullptr);
}

/// An object of no row whose superclass, and not its own class, has a host class.
id UnknownObject()
{
    DefineWrapperClass(qzlhost::Host::Current(), "NSObjectQZL");
    return NSAllocateObject(ClassNamed(kUnknownClass), 0, nullptr);
}

/// An object of no row whose own class has a host class, so that the host is asked for one, as by a row.
id UnknownObjectWithHostClass()
{
    return ObjectOfClass("QZLBenchUnknownWithHostClass");
}

__attribute__((noinline)) REALobject FloorWrapper(id object, const char *hostClass)
{
    const REALobject instance = gHost.newInstance(hostClass);
    FloorHandle(instance) = [object retain];
    return instance;
}

/// What cannot be known beforehand: whether there is a wrapper class by now, whether the object says that it
/// is a Core Foundation object, and which class of its chain the host has.
REALobject FloorUnknown(id object)
{
    if (objc_getClass("QZLREALobjectWrapper") != Nil || [object respondsToSelector:@selector(_cfTypeID)])
        return nullptr;
    if (gHost.newInstance("QZLBenchUnknownQZL") != nullptr)
        return nullptr;
    return FloorWrapper(object, "NSObjectQZL");
}

Sides Row(const char *className)
{
    const id object = ObjectOfClass(className);
    const std::string hostClass = std::string(className) + "QZL";
    return MakeSides([object] { return NewVariantFromNSObject(object); },
                     [object, hostClass] { return FloorWrapper(object, hostClass.c_str()); });
}

Sides Unknown()
{
    const id object = UnknownObject();
    return MakeSides([object] { return NewVariantFromNSObject(object); },
                     [object] { return FloorUnknown(object); });
}

Sides AgainstFirstRow(id object)
{
    const id first = ObjectOfClass(kFirstClass);
    return MakeSides([object] { return NewVariantFromNSObject(object); },
                     [first] { return NewVariantFromNSObject(first); });
}

/// The calls that an unknown object needs, against those for the first row.
Sides FloorsOfUnknownAndFirstRow()
{
    const id object = UnknownObject();
    const id first = ObjectOfClass(kFirstClass);
    const std::string hostClass = std::string(kFirstClass) + "QZL";
    return MakeSides([object] { return FloorUnknown(object); },
                     [first, hostClass] { return FloorWrapper(first, hostClass.c_str()); });
}

} // namespace

void AddClassRowWorks(std::vector<Work> &works)
{
    // The library looks some of the classes up only once, so they must exist before.
    for (const auto &row : kRows)
        ClassNamed(row.className);
    for (const auto &row : kRows)
        works.push_back({std::string("class_rows/") + row.number + "_" + row.className,
                         [name = row.className] { return Row(name); }});
    works.push_back({"class_rows/unknown", Unknown});

    const std::string against = "first row";
    const auto addAgainst = [&](const char *name, id (*make)(), double target) {
        works.push_back(
            {name, [make] { return AgainstFirstRow(make()); }, target, Quantity::Nanoseconds, against});
    };
    addAgainst("class_rows/last", [] { return ObjectOfClass(kLastClass); }, kTarget);
    addAgainst("class_rows/unknown_object", UnknownObjectWithHostClass, kTarget);
    addAgainst("class_rows/unknown_by_superclass", UnknownObject, 0);
    works.push_back({"class_rows/unknown_by_superclass_floor", FloorsOfUnknownAndFirstRow, 0,
                     Quantity::Nanoseconds, against});
}
