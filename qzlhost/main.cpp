// The command qzlhost: looks at a plugin library and runs programs that use it.
#include <CLI/CLI.hpp>

#include <csignal>
#include <cstdio>
#include <iostream>

#include "family/family.h"
#include "host/calls/cocoa.h"
#include "host/host.h"
#include "qzlhost/classes.h"
#include "qzlhost/demo.h"
#include "qzlhost/post.h"
#include "qzlhost/watch.h"

namespace {

constexpr int kSuccess = 0;
constexpr int kFailure = 1;
constexpr int kUnusable = 2;

volatile std::sig_atomic_t gStopped = 0;

void Stop(int)
{
    gStopped = 1;
}

int ListClasses(const std::string &library, bool asJson)
{
    qzlhost::Host host;
    host.Load(library);
    const std::vector<qzlhost::ClassRecord> &classes = host.RegisteredClasses();
    std::cout << (asJson ? qzlhost::DescribeAsJson(classes) : qzlhost::DescribeAsTable(classes));
    return kSuccess;
}

/// Writes what the host's accounts say at the end; true when nothing is wrong.
bool AccountsAreEven(const qzlhost::Host &host)
{
    const std::vector<std::string> leaks = host.Leaks();
    const std::vector<std::string> mistakes = host.Mistakes();
    for (const std::string &leak : leaks)
        std::cerr << "left over: " << leak << "\n";
    for (const std::string &mistake : mistakes)
        std::cerr << "misuse: " << mistake << "\n";
    return leaks.empty() && mistakes.empty();
}

/// Loads the library into a host, runs a program there and returns the exit status, which is failure if the
/// program leaves the accounts uneven.
int RunProgram(const std::string &library, const std::function<int(qzlhost::Host &)> &program)
{
    qzlhost::Host host;
    int status = kSuccess;
    {
        const qzlhost::AutoreleasePool pool;
        // Without them Cocoa exceptions would not reach the program.
        Family(host).OfferExceptions();
        host.Load(library);
        status = program(host);
    }
    return AccountsAreEven(host) ? status : kFailure;
}

int Demonstrate(const std::string &library)
{
    const int status = RunProgram(
        library, [](qzlhost::Host &host) { return RunDemo(host, std::cout) ? kSuccess : kFailure; });
    if (status == kSuccess)
        std::cout << "Every reference was given back.\n";
    return status;
}

int Watch(const std::string &library, const WatchOptions &options)
{
    std::signal(SIGINT, Stop);
    std::signal(SIGTERM, Stop);
    return RunProgram(library, [&](qzlhost::Host &host) {
        const auto ready = [] { std::cerr << "Watching.\n"; };
        const bool ended = RunWatch(host, options, std::cout, ready, [] { return gStopped != 0; });
        return ended || !options.count ? kSuccess : kFailure;
    });
}

int Post(const std::string &library, const PostOptions &options)
{
    return RunProgram(library, [&](qzlhost::Host &host) {
        RunPost(host, options);
        return kSuccess;
    });
}

/// Adds a subcommand that takes a library first.
CLI::App *AddCommand(CLI::App &app, const char *name, const char *description, std::string &library)
{
    CLI::App *const command = app.add_subcommand(name, description);
    command->add_option("library", library, "The plugin library")->required();
    return command;
}

/// At most one of the flags is given; without one, the default counts.
void AddCenterFlags(CLI::App &command, CenterKind &center, CenterKind defaultCenter)
{
    constexpr struct {
        const char *name;
        CenterKind kind;
        const char *description;
    } kFlags[] = {
        {"--distributed", CenterKind::Distributed, "The centre between processes"},
        {"--local", CenterKind::Local, "The centre of this process"},
        {"--workspace", CenterKind::Workspace, "The workspace's centre"},
    };
    center = defaultCenter;
    CLI::Option_group *const flags = command.add_option_group("centre");
    flags->require_option(0, 1);
    for (const auto &flag : kFlags) {
        const std::string description =
            std::string(flag.description) + (flag.kind == defaultCenter ? " (default)" : "");
        flags->add_flag_callback(flag.name, [&center, kind = flag.kind] { center = kind; }, description);
    }
}

void AddWatchOptions(CLI::App &command, WatchOptions &options)
{
    command.add_option("--name", options.name, "Only notifications of this name");
    command.add_option("--object", options.object, "Only notifications of this object");
    AddCenterFlags(command, options.center, CenterKind::Distributed);
    command.add_flag("--json", options.asJson, "Print a JSON object for each notification");
    command.add_option("--count", options.count, "End after so many; fail if --timeout ends it before")
        ->check(CLI::PositiveNumber);
    command.add_option("--timeout", options.seconds, "End after so many seconds")->check(CLI::PositiveNumber);
}

/// KEY=VALUE, divided at the first equals sign.
std::pair<std::string, std::string> KeyAndValue(const std::string &text)
{
    const size_t equals = text.find('=');
    if (equals == std::string::npos)
        throw CLI::ValidationError("--info", "'" + text + "' is not KEY=VALUE");
    return {text.substr(0, equals), text.substr(equals + 1)};
}

void AddPostOptions(CLI::App &command, PostOptions &options)
{
    command.add_option("name", options.name, "The notification's name")->required();
    command.add_option("--object", options.object, "Its object, a string");
    command
        .add_option_function<std::vector<std::string>>(
            "--info",
            [&options](const std::vector<std::string> &entries) {
                for (const std::string &entry : entries)
                    options.info.push_back(KeyAndValue(entry));
            },
            "An entry of its user info, KEY=VALUE; may be given several times")
        ->expected(1)
        ->take_all();
    AddCenterFlags(command, options.center, CenterKind::Local);
}

/// Runs what the command line asks for and returns the exit status.
int RunCommand(int argc, char **argv)
{
    CLI::App app("A stand-in host for plugin libraries.", "qzlhost");
    app.require_subcommand(1);
    app.set_version_flag("--version", "qzlhost " QZL_VERSION);
    std::string library;

    bool asJson = false;
    CLI::App *const classes =
        AddCommand(app, "classes", "Print the classes, members and constants of a library", library);
    classes->add_flag("--json", asJson, "Print JSON");

    CLI::App *const demo =
        AddCommand(app, "demo", "Run a program that observes and posts notifications", library);

    WatchOptions watchOptions;
    CLI::App *const watch =
        AddCommand(app, "watch", "Print notifications as they arrive, until it is stopped", library);
    AddWatchOptions(*watch, watchOptions);

    PostOptions postOptions;
    CLI::App *const post = AddCommand(app, "post", "Post a notification", library);
    AddPostOptions(*post, postOptions);

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        return app.exit(error) == 0 ? kSuccess : kUnusable;
    }
    if (*classes)
        return ListClasses(library, asJson);
    if (*demo)
        return Demonstrate(library);
    return *watch ? Watch(library, watchOptions) : Post(library, postOptions);
}

} // namespace

int main(int argc, char **argv)
{
    qzlhost::HideArgumentsFromCocoa(argv[0]);
    try {
        return RunCommand(argc, argv);
    } catch (const qzlhost::LoadError &error) {
        std::fprintf(stderr, "qzlhost: %s\n", error.what());
        return kUnusable;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "qzlhost: %s\n", error.what());
        return kFailure;
    }
}
