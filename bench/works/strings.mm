// Strings, each way.
#include "frame/host_strings.h"

#include "bench/floors.h"
#include "bench/inputs.h"
#include "bench/texts.h"
#include "bench/work.h"
#include "bridge/to_cocoa/string_to_cocoa.h"

using qzlhost::Value;

namespace {

constexpr double kTarget = 1.15;

Sides ToCocoa(const std::string &utf8)
{
    const Value value(utf8);
    return MakeSides([value]() -> id { return NewNSString(StringOf(value)); },
                     [value]() -> id { return FloorStringToCocoa(StringOf(value)); });
}

Sides ToHost(const std::string &utf8)
{
    const Kept text(CocoaString(utf8));
    return MakeSides([text] { return CFString2RBString((CFStringRef)text.Get()); },
                     [text] { return FloorStringToHost((NSString *)text.Get()); });
}

} // namespace

void AddStringWorks(std::vector<Work> &works)
{
    for (const bool ascii : {true, false}) {
        for (const int64_t units : {1, 20, 99, 100, 10'000}) {
            const std::string text = ascii ? AsciiText(units) : OtherText(units);
            const std::string name = (ascii ? "ascii/" : "other/") + std::to_string(units);
            works.push_back({"strings/to_cocoa/" + name, [text] { return ToCocoa(text); }, kTarget});
            works.push_back({"strings/to_host/" + name, [text] { return ToHost(text); }, kTarget});
        }
    }
}
