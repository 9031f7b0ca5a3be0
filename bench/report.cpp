// What was measured, as a table and as JSON.
#include "bench/report.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <nlohmann/json.hpp>
#include <ostream>
#include <stdexcept>

namespace {

struct Unit {
    double factor;
    const char *name;
};

constexpr Unit kTimes[] = {{1e6, "ms"}, {1e3, "us"}, {1, "ns"}};
constexpr Unit kSizes[] = {{1 << 20, "MiB"}, {1 << 10, "KiB"}, {1, "B"}};

template <typename... Arguments>
std::string Formatted(const char *format, Arguments... arguments)
{
    char text[200];
    std::snprintf(text, sizeof text, format, arguments...);
    return text;
}

/// Three digits or more, and the unit.
std::string Shown(double value, Quantity quantity)
{
    const Unit *unit = quantity == Quantity::Bytes ? kSizes : kTimes;
    while (unit->factor > 1 && value < unit->factor)
        ++unit;
    const double number = value / unit->factor;
    return Formatted("%.*f %s", number < 10 ? 2 : number < 100 ? 1 : 0, number, unit->name);
}

std::string Shown(double target)
{
    return target > 0 ? Formatted("%.2f", target) : "";
}

const char *NameOf(Quantity quantity)
{
    return quantity == Quantity::Bytes ? "bytes" : "nanoseconds";
}

nlohmann::ordered_json AsJson(const Row &row)
{
    const Measurement &measured = row.measured;
    nlohmann::ordered_json json = {{"name", row.work.name},       {"unit", NameOf(row.work.quantity)},
                                   {"ours", measured.ours},       {"floor", measured.floor},
                                   {"against", row.work.against}, {"ratio", measured.ratio},
                                   {"low", measured.low},         {"high", measured.high},
                                   {"rounds", measured.rounds}};
    if (row.work.target > 0)
        json["target"] = row.work.target;
    return json;
}

} // namespace

void PrintTableHead(std::ostream &stream)
{
    stream << "| Work | Ours | Floor | Ratio | 10 % to 90 % | Target |\n"
              "| :--- | ---: | ---: | ---: | ---: | ---: |\n";
}

void PrintTableRow(std::ostream &stream, const Row &row)
{
    const Measurement &measured = row.measured;
    const Quantity quantity = row.work.quantity;
    const std::string name =
        row.work.name + (row.work.against == "floor" ? "" : " (" + row.work.against + ")");
    stream << Formatted("| %-40s | %8s | %8s | %5.2f | %5.2f to %5.2f | %4s |", name.c_str(),
                        Shown(measured.ours, quantity).c_str(), Shown(measured.floor, quantity).c_str(),
                        measured.ratio, measured.low, measured.high, Shown(row.work.target).c_str())
           << (row.MissesTarget() ? " missed\n" : "\n") << std::flush;
}

void PrintMisses(std::ostream &stream, const std::vector<Row> &rows)
{
    const auto misses =
        std::count_if(rows.begin(), rows.end(), [](const Row &row) { return row.MissesTarget(); });
    const auto targets =
        std::count_if(rows.begin(), rows.end(), [](const Row &row) { return row.work.target > 0; });
    stream << misses << " of " << targets << " targets missed\n";
    for (const Row &row : rows)
        if (row.MissesTarget())
            stream << Formatted("%s: %.3f, target %.2f\n", row.work.name.c_str(), row.measured.ratio,
                                row.work.target);
}

void WriteJson(const std::string &path, const std::vector<Row> &rows)
{
    nlohmann::ordered_json json = {{"works", nlohmann::json::array()}};
    for (const Row &row : rows)
        json["works"].push_back(AsJson(row));
    std::ofstream file(path);
    file << json.dump(1) << '\n';
    file.close();
    if (!file)
        throw std::runtime_error("cannot write " + path);
}
