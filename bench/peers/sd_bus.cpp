// Signals of sd-bus from one process to another, over the session bus that the environment names.
#include <systemd/sd-bus.h>

#include "bench/peers/processes.h"

namespace {

constexpr char kPath[] = "/peers/Center";
constexpr char kInterface[] = "peers.Center";

void Check(int result, const char *what)
{
    if (result >= 0)
        return;
    std::fprintf(stderr, "sd-bus: %s: %d\n", what, result);
    std::_Exit(1);
}

class SdBus {
public:
    using Receiver = void (*)(const std::string &name, const Info &info);

    explicit SdBus(Receiver receive) : receive_(receive) { Check(sd_bus_open_user(&bus_), "open"); }
    ~SdBus() { sd_bus_flush_close_unref(bus_); }
    SdBus(const SdBus &) = delete;
    SdBus &operator=(const SdBus &) = delete;

    void Observe(const char *name)
    {
        Check(sd_bus_match_signal(bus_, nullptr, nullptr, kPath, kInterface, name, Got, this), "match");
    }

    void Post(const char *name, const Info &info)
    {
        Check(sd_bus_emit_signal(bus_, kPath, kInterface, name, "a{sv}", 4, "language", "s",
                                 info.language.c_str(), "serial", "x", info.serial, "level", "d", info.level,
                                 "charging", "b", static_cast<int>(info.charging)),
              "emit");
        // What the socket does not take at once waits in a queue, which must not fill up.
        Check(sd_bus_flush(bus_), "flush");
    }

    void RunUntil(const std::function<bool()> &done)
    {
        while (!done()) {
            const int processed = sd_bus_process(bus_, nullptr);
            Check(processed, "process");
            if (processed == 0)
                Check(sd_bus_wait(bus_, UINT64_MAX), "wait");
        }
    }

private:
    static Info Read(sd_bus_message *message)
    {
        Info info{0, "", 0, false};
        Check(sd_bus_message_enter_container(message, 'a', "{sv}"), "array");
        while (sd_bus_message_enter_container(message, 'e', "sv") > 0) {
            const char *key = nullptr;
            Check(sd_bus_message_read(message, "s", &key), "key");
            const std::string name = key;
            if (name == "language") {
                const char *text = nullptr;
                Check(sd_bus_message_read(message, "v", "s", &text), "text");
                info.language = text;
            } else if (name == "serial") {
                Check(sd_bus_message_read(message, "v", "x", &info.serial), "integer");
            } else if (name == "level") {
                Check(sd_bus_message_read(message, "v", "d", &info.level), "number");
            } else {
                int boolean = 0;
                Check(sd_bus_message_read(message, "v", "b", &boolean), "boolean");
                info.charging = boolean != 0;
            }
            Check(sd_bus_message_exit_container(message), "entry");
        }
        return info;
    }

    static int Got(sd_bus_message *message, void *self, sd_bus_error *)
    {
        static_cast<SdBus *>(self)->receive_(sd_bus_message_get_member(message), Read(message));
        return 0;
    }

    sd_bus *bus_ = nullptr;
    Receiver receive_;
};

} // namespace

int main()
{
    return Processes<SdBus>::Run("sd-bus");
}
