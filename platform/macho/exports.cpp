// Reads the exports: a trie whose edges are pieces of their names.
#include "platform/macho/exports.h"

#include <set>

#include "platform/macho/format.h"

namespace macho {

namespace {

constexpr std::string_view kWhat = "exports trie";
constexpr size_t kLongestName = 4096;

/// A node that is still to be read, and the name that the edges to it spell.
struct Node {
    uint64_t offset;
    std::string name;
};

void AddExport(const std::string &name, Cursor &cursor, Image &image)
{
    const uint64_t flags = cursor.NextUnsignedLeb();
    if ((flags & ~format::kExportWeak) != format::kExportRegular)
        cursor.Fail("the export " + name + " is of kind " + Hex(flags) + ", which is not supported,");
    const uint64_t offset = cursor.NextUnsignedLeb();
    if (offset > image.end - image.begin)
        cursor.Fail("the export " + name + " lies outside the image");
    image.exports.push_back({name, image.begin + offset});
}

} // namespace

void ReadExports(Bytes trie, Image &image)
{
    if (trie.Size() == 0)
        return;
    std::vector<Node> nodes = {{0, ""}};
    std::set<uint64_t> known = {0};
    while (!nodes.empty()) {
        const Node node = nodes.back();
        nodes.pop_back();
        Cursor cursor(trie, kWhat, node.offset);
        const uint64_t terminalSize = cursor.NextUnsignedLeb();
        const uint64_t childrenAt = cursor.Position() + terminalSize;
        if (terminalSize > trie.Size() || childrenAt >= trie.Size())
            cursor.Fail("a node does not end");
        if (terminalSize != 0) {
            Cursor terminal(trie.Slice(0, childrenAt, kWhat), kWhat, cursor.Position());
            AddExport(node.name, terminal, image);
        }
        Cursor children(trie, kWhat, childrenAt);
        const auto count = children.Next<uint8_t>();
        for (unsigned i = 0; i < count; ++i) {
            const std::string edge(children.NextCString());
            const uint64_t offset = children.NextUnsignedLeb();
            // A loop in the trie would never end.
            if (!known.insert(offset).second)
                children.Fail("two edges lead to one node");
            if (node.name.size() + edge.size() > kLongestName)
                children.Fail("a name is too long");
            nodes.push_back({offset, node.name + edge});
        }
    }
}

} // namespace macho
