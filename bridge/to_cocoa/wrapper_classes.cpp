// Recognises instances of the family's wrapper classes.
#include "bridge/to_cocoa/wrapper_classes.h"

#include <algorithm>
#include <atomic>
#include <iterator>

#include "frame/host_entry_points.h"
#include "frame/kept_look_ups.h"

namespace {

constexpr const char *kRememberedClasses[] = {
    "NSPathComponentCellQZL",
    "NSPathCellQZL",
    "NSPathControlQZL",
    "NSPipeQZL",
    "NSTaskQZL",
    "NSFileHandleQZL",
    "NSClipViewQZL",
    "NSAnimationQZL",
    "NSCoderQZL",
    "NSTimeZoneQZL",
    "NSDateComponentsQZL",
    "NSAnimationContextQZL",
    "NSTimerQZL",
    "NSBoxQZL",
    "NSComboBoxQZL",
    "NSImageViewQZL",
    "NSPopUpButtonQZL",
    "NSTextFieldQZL",
    "NSSearchFieldCellQZL",
    "NSSecureTextFieldQZL",
    "NSSecureTextFieldCellQZL",
    "NSApplicationQZL",
    "NSSearchFieldQZL",
    "NSTabViewQZL",
    "NSTabViewItemQZL",
    "NSStepperQZL",
    "NSURLRequestQZL",
    "NSURLDownloadQZL",
    "NSURLConnectionQZL",
    "NSFontPanelQZL",
    "NSFontManagerQZL",
    "NSImageQZL",
    "NSImageRepQZL",
    "NSAffineTransformQZL",
    "NSFontQZL",
    "NSToolbarItemQZL",
    "NSShadowQZL",
    "NSToolbarQZL",
    "NSScreenQZL",
    "NSCharacterSetQZL",
    "NSTextStorageQZL",
    "NSColorQZL",
    "NSAttributedStringQZL",
    "NSAssertionHandlerQZL",
    "NSMenuQZL",
    "NSFontDescriptorQZL",
    "NSMenuItemQZL",
    "NSErrorQZL",
    "NSViewControllerQZL",
    "NSWindowControllerQZL",
    "NSHTTPCookieQZL",
    "NSHTTPCookieStorageQZL",
    "NSPasteboardQZL",
    "NSBundleQZL",
    "NSEnumeratorQZL",
    "NSDirectoryEnumeratorQZL",
    "NSRunningApplicationQZL",
    "NSURLCacheQZL",
    "NSCellQZL",
    "NSFileManagerQZL",
    "NSSoundQZL",
    "NSBezierPathQZL",
    "NSCursorQZL",
    "NSEventQZL",
    "NSIndexSetQZL",
    "NSCalendarQZL",
    "NSViewQZL",
    "NSWindowQZL",
    "NSColorListQZL",
    "NSColorSpaceQZL",
    "NSTableColumnQZL",
    "NSUndoManagerQZL",
    "NSScrollerQZL",
    "NSResponderQZL",
    "NSFileWrapperQZL",
    "NSTextAttachmentQZL",
    "NSTextFieldCellQZL",
    "NSTextQZL",
    "NSTableHeaderViewQZL",
    "NSOperationQZL",
    "NSNotificationQZL",
    "NSNotificationCenterQZL",
    "NSDistributedNotificationCenterQZL",
    "QuartzFilterQZL",
    "QCCompositionRepositoryQZL",
    "QCCompositionQZL",
    "NSUserDefaultsQZL",
    "NSDockTileQZL",
    "NSLocaleQZL",
    "NSAppleEventDescriptorQZL",
    "NSAppleScriptQZL",
    "NSTableViewQZL",
    "NSLayoutManagerQZL",
    "NSTextContainerQZL",
    "NSTextViewQZL",
    "NSTextTabQZL",
    "NSParagraphStyleQZL",
    "NSDraggingImageComponentQZL",
    "NSPasteboardItemQZL",
    "NSRunLoopQZL",
    "NSMetadataQueryQZL",
    "NSMetadataItemQZL",
    "NSPredicateQZL",
    "NSCompoundPredicateQZL",
    "NSSortDescriptorQZL",
    "NSMetadataQueryResultGroupQZL",
    "NSComparisonPredicateQZL",
    "NSExpressionQZL",
};

using ClassRefs = std::atomic<REALclassRef>[std::size(kRememberedClasses)];
ClassRefs gClassRefs;
FirstSlot<ClassRefs *> gFirstClassRefs;

/// The classes in the order of `kRememberedClasses`, null for those that the first look-up did not find. A
/// call that re-enters through the host meanwhile looks them up as well.
const ClassRefs &RememberedClassRefs()
{
    return *KeepFirst(gFirstClassRefs, [] {
        std::transform(std::begin(kRememberedClasses), std::end(kRememberedClasses), std::begin(gClassRefs),
                       REALGetClassRef);
        return &gClassRefs;
    });
}

bool IsInstance(REALobject object, REALclassRef classRef)
{
    return classRef != nullptr && REALObjectIsA(object, classRef);
}

} // namespace

bool IsOfRememberedWrapperClass(REALobject object)
{
    const ClassRefs &classRefs = RememberedClassRefs();
    return std::any_of(std::begin(classRefs), std::end(classRefs),
                       [object](const auto &classRef) { return IsInstance(object, classRef); });
}

bool IsOfHostClass(REALobject object, const char *className)
{
    return IsInstance(object, REALGetClassRef(className));
}
