// The figures of a run: one table to read, one JSON file to keep.
#pragma once

#include "bench/paired.h"

#include <optional>
#include <string>
#include <vector>

namespace bench {

struct Row {
    std::string name;            // what was measured
    std::string unit;            // of `value`: "x" for a ratio to the bare calls
    Middle value;                // the figure
    std::optional<double> limit; // what the median should not exceed
    std::optional<Middle> ours;  // microseconds a call, for ratios
    std::optional<Middle> bare;
    size_t rounds = 0;
    std::string series{};  // which curve of the growth plot it is a point of; empty for none
    size_t operations = 0; // where on that curve
};

// A row for a ratio to the bare calls.
Row ratioRow(const std::string& name, const Pair& pair, double limit);

// A row for a figure of its own.
Row figureRow(const std::string& name, const std::string& unit, const Middle& value, size_t rounds,
              std::optional<double> limit = std::nullopt);

bool isMissed(const Row& row);

void printTable(const std::vector<Row>& rows);

// False when the file cannot be written.
bool writeJson(const std::wstring& path, const std::vector<Row>& rows);

// The curves as a plotting program reads them, a block for each: its name behind a #, then for each
// point the operations, the figure, and the microseconds of ours and of the bare calls (0 where
// there are none). False when the file cannot be written.
bool writeCurves(const std::wstring& path, const std::vector<Row>& rows);

} // namespace bench
