// Files on their way to Cocoa and back: URLs and FolderItems.
#include <ApplicationServices/ApplicationServices.h>

#include "check/groups.h"
#include "check/programs.h"

namespace {

NSString *gFolder = nil;

/// The path, with F in place of the folder of the checks.
NSString *Short(NSString *path)
{
    return [path stringByReplacingOccurrencesOfString:gFolder withString:@"F"];
}

/// What becomes of the FolderItem of a path: the path of the URL, and that of the FolderItem that comes back.
NSString *ThereAndBack(NSString *path)
{
    const id url = [HandleOf(NewNotification(Value(@"FolderItem", path))) object];
    const Instance back = VariantOf(url);
    return back == nil ? TextOf(back) : Text({Short([url path]), @" > ", Short(back->value)});
}

NSString *InFolder(NSString *name)
{
    return [gFolder stringByAppendingPathComponent:name];
}

void MakeFile(NSString *name)
{
    [[NSFileManager defaultManager] createFileAtPath:InFolder(name) contents:[NSData data] attributes:nil];
}

} // namespace

void CheckFiles()
{
    NSString *const name = [[NSProcessInfo processInfo] globallyUniqueString];
    gFolder = [NSTemporaryDirectory() stringByAppendingPathComponent:name];
    NSFileManager *const files = [NSFileManager defaultManager];
    [files createDirectoryAtPath:gFolder withIntermediateDirectories:YES attributes:nil error:nullptr];
    // The File Manager names folders without symbolic links on the way to them.
    FSRef reference = {};
    UInt8 path[1024] = {};
    CFURLGetFSRef(reinterpret_cast<CFURLRef>([NSURL fileURLWithPath:gFolder]), &reference);
    FSRefMakePath(&reference, path, sizeof path);
    gFolder = [[NSString alloc] initWithUTF8String:reinterpret_cast<const char *>(path)];
    Check(@"A file", @"F/file.txt > F/file.txt", [] {
        MakeFile(@"file.txt");
        return ThereAndBack(InFolder(@"file.txt"));
    });
    Check(@"A file whose name wants escapes", @"F/a %é?#.txt > F/a %é?#.txt", [] {
        NSString *const name = [@"a %é?#.txt" decomposedStringWithCanonicalMapping];
        MakeFile(name);
        return [ThereAndBack(InFolder(name)) precomposedStringWithCanonicalMapping];
    });
    Check(@"A folder", @"F > F", [] { return ThereAndBack(gFolder); });
    Check(@"A file that does not exist", @"F/none > F/none", [] { return ThereAndBack(InFolder(@"none")); });
    Check(@"Its name is decomposed", @"2 units", [] {
        const id url = [HandleOf(NewNotification(Value(@"FolderItem", InFolder(@"é")))) object];
        return Text({ @([[VariantOf(url)->value lastPathComponent] length]), @" units" });
    });
    Check(@"A file in a folder that does not exist", @"Nil",
          [] { return ThereAndBack(InFolder(@"none/none")); });
    Check(@"The root", @"/ > /", [] { return ThereAndBack(@"/"); });
    Check(@"A URL that is no file's", @"\"http://localhost/a\"",
          [] { return TextOf(VariantOf([NSURL URLWithString:@"http://localhost/a"])); });
    [files removeItemAtPath:gFolder error:nullptr];
}
