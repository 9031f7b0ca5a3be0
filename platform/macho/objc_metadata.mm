// Registers an image's Objective-C metadata with the runtime of this platform.
#include "platform/macho/objc_metadata.h"

#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <cstdlib>
#include <map>
#include <new>
#include <set>

#include "platform/macho/objc_format.h"

namespace macho {

namespace {

constexpr std::string_view kWhat = "Objective-C metadata";
using RawClass = objc::Class;

/// GNUstep's constant string: bytes of UTF-8.
struct PlatformString {
    Class isa;
    const char *characters;
    unsigned int length;
};
static_assert(sizeof(PlatformString) <= sizeof(objc::ConstantString), "it is written in place");

[[noreturn]] void Fail(const std::string &reason)
{
    throw LoadError(std::string(kWhat) + ": " + reason);
}

/// The entries of a section, each of which is a T.
template <typename T>
std::vector<T *> EntriesOf(const Image &image, const MappedImage &memory, std::string_view name)
{
    std::vector<T *> entries;
    const Section *const section = image.FindDataSection(name);
    if (section == nullptr)
        return entries;
    T *entry = static_cast<T *>(memory.At(section->address));
    const void *const end = memory.At(section->address + section->size);
    for (; static_cast<void *>(entry + 1) <= end; ++entry)
        entries.push_back(entry);
    if (entry != end)
        Fail("the section " + section->name + " has a part of an entry");
    return entries;
}

/// Registers the metadata of one image.
class Registration {
public:
    Registration(const Image &image, const MappedImage &memory) : image_(image), memory_(memory) {}

    void RegisterSelectors()
    {
        for (const char **const reference : Section<const char *>("__objc_selrefs")) {
            const char *const name = memory_.StringAt(*reference, "a selector");
            *reference = reinterpret_cast<const char *>(sel_registerName(name));
        }
    }

    void RegisterClasses()
    {
        for (RawClass **const entry : Section<RawClass *>("__objc_classlist"))
            ClassFor(*entry);
        PointToRegisteredClasses();
    }

    void AddCategories()
    {
        for (objc::Category **const entry : Section<objc::Category *>("__objc_catlist")) {
            const auto category = memory_.Read<objc::Category>(*entry, kWhat);
            const Class type = RuntimeClass(category.type);
            if (type == Nil)
                continue; // the class is imported weakly, and missing
            ReplaceMethods(category.instanceMethods, type);
            ReplaceMethods(category.classMethods, object_getClass((id)type));
        }
    }

    void ConvertConstantStrings()
    {
        for (objc::ConstantString *const place : Section<objc::ConstantString>("__cfstring")) {
            const objc::ConstantString string = *place;
            const NSData *const text = Utf8Of(string);
            if ([text length] > UINT32_MAX)
                Fail("a constant string is too long");
            const PlatformString converted = {
                [NSConstantString class], Kept(text), static_cast<unsigned int>([text length])};
            std::memcpy(static_cast<void *>(place), &converted, sizeof converted);
        }
    }

private:
    template <typename T>
    std::vector<T *> Section(std::string_view name) const
    {
        return EntriesOf<T>(image_, memory_, name);
    }

    objc::ClassData DataOf(const RawClass &type) const
    {
        return memory_.Read<objc::ClassData>(reinterpret_cast<void *>(type.data & ~objc::kDataFlags), kWhat);
    }

    /// A class of the image or of the runtime, as the runtime knows it.
    Class RuntimeClass(void *type)
    {
        if (!memory_.Contains(type))
            return reinterpret_cast<Class>(type);
        const auto found = registered_.find(type);
        if (found == registered_.end())
            Fail("a class is not in the list of classes");
        return found->second;
    }

    /// Registers a class of the image, after its superclasses.
    Class ClassFor(RawClass *place)
    {
        if (!memory_.Contains(place))
            return reinterpret_cast<Class>(place);
        if (const auto found = registered_.find(place); found != registered_.end())
            return found->second;
        if (!open_.insert(place).second)
            Fail("a class is its own superclass");
        const auto raw = memory_.Read<RawClass>(place, kWhat);
        const auto rawMeta = memory_.Read<RawClass>(raw.isa, kWhat);
        const objc::ClassData data = DataOf(raw);
        const char *const name = memory_.StringAt(data.name, "a class's name");
        const Class superclass = ClassFor(raw.superclass);
        if (superclass == Nil)
            Fail("the superclass of " + std::string(name) + " is missing");
        const Class type = objc_allocateClassPair(superclass, name, 0);
        if (type == Nil)
            Fail("there is a class " + std::string(name) + " already");
        AddIvars(data, type);
        AddMethods(data.methods, type);
        AddMethods(DataOf(rawMeta).methods, object_getClass((id)type));
        objc_registerClassPair(type);
        SetIvarOffsets(data, type);
        registered_[place] = type;
        registered_[raw.isa] = object_getClass((id)type);
        return type;
    }

    /// The entries of a list, or none for null.
    template <typename T>
    std::vector<T> List(void *list) const
    {
        std::vector<T> entries;
        if (list == nullptr)
            return entries;
        const auto header = memory_.Read<objc::ListHeader>(list, kWhat);
        if ((header.entrySize & objc::kRelativeList) != 0)
            Fail("a list of methods has relative pointers, which are not supported");
        if ((header.entrySize & ~uint32_t{3}) != sizeof(T))
            Fail("a list has entries of " + std::to_string(header.entrySize) + " bytes");
        const char *place = static_cast<const char *>(list) + sizeof header;
        for (uint32_t i = 0; i < header.count; ++i, place += sizeof(T))
            entries.push_back(memory_.Read<T>(place, kWhat));
        return entries;
    }

    /// Calls `add` for each method of a list.
    template <typename Add>
    void ForEachMethod(void *list, Add add) const
    {
        for (const objc::Method &method : List<objc::Method>(list)) {
            if (!memory_.Contains(method.implementation))
                Fail("a method lies outside the image");
            const SEL selector = sel_registerTypedName(memory_.StringAt(method.selector, "a method's name"),
                                                       memory_.StringAt(method.types, "a method's types"));
            add(selector, reinterpret_cast<IMP>(method.implementation), method.types);
        }
    }

    /// Adds the methods of a list to a class that is not registered yet.
    void AddMethods(void *list, Class type) const
    {
        ForEachMethod(list, [&](SEL selector, IMP implementation, const char *types) {
            if (!class_addMethod(type, selector, implementation, types))
                Fail("the method " + std::string(sel_getName(selector)) + " is there twice");
        });
    }

    /// The class's own method; null if it inherits the method or lacks it. class_replaceMethod would change a
    /// superclass's.
    static Method OwnMethod(Class type, SEL selector)
    {
        Method found = nullptr;
        Method *const methods = class_copyMethodList(type, nullptr);
        for (Method *method = methods; method != nullptr && *method != nullptr; ++method) {
            if (sel_isEqual(method_getName(*method), selector))
                found = *method;
        }
        std::free(methods);
        return found;
    }

    /// Adds a category's methods in place of the class's own.
    void ReplaceMethods(void *list, Class type) const
    {
        ForEachMethod(list, [&](SEL selector, IMP implementation, const char *types) {
            if (const Method own = OwnMethod(type, selector))
                method_setImplementation(own, implementation);
            else
                class_addMethod(type, selector, implementation, types);
        });
    }

    void AddIvars(const objc::ClassData &data, Class type) const
    {
        for (const objc::Ivar &ivar : List<objc::Ivar>(data.ivars)) {
            const char *const name = memory_.StringAt(ivar.name, "an instance variable's name");
            const char *const encoding = memory_.StringAt(ivar.type, "an instance variable's type");
            if (!class_addIvar(type, name, ivar.size, static_cast<uint8_t>(ivar.alignmentShift), encoding))
                Fail("the instance variable " + std::string(name) + " cannot be added");
        }
    }

    /// The compiler writes the offsets of direct subclasses of NSObject into the code, so they cannot change.
    void SetIvarOffsets(const objc::ClassData &data, Class type) const
    {
        const bool isFolded = class_getSuperclass(type) == [NSObject class];
        for (const objc::Ivar &ivar : List<objc::Ivar>(data.ivars)) {
            const auto expected = memory_.Read<uint32_t>(ivar.offset, kWhat);
            const auto actual = ivar_getOffset(class_getInstanceVariable(type, ivar.name));
            if (isFolded && actual != static_cast<ptrdiff_t>(expected))
                Fail("the instance variable " + std::string(ivar.name) + " would lie at " +
                     std::to_string(actual) + " instead of " + std::to_string(expected));
            *ivar.offset = static_cast<uint32_t>(actual);
        }
    }

    /// Points references to the image's class structures to the runtime's classes.
    void PointToRegisteredClasses() const
    {
        for (const Rebase &rebase : image_.rebases) {
            const auto found = registered_.find(memory_.At(rebase.target));
            if (found != registered_.end())
                *static_cast<Class *>(memory_.At(rebase.address)) = found->second;
        }
    }

    NSData *Utf8Of(const objc::ConstantString &string) const
    {
        const uint64_t kind = string.flags & objc::kStringKindMask;
        if (kind == objc::kStringOfBytes)
            return [NSData dataWithBytes:Content(string, 1) length:string.length];
        if (kind != objc::kStringOfUnits)
            Fail("a constant string is of kind " + Hex(kind));
        const auto *const units = static_cast<const unichar *>(Content(string, sizeof(unichar)));
        NSString *const text = [NSString stringWithCharacters:units length:string.length];
        return [text dataUsingEncoding:NSUTF8StringEncoding];
    }

    /// The characters of a constant string, each `width` bytes wide.
    const void *Content(const objc::ConstantString &string, uint64_t width) const
    {
        const void *const first = string.characters;
        if (!memory_.Contains(first) || string.length > (image_.end - image_.begin) / width)
            Fail("a constant string leads out of the image");
        image_.SegmentAt(memory_.AddressOf(first), string.length * width, kWhat);
        return first;
    }

    /// A copy with a NUL behind it, which is kept for ever, as is the image.
    static const char *Kept(const NSData *text)
    {
        char *const copy = static_cast<char *>(std::calloc([text length] + 1, 1));
        if (copy == nullptr)
            throw std::bad_alloc();
        [text getBytes:copy length:[text length]];
        return copy;
    }

    const Image &image_;
    const MappedImage &memory_;
    std::map<const void *, Class> registered_;
    std::set<const void *> open_;
};

} // namespace

void RegisterObjcMetadata(const Image &image, const MappedImage &memory)
{
    @autoreleasepool {
        Registration registration(image, memory);
        registration.RegisterSelectors();
        registration.RegisterClasses();
        registration.AddCategories();
        registration.ConvertConstantStrings();
    }
}

void SendObjcLoad(const Image &image, const MappedImage &memory)
{
    // The runtime does not send it to classes that are made at run time.
    for (Class *const type : EntriesOf<Class>(image, memory, "__objc_nlclslist"))
        [*type performSelector:@selector(load)];
    for (objc::Category **const entry : EntriesOf<objc::Category *>(image, memory, "__objc_nlcatlist")) {
        const auto category = memory.Read<objc::Category>(*entry, kWhat);
        [reinterpret_cast<Class>(category.type) performSelector:@selector(load)];
    }
}

} // namespace macho
