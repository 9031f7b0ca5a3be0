// References of file-system items: numbers of canonical paths that this process has met.
#include "platform/gnustep/file_references.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <memory>
#include <mutex>
#include <string_view>
#include <unordered_map>

namespace cocoaport {

namespace {

/// What an FSRef holds here: the number of a path in a table, since the longest paths do not fit. References
/// are plain bytes that nobody gives back, so the table only grows.
struct PathReference {
    UInt64 mark;
    UInt64 number;
    UInt8 zeros[64];
};
static_assert(sizeof(PathReference) == sizeof(FSRef));

/// Distinguishes a reference from other bytes, above all from zeros.
constexpr UInt64 kMark = 0x6665726874617066;

class PathTable {
public:
    UInt64 NumberOf(const std::string &path)
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        const auto known = numbers_.find(path);
        if (known != numbers_.end())
            return known->second;
        paths_.push_back(path);
        numbers_.emplace(paths_.back(), paths_.size() - 1);
        return paths_.size() - 1;
    }

    std::optional<std::string> PathOf(UInt64 number)
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        return number < paths_.size() ? std::optional(paths_[number]) : std::nullopt;
    }

private:
    std::mutex mutex_;
    std::deque<std::string> paths_;
    std::unordered_map<std::string_view, UInt64> numbers_;
};

PathTable &Paths()
{
    static auto *const table = new PathTable;
    return *table;
}

std::optional<std::string> RealPath(const std::string &path)
{
    const std::unique_ptr<char, void (*)(void *)> real(realpath(path.c_str(), nullptr), std::free);
    return real == nullptr ? std::nullopt : std::optional<std::string>(real.get());
}

std::optional<std::string> PathOf(const FSRef *reference)
{
    if (reference == nullptr)
        return std::nullopt;
    PathReference content;
    std::memcpy(&content, reference, sizeof content);
    return content.mark == kMark ? Paths().PathOf(content.number) : std::nullopt;
}

} // namespace

std::optional<std::string> CanonicalPath(const std::string &path)
{
    std::string item = path;
    while (item.size() > 1 && item.back() == '/')
        item.pop_back();
    const size_t slash = item.rfind('/');
    const std::string name = slash == std::string::npos ? item : item.substr(slash + 1);
    if (slash == std::string::npos || name.empty() || name == "." || name == "..")
        return RealPath(item);

    const std::optional<std::string> folder = RealPath(item.substr(0, slash + 1));
    if (!folder)
        return std::nullopt;
    const std::string canonical = (*folder == "/" ? "" : *folder) + "/" + name;
    struct stat status;
    return lstat(canonical.c_str(), &status) == 0 ? std::optional(canonical) : std::nullopt;
}

FSRef ReferenceOfPath(const std::string &canonicalPath)
{
    const PathReference content{kMark, Paths().NumberOf(canonicalPath), {}};
    FSRef reference;
    std::memcpy(&reference, &content, sizeof reference);
    return reference;
}

FileItem FindItem(const FSRef *reference)
{
    const std::optional<std::string> path = PathOf(reference);
    FileItem item{paramErr, path.value_or(""), {}};
    if (!path)
        return item;
    item.error = noErr;
    if (lstat(item.path.c_str(), &item.status) != 0)
        item.error = errno == ENOENT || errno == ENOTDIR ? fnfErr : ioErr;
    return item;
}

} // namespace cocoaport
