// A folder of a test's own.
#pragma once

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

/// A new folder that only this user can enter, removed with all that is in it. Its path is real, and short:
/// the names of sockets below it have to be. Throws std::system_error.
class PrivateFolder {
public:
    PrivateFolder()
    {
        // Not where TMPDIR says, which may be a long way down.
        char path[] = "/tmp/qzl-test-XXXXXX";
        if (mkdtemp(path) == nullptr)
            throw std::system_error(errno, std::generic_category(), "mkdtemp");
        path_ = std::filesystem::canonical(path).string();
    }
    ~PrivateFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    PrivateFolder(const PrivateFolder &) = delete;
    PrivateFolder &operator=(const PrivateFolder &) = delete;

    const std::string &Path() const { return path_; }
    /// The path of an item in it.
    std::string Path(const std::string &name) const { return path_ + "/" + name; }

private:
    std::string path_;
};
