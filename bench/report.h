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

/// The rows that miss their targets, or a line that says that there are none.
void PrintMisses(std::ostream &stream, const std::vector<Row> &rows);

/// Throws std::runtime_error.
void WriteJson(const std::string &path, const std::vector<Row> &rows);
