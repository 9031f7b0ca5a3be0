// Turns the subjects of the conversion steps into values and wrappers.
#include "bridge/to_host/step_conversions.h"

#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include "bridge/to_host/data_to_host.h"
#include "bridge/to_host/date_to_host.h"
#include "bridge/to_host/file_url_to_host.h"
#include "bridge/to_host/number_to_host.h"
#include "bridge/to_host/value_to_host.h"
#include "bridge/to_host/wrappers.h"
#include "frame/host_references.h"
#include "frame/host_strings.h"

/// A class method that another library of the family adds for the views that it knows.
@interface NSValue (QZLFamilyViews)
/// A host instance for the view, or null.
+ (REALobject)NewQTKitNSViewQZL:(id)view;
@end

/// The method that objects of the family's wrapper have.
@interface NSObject (QZLFamilyWrapper)
- (REALobject)unwrap;
@end

namespace {

REALobject NewVariantOfText(NSString *text)
{
    HostRef<REALstring> string(CFString2RBString((CFStringRef)text));
    HostRef<REALobject> variant(REALNewVariantString(string.Get()));
    string.GiveBack();
    return variant.Release();
}

} // namespace

// Values

REALobject NewURLVariant(const ConversionSubject &subject)
{
    const REALobject folderItem = NSURLRBFile(subject.object);
    return folderItem != nullptr ? folderItem : NewVariantOfText([(NSURL *)subject.object absoluteString]);
}

REALobject NewStringVariant(const ConversionSubject &subject)
{
    return NewVariantOfText(subject.object);
}

REALobject NewMemoryBlockOfData(const ConversionSubject &subject)
{
    return AsInstance(NSDataRB(subject.object));
}

REALobject NewFalse(const ConversionSubject &)
{
    return REALNewVariantBoolean(false);
}

REALobject NewTrue(const ConversionSubject &)
{
    return REALNewVariantBoolean(true);
}

REALobject NewNumberVariant(const ConversionSubject &subject)
{
    return NewVariantFromNSNumber(subject.object);
}

REALobject NewDateInstance(const ConversionSubject &subject)
{
    return NewHostDate(subject.object);
}

REALobject NewStructureInstance(const ConversionSubject &subject)
{
    return NewInstanceFromNSValue(subject.object);
}

// Wrappers

REALobject NewNamedWrapper(const ConversionSubject &subject)
{
    const HostClassName hostClass(subject.className);
    return NewRegisteredWrapper(subject.object, hostClass.Get());
}

REALobject NewNearestWrapper(const ConversionSubject &subject)
{
    return NewNSObjectQZL(subject.object, objc_getClass(subject.className));
}

REALobject NewViewWrapper(const ConversionSubject &subject)
{
    if ([NSValue respondsToSelector:@selector(NewQTKitNSViewQZL:)])
        if (const REALobject wrapper = [NSValue NewQTKitNSViewQZL:subject.object])
            return wrapper;
    return NewNearestWrapper(subject);
}

REALobject UnwrapHostObject(const ConversionSubject &subject)
{
    return [subject.object unwrap];
}
