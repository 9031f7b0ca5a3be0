// Replaces the platform's functions for files and their URLs.
#include "tests/support/core_foundation_double.h"

#import <Foundation/Foundation.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace {

constexpr char kEndsTheProcess[] = "on macOS it ends the process";

bool Refuses(Refusal refusal)
{
    return TheCoreFoundation().refusal == refusal;
}

/// Records an object that goes to the library; null stays null.
template <typename Reference>
Reference Noted(Reference object)
{
    if (object != nullptr)
        TheCoreFoundation().made.push_back(CFRetain(object));
    return object;
}

/// Whether the URL was made for the library.
bool IsMade(CFURLRef url)
{
    const std::vector<CFTypeRef> &made = TheCoreFoundation().made;
    return std::find(made.begin(), made.end(), url) != made.end();
}

} // namespace

std::ostream &operator<<(std::ostream &stream, const CatalogCall &call)
{
    const bool isNothing = call.reference == std::string(sizeof(FSRef), '\0');
    return stream << (isNothing ? "nothing" : "an item") << ": " << call.information
                  << (call.wantsInformation ? " information" : "") << (call.wantsName ? " name" : "")
                  << (call.wantsParent ? " parent" : "");
}

std::string BytesOf(const FSRef &reference)
{
    return {reinterpret_cast<const char *>(&reference), sizeof reference};
}

std::pair<size_t, size_t> CoreFoundationDouble::ReleaseMade()
{
    size_t alone = 0;
    for (const CFTypeRef object : made) {
        alone += [(id)object retainCount] == 1 ? 1 : 0;
        CFRelease(object);
    }
    const size_t count = made.size();
    made.clear();
    return {count, alone};
}

CoreFoundationDouble &TheCoreFoundation()
{
    static CoreFoundationDouble one;
    return one;
}

extern "C" {

OSErr __real_FSGetCatalogInfo(const FSRef *, FSCatalogInfoBitmap, FSCatalogInfo *, HFSUniStr255 *, FSSpecPtr,
                              FSRef *);
OSErr __wrap_FSGetCatalogInfo(const FSRef *item, FSCatalogInfoBitmap information, FSCatalogInfo *catalog,
                              HFSUniStr255 *name, FSSpecPtr oldReference, FSRef *parent)
{
    CoreFoundationDouble &manager = TheCoreFoundation();
    manager.catalogCalls.push_back(
        {BytesOf(*item), information, catalog != nullptr, name != nullptr, parent != nullptr});
    const OSErr error = __real_FSGetCatalogInfo(item, information, catalog, name, oldReference, parent);
    if (error == noErr && catalog != nullptr && manager.nodeID != 0)
        catalog->nodeID = manager.nodeID;
    // The platform here reads only the beginning of a reference, but the library must pass all of it.
    if (error == noErr && parent != nullptr && manager.marksParents)
        parent->hidden[sizeof parent->hidden - 1] = 1;
    // A refusal fills the results in too, to catch a caller that ignores the error.
    const bool wantsNothing = catalog == nullptr && name == nullptr && parent == nullptr;
    const bool refuses = (Refuses(Refusal::NodeAndParent) && parent != nullptr) ||
                         (Refuses(Refusal::Name) && name != nullptr) ||
                         (Refuses(Refusal::Existence) && wantsNothing);
    return refuses ? OSErr{ioErr} : error;
}

OSStatus __real_FSRefMakePath(const FSRef *, UInt8 *, UInt32);
OSStatus __wrap_FSRefMakePath(const FSRef *item, UInt8 *buffer, UInt32 size)
{
    CoreFoundationDouble &manager = TheCoreFoundation();
    manager.pathBuffers.emplace_back(reinterpret_cast<const char *>(buffer), size);
    if (manager.path.empty()) {
        const OSStatus error = __real_FSRefMakePath(item, buffer, size);
        return Refuses(Refusal::Path) ? OSStatus{ioErr} : error;
    }
    std::copy(manager.path.begin(), manager.path.end(), buffer);
    return noErr;
}

CFURLRef __real_CFURLCreateCopyDeletingLastPathComponent(CFAllocatorRef, CFURLRef);
CFURLRef __wrap_CFURLCreateCopyDeletingLastPathComponent(CFAllocatorRef allocator, CFURLRef url)
{
    if (Refuses(Refusal::FolderURL))
        return nullptr;
    return Noted(__real_CFURLCreateCopyDeletingLastPathComponent(allocator, url));
}

Boolean __real_CFURLGetFSRef(CFURLRef, FSRef *);
Boolean __wrap_CFURLGetFSRef(CFURLRef url, FSRef *reference)
{
    EXPECT_NE(url, nullptr) << kEndsTheProcess;
    const Boolean isThere = __real_CFURLGetFSRef(url, reference);
    return Refuses(Refusal::FolderReference) && IsMade(url) ? Boolean{false} : isThere;
}

CFURLRef __real_CFURLCreateFromFSRef(CFAllocatorRef, const FSRef *);
CFURLRef __wrap_CFURLCreateFromFSRef(CFAllocatorRef allocator, const FSRef *reference)
{
    return Refuses(Refusal::ReferenceURL) ? nullptr
                                          : Noted(__real_CFURLCreateFromFSRef(allocator, reference));
}

CFURLRef __real_CFURLCreateCopyAppendingPathComponent(CFAllocatorRef, CFURLRef, CFStringRef, Boolean);
CFURLRef __wrap_CFURLCreateCopyAppendingPathComponent(CFAllocatorRef allocator, CFURLRef url,
                                                      CFStringRef component, Boolean isDirectory)
{
    EXPECT_NE(url, nullptr) << kEndsTheProcess;
    EXPECT_NE(component, nullptr) << kEndsTheProcess;
    if (Refuses(Refusal::LongerURL))
        return nullptr;
    return Noted(__real_CFURLCreateCopyAppendingPathComponent(allocator, url, component, isDirectory));
}

CFStringRef __real_CFURLCopyLastPathComponent(CFURLRef);
CFStringRef __wrap_CFURLCopyLastPathComponent(CFURLRef url)
{
    return Refuses(Refusal::LastComponent) ? nullptr : Noted(__real_CFURLCopyLastPathComponent(url));
}

CFStringRef __real_CFStringCreateWithCharacters(CFAllocatorRef, const UniChar *, CFIndex);
CFStringRef __wrap_CFStringCreateWithCharacters(CFAllocatorRef allocator, const UniChar *units, CFIndex count)
{
    return Refuses(Refusal::String) ? nullptr
                                    : Noted(__real_CFStringCreateWithCharacters(allocator, units, count));
}

CFMutableStringRef __real_CFStringCreateMutableCopy(CFAllocatorRef, CFIndex, CFStringRef);
CFMutableStringRef __wrap_CFStringCreateMutableCopy(CFAllocatorRef allocator, CFIndex maximum,
                                                    CFStringRef string)
{
    EXPECT_NE(string, nullptr) << kEndsTheProcess;
    return Refuses(Refusal::MutableCopy)
               ? nullptr
               : Noted(__real_CFStringCreateMutableCopy(allocator, maximum, string));
}

} // extern "C"
