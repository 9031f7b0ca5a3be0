// Registers an image's Objective-C metadata with the runtime of this platform.
#pragma once

#include "platform/macho/mapped_image.h"

namespace macho {

/// Registers selectors, classes and categories, and converts constant strings into this platform's. The
/// image's pointers are already set; those to its classes are replaced. Throws LoadError for metadata that
/// leads out of the image, for a class whose name is taken, and for one whose instance variables would lie
/// elsewhere than its code expects. Called on the main thread, once for an image; what is registered stays.
void RegisterObjcMetadata(const Image &image, const MappedImage &memory);

/// Sends +load to the classes and categories that have it. Called once the image's code can run.
void SendObjcLoad(const Image &image, const MappedImage &memory);

} // namespace macho
