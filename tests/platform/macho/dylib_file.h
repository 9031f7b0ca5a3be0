// Contents of dylibs, which tests change.
#pragma once

#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "platform/macho/bytes.h"
#include "platform/macho/format.h"
#include "tests/platform/macho/processors.h"

/// The content of a file that the build of the tests made.
inline std::vector<char> BuiltFile(const std::string &name)
{
    std::ifstream file(std::string(TEST_DYLIBS) + "/" + name, std::ios::binary);
    EXPECT_TRUE(file) << name;
    return std::vector<char>(std::istreambuf_iterator<char>(file), {});
}

/// The content of a dylib that was built for the tests.
inline std::vector<char> FileOf(const std::string &name, macho::Processor processor = macho::kThisProcessor)
{
    return BuiltFile(FolderOf(processor) + "/" + name + ".dylib");
}

template <typename T>
void Write(std::vector<char> &file, size_t offset, T value)
{
    std::memcpy(&file.at(offset), &value, sizeof value);
}

/// The offset of the first load command of this kind.
inline size_t CommandOffset(const std::vector<char> &file, uint32_t kind)
{
    const macho::Bytes bytes(file.data(), file.size());
    const auto header = bytes.Read<macho::format::Header>(0, "header");
    size_t offset = sizeof header;
    for (uint32_t i = 0; i < header.commandCount; ++i) {
        const auto command = bytes.Read<macho::format::Command>(offset, "command");
        if (command.command == kind)
            return offset;
        offset += command.size;
    }
    ADD_FAILURE() << "no load command " << kind;
    return 0;
}

/// A file with this content, which lasts as long as the object.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::vector<char> &content = {})
        : path_(testing::TempDir() + "macho_file_" + std::to_string(getpid()))
    {
        std::ofstream(path_, std::ios::binary)
            .write(content.data(), static_cast<std::streamsize>(content.size()));
    }
    ~TemporaryFile() { std::remove(path_.c_str()); }
    TemporaryFile(const TemporaryFile &) = delete;
    TemporaryFile &operator=(const TemporaryFile &) = delete;

    const std::string &Path() const { return path_; }

private:
    std::string path_;
};
