// The command qzlhost: looks at a plugin library and runs programs that use it.
#include <CLI/CLI.hpp>

#include <cstdio>
#include <iostream>

#include "examples/demo.h"
#include "host/describe.h"
#include "host/host.h"

namespace {

constexpr int kFailure = 1;
constexpr int kUnusable = 2;

int ListClasses(const std::string &library, bool asJson)
{
    qzlhost::Host host;
    host.Load(library);
    const std::vector<qzlhost::ClassRecord> &classes = host.RegisteredClasses();
    std::cout << (asJson ? qzlhost::DescribeAsJson(classes) : qzlhost::DescribeAsTable(classes));
    return 0;
}

/// What the host's accounts say at the end; true when nothing is wrong.
bool ReportAccounts(const qzlhost::Host &host)
{
    for (const std::string &leak : host.Leaks())
        std::cout << "left over: " << leak << "\n";
    for (const std::string &mistake : host.Mistakes())
        std::cout << "misuse: " << mistake << "\n";
    const bool clean = host.Leaks().empty() && host.Mistakes().empty();
    if (clean)
        std::cout << "Every reference was given back." << std::endl;
    return clean;
}

int Demonstrate(const std::string &library)
{
    qzlhost::Host host;
    bool delivered = false;
    {
        const qzlhost::AutoreleasePool pool;
        host.Load(library);
        delivered = RunDemo(host, std::cout);
    }
    const bool clean = ReportAccounts(host);
    return delivered && clean ? 0 : kFailure;
}

/// Runs what the command line asks for. Answers the exit status.
int RunCommand(int argc, char **argv)
{
    CLI::App app("A stand-in host for plugin libraries.", "qzlhost");
    app.require_subcommand(1);
    std::string library;
    bool asJson = false;

    CLI::App *const classes =
        app.add_subcommand("classes", "Print the classes, members and constants of a library");
    classes->add_option("library", library, "The plugin library")->required();
    classes->add_flag("--json", asJson, "Print JSON");

    CLI::App *const demo = app.add_subcommand("demo", "Run a program that observes and posts notifications");
    demo->add_option("library", library, "The plugin library")->required();

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        return app.exit(error) == 0 ? 0 : kUnusable;
    }
    return *classes ? ListClasses(library, asJson) : Demonstrate(library);
}

} // namespace

int main(int argc, char **argv)
{
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
