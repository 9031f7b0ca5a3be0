// What was measured, as a table and as JSON.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "bench/measure.h"
#include "bench/work.h"

struct Row {
    Work work;
    Measurement measured;

    bool MissesTarget() const { return work.target > 0 && measured.ratio > work.target; }
};

void PrintTableHead(std::ostream &stream);
void PrintTableRow(std::ostream &stream, const Row &row);

/// Prints how many targets are missed, and the rows that miss them.
void PrintMisses(std::ostream &stream, const std::vector<Row> &rows);

/// Throws std::runtime_error if the file cannot be written.
void WriteJson(const std::string &path, const std::vector<Row> &rows);
