// Loads Mach-O dylibs: reads, maps, binds, registers, initialises.
#include "platform/macho/loader.h"

#include <memory>
#include <new>
#include <vector>

#include "platform/macho/file.h"
#include "platform/macho/file_kind.h"
#include "platform/macho/format.h"
#include "platform/macho/frame_registration.h"
#include "platform/macho/image_reader.h"
#include "platform/macho/imports.h"
#include "platform/macho/mapped_image.h"
#include "platform/macho/objc_metadata.h"
#include "platform/macho/unwind_info.h"

// The leak checker's, in programs that have it.
extern "C" __attribute__((weak)) void RegisterRootRegion(const void *begin,
                                                         size_t size) __asm__("__lsan_register_root_region");

/// Called after a dylib was loaded and before its code runs: a debugger stops here and adds the slide to the
/// linker's addresses.
extern "C" __attribute__((noinline)) void machoDylibLoaded(const char *path, uint64_t slide)
{
    // Keeps the arguments at hand.
    asm volatile("" : : "r"(path), "r"(slide) : "memory");
}

namespace macho {

/// Reads and maps the dylib; none of its code runs, and nobody points to it yet.
struct LoadedDylib {
    explicit LoadedDylib(const std::string &path)
        : file(path), image(ParseImage(file.Content(), kThisProcessor)), frames(ReadUnwindInfo(image)),
          memory(image)
    {
    }

    const MappedFile file;
    const Image image;
    const std::vector<UnwindEntry> frames;
    const MappedImage memory;
};

namespace {

/// Runs the body. A LoadError from it begins with the path, and lack of memory becomes one.
template <typename Body>
decltype(auto) NamingPath(const std::string &path, Body body)
{
    try {
        return body();
    } catch (const LoadError &error) {
        throw LoadError(path + ": " + error.what());
    } catch (const std::bad_alloc &) {
        throw LoadError(path + ": there is not enough memory");
    }
}

void SetPointer(const MappedImage &memory, uint64_t address, uint64_t value)
{
    std::memcpy(memory.At(address), &value, sizeof value);
}

void ApplyFixups(const Image &image, const MappedImage &memory)
{
    for (const Rebase &rebase : image.rebases)
        SetPointer(memory, rebase.address, reinterpret_cast<uint64_t>(memory.At(rebase.target)));
    for (const Bind &bind : image.binds) {
        uint64_t target = 0;
        if (bind.ordinal == kBindToSelf) {
            const Export *const own = image.FindExport(bind.symbol);
            if (own == nullptr)
                throw LoadError("the image itself does not export " + std::string(bind.symbol));
            target = reinterpret_cast<uint64_t>(memory.At(own->address));
        } else {
            target = ResolveImport(bind, image);
        }
        // A missing symbol stays null, whatever is added.
        SetPointer(memory, bind.address, target == 0 ? 0 : target + static_cast<uint64_t>(bind.addend));
    }
}

/// Makes the leak checker count what the image's variables point to as reachable.
void ShowVariablesToLeakChecker(const Image &image, const MappedImage &memory)
{
    if (RegisterRootRegion == nullptr)
        return;
    for (const Segment &segment : image.segments) {
        if (segment.isWritable)
            RegisterRootRegion(memory.At(segment.address), segment.size);
    }
}

void RunInitializers(const Image &image, const MappedImage &memory)
{
    for (const Section &section : image.sections) {
        if (section.type != format::section::ModInitFunctions)
            continue;
        using Initializer = void (*)();
        const auto *const first = static_cast<const Initializer *>(memory.At(section.address));
        for (uint64_t i = 0; i < section.size / sizeof(Initializer); ++i)
            first[i]();
    }
}

void Initialize(const std::string &path, const LoadedDylib &dylib)
{
    ApplyFixups(dylib.image, dylib.memory);
    RegisterObjcMetadata(dylib.image, dylib.memory);
    dylib.memory.Protect();
    RegisterFrames(dylib.frames, dylib.memory);
    ShowVariablesToLeakChecker(dylib.image, dylib.memory);
    const uint64_t begin = dylib.image.begin;
    machoDylibLoaded(path.c_str(), reinterpret_cast<uint64_t>(dylib.memory.At(begin)) - begin);
    SendObjcLoad(dylib.image, dylib.memory);
    RunInitializers(dylib.image, dylib.memory);
}

} // namespace

bool IsMachO(const std::string &path)
{
    return NamingPath(path, [&] { return IsMachOMagic(OpenFile(path).FirstWord()); });
}

const LoadedDylib &LoadDylib(const std::string &path)
{
    return NamingPath(path, [&]() -> const LoadedDylib & {
        // Kept for ever, even if it cannot be initialised: its code may be on any stack, and the runtime
        // points into it.
        static auto &loaded = *new std::vector<std::unique_ptr<const LoadedDylib>>;
        const LoadedDylib &dylib = *loaded.emplace_back(std::make_unique<const LoadedDylib>(path));
        Initialize(path, dylib);
        return dylib;
    });
}

void *FindSymbol(const LoadedDylib &dylib, const std::string &name)
{
    const Export *const found = dylib.image.FindExport("_" + name);
    return found == nullptr ? nullptr : dylib.memory.At(found->address);
}

} // namespace macho
