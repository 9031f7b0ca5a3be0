// Tells instances of the family's wrapper classes.
#include "bridge/to_cocoa/wrapper_classes.h"

#include <algorithm>
#include <atomic>
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

/// What was looked up, null included, once `gLookedUp`.
std::atomic<REALclassRef> gClassRefs[std::size(kRememberedClasses)];
std::atomic<bool> gLookedUp{false};

/// Looks all classes up the first time. Should the host come back in meanwhile, it does so there as well.
void LookUpRememberedClasses()
{
    if (gLookedUp)
        return;
    std::transform(std::begin(kRememberedClasses), std::end(kRememberedClasses), std::begin(gClassRefs),
                   REALGetClassRef);
    gLookedUp = true;
}

bool IsInstance(REALobject object, REALclassRef classRef)
{
    return classRef != nullptr && REALObjectIsA(object, classRef);
}

} // namespace

bool IsOfRememberedWrapperClass(REALobject object)
{
    LookUpRememberedClasses();
    return std::any_of(std::begin(gClassRefs), std::end(gClassRefs),
                       [object](const auto &classRef) { return IsInstance(object, classRef); });
}

bool IsOfHostClass(REALobject object, const char *className)
{
    return IsInstance(object, REALGetClassRef(className));
}
