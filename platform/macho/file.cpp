// Opens and maps files.
#include "platform/macho/file.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace macho {

namespace {

[[noreturn]] void ThrowErrno(const char *what)
{
    if (errno == ELOOP)
        throw LoadError("its symbolic links lead in a circle");
    throw LoadError(std::string(what) + ": " + std::generic_category().message(errno));
}

void RequireRegularFile(mode_t mode)
{
    if (S_ISDIR(mode))
        throw LoadError("it is a directory");
    if (S_ISFIFO(mode))
        throw LoadError("it is a FIFO");
    if (S_ISSOCK(mode))
        throw LoadError("it is a socket");
    if (!S_ISREG(mode))
        throw LoadError("it is a device");
}

} // namespace

OpenFile::OpenFile(const std::string &path)
{
    struct stat status = {};
    if (stat(path.c_str(), &status) != 0)
        ThrowErrno("cannot be opened");
    RequireRegularFile(status.st_mode);
    // A FIFO may have taken the file's place meanwhile: it is not waited for.
    descriptor_ = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    if (descriptor_ < 0)
        ThrowErrno("cannot be opened");
    if (fstat(descriptor_, &status) == 0)
        identity_ = {status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec,
                     status.st_mtim.tv_nsec};
}

OpenFile::~OpenFile()
{
    close(descriptor_);
}

uint32_t OpenFile::FirstWord() const
{
    uint32_t word = 0;
    return pread(descriptor_, &word, sizeof word, 0) == sizeof word ? word : 0;
}

MappedFile::MappedFile(const std::string &path)
{
    const OpenFile file(path);
    identity_ = file.Identity();
    if (file.Size() == 0)
        return;
    void *const memory = mmap(nullptr, file.Size(), PROT_READ, MAP_PRIVATE, file.Descriptor(), 0);
    if (memory == MAP_FAILED)
        ThrowErrno("cannot be mapped into memory");
    content_ = Bytes(memory, file.Size());
}

MappedFile::~MappedFile()
{
    if (content_.Size() != 0)
        munmap(const_cast<uint8_t *>(content_.Data()), content_.Size());
}

} // namespace macho
