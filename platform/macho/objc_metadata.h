// Makes an image's Objective-C metadata known to the runtime of this platform.
#pragma once

#include "platform/macho/mapped_image.h"

namespace macho {

/// Registers selectors, classes and categories, and turns constant strings into ones of this platform. The
/// pointers of the image are set already; those to its classes are set anew. Throws LoadError for metadata
/// that leads out of the image, for a class whose name is taken, and for one whose instance variables would
/// lie elsewhere than its code expects. On the main thread, once for an image; what is registered stays.
void RegisterObjcMetadata(const Image &image, const MappedImage &memory);

/// Sends +load to the classes and categories that have it. Their code may run.
void SendObjcLoad(const Image &image, const MappedImage &memory);

} // namespace macho
