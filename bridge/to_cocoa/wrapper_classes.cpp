// Tells instances of the family's wrapper classes.
#include "bridge/to_cocoa/wrapper_classes.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "frame/host_entry_points.h"

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

using ClassRefs = std::array<REALclassRef, std::size(kRememberedClasses)>;

ClassRefs LookUpRememberedClasses()
{
    ClassRefs classes;
    std::transform(std::begin(kRememberedClasses), std::end(kRememberedClasses), classes.begin(),
                   REALGetClassRef);
    return classes;
}

bool IsInstance(REALobject object, REALclassRef classRef)
{
    return classRef != nullptr && REALObjectIsA(object, classRef);
}

} // namespace

bool IsOfRememberedWrapperClass(REALobject object)
{
    static const ClassRefs classes = LookUpRememberedClasses();
    return std::any_of(classes.begin(), classes.end(),
                       [object](REALclassRef classRef) { return IsInstance(object, classRef); });
}

bool IsOfHostClass(REALobject object, const char *className)
{
    return IsInstance(object, REALGetClassRef(className));
}
