// Recognises messages with a variable number of arguments by their selectors.
#include "platform/macho/variadic_messages.h"

#include <algorithm>

namespace macho {

namespace {

/// The selectors of all such methods of Foundation and AppKit. Types of methods do not tell them.
constexpr std::string_view kSelectors[] = {
    "alertWithMessageText:defaultButton:alternateButton:otherButton:informativeTextWithFormat:",
    "appendFormat:",
    "arrayWithObjects:",
    "decodeValuesOfObjCTypes:",
    "dictionaryWithObjectsAndKeys:",
    "encodeValuesOfObjCTypes:",
    "error:",
    "expressionWithFormat:",
    "handleFailureInFunction:file:lineNumber:description:",
    "handleFailureInMethod:object:file:lineNumber:description:",
    "initWithColorsAndLocations:",
    "initWithFormat:",
    "initWithFormat:locale:",
    "initWithObjects:",
    "initWithObjectsAndKeys:",
    "localizedStringWithFormat:",
    "orderedSetWithObjects:",
    "predicateWithFormat:",
    "raise:format:",
    "setWithObjects:",
    "stringByAppendingFormat:",
    "stringWithFormat:",
};

} // namespace

void RequireNoVariadicMessages(const Image &image)
{
    // On arm64 macOS's callers put variable arguments on the stack, and this platform's methods read
    // registers first.
    if (image.processor != Processor::Arm64)
        return;
    const Section *const references = image.FindDataSection("__objc_selrefs");
    if (references == nullptr)
        return;
    for (const Rebase &rebase : image.rebases) {
        if (rebase.address - references->address >= references->size)
            continue;
        const Segment &segment = image.SegmentAt(rebase.target, 1, "a selector");
        const std::string_view selector =
            segment.content.CString(rebase.target - segment.address, "a selector");
        if (std::find(std::begin(kSelectors), std::end(kSelectors), selector) != std::end(kSelectors))
            throw LoadError("image: sends " + std::string(selector) +
                            ", which has a variable number of arguments; code for arm64 cannot do that here");
    }
}

} // namespace macho
