// Files on disk, of which no more is read than is needed.
#pragma once

#include <string>

#include "platform/macho/bytes.h"

namespace macho {

/// A regular file that is open for reading.
class OpenFile {
public:
    /// Throws LoadError for a file that cannot be opened, and for everything but regular files. Waits for
    /// nobody to write into a FIFO.
    explicit OpenFile(const std::string &path);
    ~OpenFile();
    OpenFile(const OpenFile &) = delete;
    OpenFile &operator=(const OpenFile &) = delete;

    int Descriptor() const { return descriptor_; }
    uint64_t Size() const { return size_; }

    /// The first four bytes; 0 if the file is shorter.
    uint32_t FirstWord() const;

private:
    int descriptor_ = -1;
    uint64_t size_ = 0;
};

/// A file that is mapped into memory, so that only what is looked at is read.
///
/// The process gets SIGBUS if it reads beyond the end of a file that was made shorter since, as happens to
/// libraries of Linux. The loader reads the mapping only while it loads, and copies what it keeps, so a file
/// that changes later does no harm. What changes meanwhile may be read as it was or as it is; no size is read
/// again after it was checked.
class MappedFile {
public:
    /// Throws LoadError.
    explicit MappedFile(const std::string &path);
    ~MappedFile();
    MappedFile(const MappedFile &) = delete;
    MappedFile &operator=(const MappedFile &) = delete;

    Bytes Content() const { return content_; }

private:
    Bytes content_;
};

} // namespace macho
