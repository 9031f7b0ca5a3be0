// The library's notifications from one process to another, over the daemon that the environment names.
#include "bench/peers/ours.h"
#include "bench/peers/processes.h"

using qzlhost::Host;
using qzlhost::Instance;
using qzlhost::String;
using qzlhost::Value;

namespace {

constexpr char kCenterClass[] = "NSDistributedNotificationCenterQZL";
constexpr char kPost[] = "postNotificationName(name as string, theObject as string, userInfo as dictionary, "
                         "deliverImmediately as boolean)";

using PostFunction = void (*)(Instance *center, String *name, String *object, Instance *userInfo,
                              bool deliverImmediately);

class OurBus {
public:
    using Receiver = void (*)(const std::string &name, const Info &info);

    explicit OurBus(Receiver receive)
    {
        Host &host = LoadedHost();
        DefineObserver("PeersObserver", [this, receive](const Value &notification) {
            Host &current = Host::Current();
            const Value info = userInfoOf_.Of(notification);
            receive(nameOf_.Of(notification).AsString(),
                    Info{current.DictionaryGet(info, "serial").AsInteger(),
                         current.DictionaryGet(info, "language").AsString(),
                         current.DictionaryGet(info, "level").AsDouble(),
                         current.DictionaryGet(info, "charging").AsBoolean()});
        });
        observer_ = host.New("PeersObserver");
        center_ = host.CallShared(kCenterClass, "defaultCenter");
    }

    void Observe(const char *name) { Host::Current().Call(center_, "addObserver", {observer_, name}); }

    void Post(const char *name, const Info &info)
    {
        Host &host = Host::Current();
        const qzlhost::AutoreleasePool pool;
        const Value userInfo = host.NewDictionary();
        host.DictionarySet(userInfo, "serial", info.serial);
        host.DictionarySet(userInfo, "language", info.language);
        host.DictionarySet(userInfo, "level", info.level);
        host.DictionarySet(userInfo, "charging", info.charging);
        post_(center_.ObjectPointer(), Value(name).StringPointer(), nullptr, userInfo.ObjectPointer(), true);
    }

    void RunUntil(const std::function<bool()> &done)
    {
        constexpr double kSeconds = 60;
        if (!Host::Current().RunUntil(done, kSeconds))
            std::abort();
    }

private:
    const PostFunction post_ = reinterpret_cast<PostFunction>(MethodOf(RecordOf(kCenterClass), kPost));
    const Property<String> nameOf_{"Name"};
    const Property<Instance> userInfoOf_{"userInfo"};
    Value observer_;
    Value center_;
};

} // namespace

int main()
{
    std::_Exit(Processes<OurBus>::Run("ours"));
}
