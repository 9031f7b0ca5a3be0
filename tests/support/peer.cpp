// A host program in another process, driven by a test.
#include "tests/support/peer.h"

#include <unistd.h>

#include <csignal>

#include "tests/support/plugin_test.h"

using nlohmann::json;

namespace {

using namespace std::chrono_literals;

/// The longest wait: enough for a busy machine and the sanitizers.
constexpr auto kLimit = 120s;

void WriteAll(int descriptor, std::string_view text)
{
    while (!text.empty()) {
        const ssize_t written = write(descriptor, text.data(), text.size());
        if (written <= 0)
            throw PeerError("the peer does not read");
        text.remove_prefix(static_cast<size_t>(written));
    }
}

} // namespace

Peer::Peer(const Daemon &daemon, const std::string &name)
    : name_(name),
      process_({QZL_PEER_PROGRAM, LibraryPath()}, daemon.Environment(), ChildProcess::Pipes::InputAndOutput)
{
    // Writing to a peer that has ended fails instead.
    std::signal(SIGPIPE, SIG_IGN);
    reader_ = std::thread([this] { Read(); });
    try {
        Answer();
    } catch (...) {
        Kill();
        reader_.join();
        throw;
    }
}

Peer::~Peer()
{
    Kill();
    reader_.join();
}

json Peer::Do(const json &command)
{
    Begin(command);
    return Finish();
}

void Peer::Begin(const json &command)
{
    WriteAll(process_.Input(), command.dump() + "\n");
}

json Peer::Finish()
{
    const json answer = Answer();
    if (!answer.contains("answer"))
        throw PeerError(name_ + " is refused: " + answer.dump());
    return answer.at("answer");
}

json Peer::RefusalOf(const json &command)
{
    Begin(command);
    return Answer().value("refusal", json());
}

std::vector<json> Peer::Events(size_t count)
{
    std::unique_lock lock(mutex_);
    WaitFor("events", lock, [&] { return events_.size() >= count; });
    const auto end = events_.begin() + static_cast<std::ptrdiff_t>(count);
    const std::vector<json> taken(events_.begin(), end);
    events_.erase(events_.begin(), end);
    return taken;
}

std::vector<json> Peer::RemainingEvents()
{
    const std::lock_guard lock(mutex_);
    const std::vector<json> taken(events_.begin(), events_.end());
    events_.clear();
    return taken;
}

void Peer::Kill()
{
    process_.Signal(SIGKILL);
    process_.WaitForEnd(kLimit);
}

void Peer::Stop(bool stops)
{
    process_.Signal(stops ? SIGSTOP : SIGCONT);
}

json Peer::Quit()
{
    const json accounts = Do({{"do", "quit"}});
    process_.CloseInput();
    if (!process_.WaitForEnd(kLimit))
        throw PeerError(name_ + " does not end");
    return accounts;
}

json Peer::Answer()
{
    std::unique_lock lock(mutex_);
    WaitFor("an answer", lock, [&] { return !answers_.empty(); });
    const json answer = answers_.front();
    answers_.pop_front();
    eventsAtLastAnswer_ = answer.at("events");
    return answer;
}

void Peer::Read()
{
    std::string text;
    char buffer[65536];
    for (;;) {
        const ssize_t length = read(process_.Output(), buffer, sizeof buffer);
        const std::lock_guard lock(mutex_);
        if (length <= 0) {
            ended_ = true;
            changed_.notify_all();
            return;
        }
        text.append(buffer, static_cast<size_t>(length));
        size_t begin = 0;
        for (size_t end; (end = text.find('\n', begin)) != std::string::npos; begin = end + 1) {
            const json line = json::parse(text.substr(begin, end - begin));
            if (line.contains("event"))
                events_.push_back(line.at("event"));
            else
                answers_.push_back(line);
        }
        text.erase(0, begin);
        changed_.notify_all();
    }
}

template <typename Ready>
void Peer::WaitFor(const char *what, std::unique_lock<std::mutex> &lock, Ready ready)
{
    while (!ready() && !ended_) {
        if (changed_.wait_for(lock, kLimit) == std::cv_status::timeout)
            break;
    }
    if (!ready())
        throw PeerError(name_ + (ended_ ? " ended instead of giving " : " gives no ") + what +
                        "; there are " + std::to_string(events_.size()) + " events");
}
