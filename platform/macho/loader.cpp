// Loads Mach-O images: reads, maps, binds, registers, initialises.
#include "platform/macho/loader.h"

#include <algorithm>
#include <memory>
#include <new>
#include <vector>

#include "platform/macho/dynamic_loading.h"
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

/// Called after an image was loaded and before its code runs: a debugger stops here and adds the slide to the
/// linker's addresses.
extern "C" __attribute__((noinline)) void machoImageLoaded(const char *path, uint64_t slide)
{
    // Keeps the arguments at hand.
    asm volatile("" : : "r"(path), "r"(slide) : "memory");
}

namespace macho {

/// Reads and maps the file; none of its code runs, and nobody points to it yet.
struct LoadedImage {
    LoadedImage(const std::string &path, ImageKind kind)
        : kind(kind), file(path), image(ParseImage(file.Content(), kThisProcessor, kind)),
          frames(ReadUnwindInfo(image)), memory(image)
    {
    }

    const ImageKind kind;
    const MappedFile file;
    const Image image;
    const std::vector<UnwindEntry> frames;
    const MappedImage memory;
    bool isInitialized = false;
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

void Initialize(const std::string &path, LoadedImage &loaded)
{
    ApplyFixups(loaded.image, loaded.memory);
    RegisterObjcMetadata(loaded.image, loaded.memory);
    loaded.memory.Protect();
    RegisterFrames(loaded.frames, loaded.memory);
    ShowVariablesToLeakChecker(loaded.image, loaded.memory);
    const uint64_t begin = loaded.image.begin;
    machoImageLoaded(path.c_str(), reinterpret_cast<uint64_t>(loaded.memory.At(begin)) - begin);
    // Its initialisers may ask for it.
    loaded.isInitialized = true;
    SendObjcLoad(loaded.image, loaded.memory);
    RunInitializers(loaded.image, loaded.memory);
}

/// Kept for ever, even those that cannot be initialised: their code may be on any stack, and the runtime
/// points into them.
std::vector<std::unique_ptr<LoadedImage>> &LoadedImages()
{
    static auto &images = *new std::vector<std::unique_ptr<LoadedImage>>;
    return images;
}

/// The dylib of this file; null if it is not loaded.
const LoadedImage *FindDylib(const FileIdentity &identity)
{
    const auto &images = LoadedImages();
    const auto found = std::find_if(images.begin(), images.end(), [&](const auto &loaded) {
        return loaded->kind == ImageKind::Library && loaded->isInitialized &&
               loaded->file.Identity() == identity;
    });
    return found == images.end() ? nullptr : found->get();
}

/// The header of the image that an address lies in; null if it lies in none.
const void *FindHeader(const void *address)
{
    for (const auto &loaded : LoadedImages()) {
        if (loaded->memory.Contains(address))
            return loaded->memory.At(loaded->image.begin);
    }
    return nullptr;
}

const LoadedImage &Load(const std::string &path, ImageKind kind)
{
    LetImagesLoad({[](const std::string &library) -> const void * { return &LoadDylib(library); },
                   [](const void *library, const std::string &name) {
                       const auto &image = *static_cast<const LoadedImage *>(library);
                       void *const own = FindSymbol(image, name);
                       return own != nullptr
                                  ? own
                                  : reinterpret_cast<void *>(FindInLibraries("_" + name, image.image));
                   },
                   FindHeader});
    LoadedImage &loaded = *LoadedImages().emplace_back(std::make_unique<LoadedImage>(path, kind));
    Initialize(path, loaded);
    return loaded;
}

} // namespace

bool IsMachO(const std::string &path)
{
    return NamingPath(path, [&] { return IsMachOMagic(OpenFile(path).FirstWord()); });
}

const LoadedImage &LoadDylib(const std::string &path)
{
    return NamingPath(path, [&]() -> const LoadedImage & {
        const LoadedImage *const known = FindDylib(OpenFile(path).Identity());
        return known != nullptr ? *known : Load(path, ImageKind::Library);
    });
}

const LoadedImage &LoadProgram(const std::string &path)
{
    return NamingPath(path, [&]() -> const LoadedImage & { return Load(path, ImageKind::Program); });
}

void *FindSymbol(const LoadedImage &image, const std::string &name)
{
    const Export *const found = image.image.FindExport("_" + name);
    return found == nullptr ? nullptr : image.memory.At(found->address);
}

MainFunction FindMain(const LoadedImage &program)
{
    return reinterpret_cast<MainFunction>(program.memory.At(program.image.entry));
}

} // namespace macho
