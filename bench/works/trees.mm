// Arrays and dictionaries within one another, each way.
#include "bench/floors.h"
#include "bench/inputs.h"
#include "bench/work.h"
#include "bridge/to_cocoa/variant_to_object.h"
#include "bridge/to_host/object_to_variant.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

/// A Dictionary of four scalars, an array of three scalars and, above the leaves, two smaller trees.
Value HostTree(int depth)
{
    Host &host = Host::Current();
    Value tree = host.NewDictionary();
    host.DictionarySet(tree, "name", "node " + std::to_string(depth));
    host.DictionarySet(tree, "serial", int64_t{123'456'789'012} + depth);
    host.DictionarySet(tree, "level", 0.5 + depth);
    host.DictionarySet(tree, "leaf", depth == 0);
    host.DictionarySet(tree, "list", host.NewArray(qzlhost::code::Object, {"one", 2.5, true}));
    if (depth > 0) {
        host.DictionarySet(tree, "left", HostTree(depth - 1));
        host.DictionarySet(tree, "right", HostTree(depth - 1));
    }
    return tree;
}

Sides ToCocoa(int depth)
{
    Value tree = HostTree(depth);
    return MakeSides([tree] { return GetVariantAsNSObject(ObjectOf(tree)); },
                     [tree] { return FloorAnyToCocoa(ObjectOf(tree)); });
}

Sides ToHost(int depth)
{
    const Kept tree(FloorAnyToCocoa(ObjectOf(HostTree(depth))));
    return MakeSides([tree] { return NewVariantFromNSObject(tree.Get()); },
                     [tree] { return FloorAnyToHost(tree.Get()); });
}

} // namespace

void AddTreeWorks(std::vector<Work> &works)
{
    for (const int depth : {0, 2, 6}) {
        const std::string name = std::to_string((2 << depth) - 1) + "_nodes";
        works.push_back({"trees/to_cocoa/" + name, [depth] { return ToCocoa(depth); }});
        works.push_back({"trees/to_host/" + name, [depth] { return ToHost(depth); }});
    }
}
