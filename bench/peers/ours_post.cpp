// Posts through the library to a program's handler that reads a dictionary of four entries whole.
#include "bench/peers/medians.h"
#include "bench/peers/ours.h"

using qzlhost::Host;
using qzlhost::Instance;
using qzlhost::String;
using qzlhost::Value;

namespace {

constexpr char kPost[] = "postNotificationName(name as string, theObject as variant, userInfo as dictionary)";

using PostFunction = void (*)(Instance *center, String *name, Instance *object, Instance *userInfo);

} // namespace

int main()
{
    KeepMemory();
    const qzlhost::AutoreleasePool inputs;
    Host &host = LoadedHost();
    const auto post = reinterpret_cast<PostFunction>(MethodOf(RecordOf("NSNotificationCenterQZL"), kPost));
    const Property<String> nameOf("Name");
    const Property<Instance> objectOf("objectVariant");
    const Property<Instance> userInfoOf("userInfo");
    constexpr int64_t kSerial = 123'456'789'012;

    int64_t events = 0;
    DefineObserver("PeersReader", [&](const Value &notification) {
        const Value name = nameOf.Of(notification);
        const Value object = objectOf.Of(notification);
        const Value info = userInfoOf.Of(notification);
        if (host.DictionaryGet(info, "serial").AsInteger() == kSerial &&
            host.DictionaryGet(info, "charging").AsBoolean() &&
            host.DictionaryGet(info, "level").AsDouble() != 0 &&
            host.DictionaryGet(info, "language").StringPointer() != nullptr)
            ++events;
    });
    const Value center = host.CallShared("NSNotificationCenterQZL", "defaultCenter");
    const Value observer = host.New("PeersReader");
    const Value name = "BatteryLow";
    const Value object = Value("main battery").Boxed();
    host.Call(center, "addObserver", {observer, name});

    int64_t posts = 0;
    Measure("ours/post/read_whole", [&] {
        // A program's dictionary is new for each post, as the peer's is.
        const qzlhost::AutoreleasePool pool;
        const Value info = host.NewDictionary();
        host.DictionarySet(info, "language", "en");
        host.DictionarySet(info, "serial", kSerial);
        host.DictionarySet(info, "level", 0.07);
        host.DictionarySet(info, "charging", true);
        post(center.ObjectPointer(), name.StringPointer(), object.ObjectPointer(), info.ObjectPointer());
        ++posts;
    });
    std::_Exit(events == posts ? 0 : 1);
}
