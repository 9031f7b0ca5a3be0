// The lines that a peer program exchanges with its test: it reads commands, and writes answers and events.
#pragma once

#include <nlohmann/json.hpp>

#include <deque>
#include <iostream>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "host/host.h"

/// The standard output: a line for each answer and each event.
class Report {
public:
    void Event(const nlohmann::json &event)
    {
        ++events_;
        Write({{"event", event}});
    }
    /// The result of a command.
    void Answer(const nlohmann::json &answer) { Write({{"answer", answer}, {"events", events_}}); }
    /// The exception that the library raised instead.
    void Refusal(const qzlhost::ProgramException &exception)
    {
        Write({{"refusal", {{"class", exception.ClassName()}, {"message", exception.Message()}}},
               {"events", events_}});
    }

private:
    static void Write(const nlohmann::json &line) { std::cout << line.dump() << '\n' << std::flush; }

    /// The number of events so far. Each answer carries it, so that the reader knows which events came
    /// before.
    int64_t events_ = 0;
};

/// The lines of the standard input, read on a thread of its own while the program runs its run loop.
class Commands {
public:
    Commands() : reader_([this] { Read(); }) {}
    /// Returns once the input has ended.
    ~Commands() { reader_.join(); }

    /// Whether a line has arrived, or the input has ended.
    bool HaveNext()
    {
        const std::lock_guard lock(mutex_);
        return !lines_.empty() || ended_;
    }

    /// The next command; none at the end of the input.
    std::optional<nlohmann::json> Next()
    {
        const std::lock_guard lock(mutex_);
        if (lines_.empty())
            return std::nullopt;
        const nlohmann::json command = nlohmann::json::parse(lines_.front());
        lines_.pop_front();
        return command;
    }

private:
    void Read()
    {
        std::string line;
        while (std::getline(std::cin, line)) {
            const std::lock_guard lock(mutex_);
            lines_.push_back(line);
        }
        const std::lock_guard lock(mutex_);
        ended_ = true;
    }

    std::mutex mutex_;
    std::deque<std::string> lines_;
    bool ended_ = false;
    std::thread reader_;
};
