// qzl_bench: measures the library against code written by hand that does the same work.
#include <benchmark/benchmark.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <regex>
#include <stdexcept>

#include "bench/child_runs.h"
#include "bench/host_functions.h"
#include "bench/measure.h"
#include "bench/report.h"
#include "bench/timing.h"
#include "bench/verify.h"
#include "bench/work.h"
#include "frame/plugin.h"
#include "host/host.h"

namespace {

struct Options {
    std::string filter = ".*";
    std::string json;
    bool check = false;
    bool verify = false;
    std::string run;
    std::string peak;
    std::string load;
    int64_t times = 1;
    bool floor = false;
};

Options ReadOptions(int argc, char **argv)
{
    Options options;
    CLI::App app("Measures the library against code written by hand that does the same work.");
    app.add_option("--filter", options.filter, "measure the works whose names this regular expression finds");
    app.add_option("--json", options.json, "write what was measured to this file");
    app.add_flag("--check", options.check, "measure the works with a target; fail where one is missed");
    app.add_flag("--verify", options.verify, "measure nothing; fail where a floor does not do the same");
    app.add_option("--run", options.run, "measure nothing; do the work of this name");
    app.add_option("--times", options.times, "how often");
    app.add_option("--peak", options.peak, "print what this work allocates at its peak");
    app.add_option("--load", options.load, "print how long it takes to load this library");
    app.add_flag("--floor", options.floor, "the floor's way, with --run and --peak");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        std::exit(app.exit(error));
    }
    return options;
}

/// Gives the library its host, as loading it would.
void StartLibrary(const qzlhost::Host &host)
{
    FindHostFunctions(host.Resolver());
    REALPluginMain(host.Resolver());
}

Measurement Measured(const Work &work)
{
    if (work.quantity == Quantity::FreshProcess)
        return MeasureLoads();
    if (work.quantity == Quantity::Bytes)
        return MeasurePeaks(work);
    const qzlhost::AutoreleasePool pool;
    return MeasureTime(work.make());
}

/// What misses its target is measured twice more, and the measurement with the middle ratio counts: other
/// programs on the machine shift one now and then.
Row MeasuredRow(const Work &work)
{
    std::vector<Row> rows = {{work, Measured(work)}};
    if (!rows[0].MissesTarget())
        return rows[0];
    while (rows.size() < 3)
        rows.push_back({work, Measured(work)});
    std::sort(rows.begin(), rows.end(),
              [](const Row &one, const Row &other) { return one.measured.ratio < other.measured.ratio; });
    return rows[1];
}

void Register(const Work &work, std::vector<Row> &rows)
{
    const auto run = [&work, &rows](benchmark::State &state) {
        for ([[maybe_unused]] const auto iteration : state) {
            rows.push_back(MeasuredRow(work));
            state.SetIterationTime(rows.back().measured.ours * 1e-9);
        }
    };
    benchmark::RegisterBenchmark(work.name.c_str(), run)->Iterations(1)->UseManualTime();
}

/// Prints each row as soon as it is measured.
class TableReporter : public benchmark::BenchmarkReporter {
public:
    explicit TableReporter(const std::vector<Row> &rows) : rows_(rows) {}

    bool ReportContext(const Context &) override
    {
        PrintTableHead(std::cout);
        return true;
    }
    void ReportRuns(const std::vector<Run> &) override { PrintTableRow(std::cout, rows_.back()); }

private:
    const std::vector<Row> &rows_;
};

int Measure(const Options &options, const std::vector<Work> &works)
{
    std::vector<Row> rows;
    const std::regex filter(options.filter);
    for (const Work &work : works)
        if (std::regex_search(work.name, filter) && (!options.check || work.target > 0))
            Register(work, rows);
    TableReporter reporter(rows);
    benchmark::RunSpecifiedBenchmarks(&reporter, nullptr, ".");
    if (rows.empty())
        throw std::runtime_error("no work has such a name");
    if (!options.json.empty())
        WriteJson(options.json, rows);
    PrintMisses(std::cout, rows);
    const bool missed =
        std::any_of(rows.begin(), rows.end(), [](const Row &row) { return row.MissesTarget(); });
    return options.check && missed ? 1 : 0;
}

int Verify(const Options &options, const std::vector<Work> &works)
{
    int failures = 0;
    int verified = 0;
    const std::regex filter(options.filter);
    for (const Work &work : works) {
        if (!work.make || work.large || work.against != "floor" || !std::regex_search(work.name, filter))
            continue;
        const qzlhost::AutoreleasePool pool;
        ++verified;
        const std::string differences = DifferencesOf(work.make());
        if (differences.empty())
            continue;
        ++failures;
        std::cout << work.name << '\n' << differences;
    }
    std::cout << verified - failures << " of " << verified << " floors do what the library does\n";
    return failures == 0 ? 0 : 1;
}

const Work &WorkNamed(const std::string &name, const std::vector<Work> &works)
{
    const auto work = std::find_if(works.begin(), works.end(),
                                   [&](const Work &each) { return each.make && each.name == name; });
    if (work == works.end())
        throw std::runtime_error("no work has the name " + name);
    return *work;
}

int Run(const Options &options, const std::vector<Work> &works)
{
    const qzlhost::AutoreleasePool inputs;
    const Sides sides = WorkNamed(options.peak.empty() ? options.run : options.peak, works).make();
    Side &side = options.floor ? *sides.floor : *sides.ours;
    if (!options.peak.empty()) {
        PrintPeak(side);
        return 0;
    }
    const qzlhost::AutoreleasePool pool;
    side.Prepare(options.times);
    side.Run(options.times);
    side.GiveBack();
    return 0;
}

int Main(const Options &options)
{
    KeepMemory();
    if (!options.load.empty()) {
        PrintLoadTime(options.load);
        return 0;
    }
    qzlhost::HostOptions hostOptions;
    hostOptions.accounts = options.verify;
    // Both live as long as the process: an observer that is freed visits the centre between processes.
    static auto *const host = new qzlhost::Host(hostOptions);
    StartLibrary(*host);
    static const std::vector<Work> works = AllWorks();
    if (options.verify)
        return Verify(options, works);
    if (!options.run.empty() || !options.peak.empty())
        return Run(options, works);
    return Measure(options, works);
}

} // namespace

int main(int argc, char **argv)
{
    const Options options = ReadOptions(argc, argv);
    int status = 1;
    try {
        status = Main(options);
    } catch (const std::exception &error) {
        std::cerr << "qzl_bench: " << error.what() << '\n';
    }
    std::cout << std::flush;
    std::_Exit(status);
}
