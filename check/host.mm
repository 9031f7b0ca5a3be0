// The classes of the small host, and the library that it loads.
#include "check/host.h"

#include <CoreFoundation/CoreFoundation.h>
#include <dlfcn.h>

#include <cstdlib>
#include <cstring>
#include <utility>

#include "check/text.h"

namespace {

void *gLibrary = nullptr;
NSMutableArray *gRegistered = nil;
/// Each class's name and the address of its record, 0 for a class that is not the library's, by that name.
NSMutableDictionary *gClasses = nil;
Instance gException = nil;
int64_t gLiving = 0;

// Words of a class record. A count stands behind its table.
constexpr int kName = 1, kSuperName = 2, kConstructor = 5, kDestructor = 6, kProperties = 7, kMethods = 9,
              kEvents = 11, kSharedMethods = 23;

/// How many words the record of a member has, and which are its declaration and its function. The setter
/// stands behind the function.
struct Layout {
    int words, declaration, function;
};
constexpr Layout kPropertyRecord = {12, 1, 4}, kMethodRecord = {6, 2, 0};
constexpr int kEventWords = 4, kEventKeyWord = 1;

/// What the instance data of a Core Foundation wrapper holds in its third word.
constexpr uint64_t kCoreFoundationSignature = 0x52424346;

NSString *const kOtherClasses =
    @"Date Dictionary FolderItem MemoryBlock RuntimeException OutOfBoundsException OutOfMemoryException "
    @"IllegalCastException NilObjectException UnsupportedOperationException NSExceptionQZL NSObjectQZL "
    @"NSPointQZL NSRangeQZL NSRectQZL NSSizeQZL NSTimeZoneQZL CFArrayQZL CFAttributedStringQZL CFBagQZL "
    @"CFBinaryDataQZL CFBooleanQZL CFBundleQZL CFCharacterSetQZL CFDateQZL CFDictionaryQZL CFErrorQZL "
    @"CFNumberQZL CFObjectQZL CFSetQZL CFStringQZL CFTimeZoneQZL CFURLQZL CFUUIDQZL CTFontCollectionQZL "
    @"CTFontQZL CTFrameQZL CTFramesetterQZL CTGlyphInfoQZL CTLineQZL CTParagraphStyleQZL CTRunDelegateQZL "
    @"CTRunQZL CTTypesetterQZL";

const char *CString(uint64_t word)
{
    return reinterpret_cast<const char *>(word);
}

bool IsCoreFoundationWrapper(NSString *className)
{
    return [className hasPrefix:@"CF"] || [className hasPrefix:@"CT"];
}

/// The function of a declaration in a table, or its setter; 0 without one.
uint64_t FindInTable(const uint64_t *table, Layout layout, const char *declaration, int setter)
{
    const auto *record = reinterpret_cast<const uint64_t *>(table[0]);
    for (uint64_t i = 0; i < table[1]; ++i, record += layout.words) {
        if (std::strcmp(CString(record[layout.declaration]), declaration) == 0)
            return record[layout.function + setter];
    }
    return 0;
}

void CallHook(const uint64_t *record, int hook, Instance instance)
{
    if (record != nullptr && record[hook] != 0)
        reinterpret_cast<void (*)(Instance)>(record[hook])(instance);
}

void *FindUpwards(NSString *type, const char *declaration, bool isSetter)
{
    constexpr std::pair<int, Layout> kTables[] = {
        {kProperties, kPropertyRecord}, {kMethods, kMethodRecord}, {kSharedMethods, kMethodRecord}};
    for (; type != nil; type = SuperOf(type)) {
        const uint64_t *const record = RecordOf(type);
        for (const auto &[table, layout] : kTables) {
            const uint64_t found =
                record == nullptr ? 0 : FindInTable(record + table, layout, declaration, isSetter);
            if (found != 0)
                return reinterpret_cast<void *>(found);
        }
    }
    return nullptr;
}

void Construct(Instance instance, NSString *type)
{
    if (type == nil)
        return;
    Construct(instance, SuperOf(type));
    CallHook(RecordOf(type), kConstructor, instance);
}

/// Which instance wraps which Cocoa object; holds no references.
CFMutableDictionaryRef InstancesDictionary()
{
    static const CFMutableDictionaryRef dictionary = CFDictionaryCreateMutable(nullptr, 0, nullptr, nullptr);
    return dictionary;
}

/// The destructors of the library's classes; for the wrappers of the family, what their own destructors do.
void Destroy(Instance instance)
{
    if (void *const destructor = FindUpwards(instance->type, "Destructor", false))
        reinterpret_cast<void (*)(Instance)>(destructor)(instance);
    for (NSString *type = instance->type; type != nil; type = SuperOf(type))
        CallHook(RecordOf(type), kDestructor, instance);
    if (IsCoreFoundationWrapper(instance->type) || [instance->type isEqual:@"NSObjectQZL"] ||
        [instance->type isEqual:@"NSTimeZoneQZL"]) {
        CFDictionaryRemoveValue(InstancesDictionary(), HandleOf(instance));
        [HandleOf(instance) release];
    }
}

} // namespace

@implementation HostInstance
- (id)init
{
    __atomic_add_fetch(&gLiving, 1, __ATOMIC_RELAXED);
    return [super init];
}
- (void)dealloc
{
    __atomic_sub_fetch(&gLiving, 1, __ATOMIC_RELAXED);
    if (type != nil)
        Destroy(self);
    [value release];
    [super dealloc];
}
@end

/// What the family's other plugins add to Cocoa.
@interface NSException (Family)
+ (void *)NewNSExceptionQZL:(NSException *)exception;
+ (void *)GetInstancesDictionaryQZL;
@end

@implementation NSException (Family)
+ (void *)NewNSExceptionQZL:(NSException *)exception
{
    const HostString message = String(ExceptionText(exception));
    return [Value(@"NSExceptionQZL", [NSDictionary dictionaryWithObject:message forKey:@"Message"]) retain];
}
+ (void *)GetInstancesDictionaryQZL
{
    return InstancesDictionary();
}
@end

NSString *LoadLibrary(NSString *path, void *(*findHostFunction)(const char *name))
{
    gRegistered = [[NSMutableArray alloc] init];
    gClasses = [[NSMutableDictionary alloc] init];
    for (NSString *name in [kOtherClasses componentsSeparatedByString:@" "])
        [gClasses setObject:@[ name, @(0) ] forKey:name];
    gLibrary = dlopen([path fileSystemRepresentation], RTLD_NOW);
    if (gLibrary == nullptr)
        return [NSString stringWithUTF8String:dlerror()];
    void *const entry = dlsym(gLibrary, "REALPluginMain");
    if (entry == nullptr)
        return @"it does not export REALPluginMain";
    reinterpret_cast<void (*)(void *(*)(const char *))>(entry)(findHostFunction);
    return nil;
}

void *FindSymbol(const char *name)
{
    return dlsym(gLibrary, name);
}

void RegisterClass(uint64_t *record)
{
    NSString *const name = [NSString stringWithUTF8String:CString(record[kName])];
    auto *const events = reinterpret_cast<uint64_t *>(record[kEvents]);
    for (uint64_t i = 0; i < record[kEvents + 1]; ++i)
        events[i * kEventWords + kEventKeyWord] = kEventKey;
    [gRegistered addObject:name];
    [gClasses setObject:@[ name, @(reinterpret_cast<uintptr_t>(record)) ] forKey:name];
}

NSArray *RegisteredClasses()
{
    return gRegistered;
}

const uint64_t *RecordOf(NSString *className)
{
    NSNumber *const record = [[gClasses objectForKey:className] lastObject];
    return reinterpret_cast<const uint64_t *>([record unsignedLongLongValue]);
}

NSString *ClassNamed(const char *name)
{
    NSArray *const found = [gClasses objectForKey:[NSString stringWithUTF8String:name]];
    return found == nil ? nil : [found objectAtIndex:0];
}

NSString *SuperOf(NSString *className)
{
    const uint64_t *const record = RecordOf(className);
    return record == nullptr || record[kSuperName] == 0 ? nil : ClassNamed(CString(record[kSuperName]));
}

Instance NewInstance(NSString *className)
{
    NSString *const type = ClassNamed([className UTF8String]);
    if (type == nil)
        return nil;
    const Instance instance = Variant(code::Object, nil);
    instance->type = type;
    if ([type isEqual:@"Dictionary"])
        instance->value = [[NSMutableDictionary alloc] init];
    if (IsCoreFoundationWrapper(type))
        instance->data[2] = kCoreFoundationSignature;
    Construct(instance, type);
    return instance;
}

int64_t LivingReferences()
{
    return __atomic_load_n(&gLiving, __ATOMIC_RELAXED);
}

void RecordException(Instance exception)
{
    [gException autorelease];
    gException = [exception retain];
}

NSString *TakeException()
{
    if (gException == nil)
        return @"nothing";
    NSString *const message = TextOfString([gException->value objectForKey:@"Message"]);
    NSString *const text = Text({gException->type, @": ", message});
    RecordException(nil);
    return text;
}

void *FindMember(NSString *className, const char *declaration, bool isSetter)
{
    void *const member = FindUpwards(className, declaration, isSetter);
    if (member == nullptr)
        abort();
    return member;
}

id HandleOf(Instance instance)
{
    return instance == nil ? nil : reinterpret_cast<id>(instance->data[0]);
}
