// The contents of a Mach-O dylib or executable: segments, fixups and exports, all checked against the file.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/macho/bytes.h"
#include "platform/macho/processor.h"

namespace macho {

// Addresses are the linker's: the loader adds the distance to where the image lies.

struct Segment {
    std::string name;
    uint64_t address = 0, size = 0;
    /// The part that is in the file; the rest is zero.
    Bytes content;
    bool isReadable = false, isWritable = false, isExecutable = false;
    /// Whether it can be written only until its pointers are set.
    bool isConstant = false;

    /// Whether it is put into memory. One without content that nothing may access only keeps its addresses
    /// free: executables begin with such a segment, __PAGEZERO.
    bool IsInMemory() const { return isReadable || isWritable || isExecutable || content.Size() != 0; }
};

struct Section {
    std::string segment, name;
    uint64_t address = 0, size = 0;
    /// Empty for one that is all zero.
    Bytes content;
    uint8_t type = 0;
};

/// A pointer into the image itself.
struct Rebase {
    uint64_t address = 0;
    /// What it points to.
    uint64_t target = 0;
};

/// The ordinals of the places other than dylibs in which a symbol is looked up.
inline constexpr int kBindToSelf = 0, kBindToMainExecutable = -1, kBindFlat = -2, kBindWeak = -3;

/// A pointer to what another library exports.
struct Bind {
    uint64_t address = 0;
    std::string_view symbol;
    /// Counted from 1 in the order of Image::dylibs; or one of the codes above.
    int ordinal = 0;
    int64_t addend = 0;
    /// Whether a missing symbol becomes null instead of an error.
    bool isWeakImport = false;
};

struct Export {
    std::string name;
    uint64_t address = 0;
};

/// Borrows from the file's bytes.
struct Image {
    Processor processor = kThisProcessor;
    std::vector<Segment> segments;
    std::vector<Section> sections;
    /// The install names of the libraries that the image was linked against.
    std::vector<std::string> dylibs;
    std::vector<Rebase> rebases;
    std::vector<Bind> binds;
    std::vector<Export> exports;
    /// The addresses of the first segment in memory, which begins with the header, and of the end of the
    /// last.
    uint64_t begin = 0, end = 0;
    /// The address of a program's main function; 0 in other images.
    uint64_t entry = 0;

    /// Null without such a section.
    const Section *FindSection(std::string_view segment, std::string_view name) const;
    /// Sections of data stand in __DATA, or in __DATA_CONST if nothing writes to them later.
    const Section *FindDataSection(std::string_view name) const;
    const Export *FindExport(std::string_view name) const;
    /// The file's bytes at an address; throws LoadError unless they lie in one segment's content.
    Bytes ContentAt(uint64_t address, uint64_t size, std::string_view what) const;
    /// Whether a bind may have this ordinal.
    bool HasLibrary(int ordinal) const;
    /// The segment whose memory has these bytes; throws LoadError if none has.
    const Segment &SegmentAt(uint64_t address, uint64_t size, std::string_view what) const;
};

} // namespace macho
