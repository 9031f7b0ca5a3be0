// Reads files on disk, and no more of them than is needed.
#pragma once

#include <sys/stat.h>

#include <string>

#include "platform/macho/bytes.h"

namespace macho {

/// Identifies a file and the version of its content.
struct FileIdentity {
    dev_t device = 0;
    ino_t number = 0;
    off_t size = 0;
    int64_t seconds = 0, nanoseconds = 0;

    bool operator==(const FileIdentity &) const = default;
};

/// A regular file that is open for reading.
class OpenFile {
public:
    /// Throws LoadError for a file that cannot be opened, and for everything but regular files. Does
    /// not wait for the writer of a FIFO.
    explicit OpenFile(const std::string &path);
    ~OpenFile();
    OpenFile(const OpenFile &) = delete;
    OpenFile &operator=(const OpenFile &) = delete;

    int Descriptor() const { return descriptor_; }
    uint64_t Size() const { return static_cast<uint64_t>(identity_.size); }
    const FileIdentity &Identity() const { return identity_; }

    /// The first four bytes; 0 if the file is shorter.
    uint32_t FirstWord() const;

private:
    int descriptor_ = -1;
    FileIdentity identity_;
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
    const FileIdentity &Identity() const { return identity_; }

private:
    Bytes content_;
    FileIdentity identity_;
};

} // namespace macho
