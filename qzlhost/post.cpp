// The program behind "qzlhost post": posts one notification.
#include "qzlhost/post.h"

using qzlhost::Host;
using qzlhost::Value;

void RunPost(Host &host, const PostOptions &options)
{
    Value info;
    if (!options.info.empty())
        info = host.NewDictionary();
    for (const auto &[key, value] : options.info)
        host.DictionarySet(info, key, value);

    const Value center = NewCenter(host, options.center);
    const Value object = options.object ? Value(*options.object) : Value();
    host.Call(center, "postNotificationName", {options.name, object, info});
}
