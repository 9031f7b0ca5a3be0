// Posts to 1, 10 and 100 observers in one process, with libsigc++ and with Poco's NotificationCenter.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "bench/peers/medians.h"
#ifdef PEER_SIGC
#include <sigc++/sigc++.h>
#else
#include <Poco/NObserver.h>
#include <Poco/Notification.h>
#include <Poco/NotificationCenter.h>
#endif

namespace {

int64_t gEvents = 0;

#ifdef PEER_SIGC
constexpr char kPeer[] = "sigc";

class Observer : public sigc::trackable {
public:
    void Got(const std::string &) { ++gEvents; }
};

class Center {
public:
    void Add(Observer &observer) { signal_.connect(sigc::mem_fun(observer, &Observer::Got)); }
    void Post(const std::string &name) { signal_.emit(name); }

private:
    sigc::signal<void, const std::string &> signal_;
};
#else
constexpr char kPeer[] = "poco";

class Named : public Poco::Notification {
public:
    explicit Named(const std::string &name) : name_(name) {}
    std::string name() const override { return name_; }

private:
    std::string name_;
};

class Observer {
public:
    void Got(const Poco::AutoPtr<Named> &) { ++gEvents; }
};

class Center {
public:
    void Add(Observer &observer)
    {
        center_.addObserver(Poco::NObserver<Observer, Named>(observer, &Observer::Got));
    }
    void Post(const std::string &name) { center_.postNotification(new Named(name)); }

private:
    Poco::NotificationCenter center_;
};
#endif

void MeasurePosts(size_t count)
{
    std::vector<Observer> observers(count);
    Center center;
    for (Observer &observer : observers)
        center.Add(observer);
    const std::string name = "BenchNotification";
    int64_t posts = 0;
    gEvents = 0;
    Measure((std::string(kPeer) + "/delivery/" + std::to_string(count)).c_str(), [&] {
        center.Post(name);
        ++posts;
    });
    if (gEvents != posts * static_cast<int64_t>(count))
        std::abort();
}

} // namespace

int main()
{
    KeepMemory();
    for (const size_t count : {size_t{1}, size_t{10}, size_t{100}})
        MeasurePosts(count);
}
