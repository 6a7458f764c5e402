// The figures of a run: a table, and a JSON file.
#pragma once

#include "bench/paired.h"

#include <optional>
#include <string>
#include <vector>

namespace bench {

struct Row {
    std::string name;            // what was measured
    std::string unit;            // of `value`; "x" for a ratio
    Middle value;                // the figure
    std::optional<double> limit; // upper limit of the median
    std::optional<Middle> ours;  // microseconds per call, for ratios
    std::optional<Middle> bare;
    size_t rounds = 0;
    std::string series{};  // the curve of the growth plot; empty for none
    size_t operations = 0; // the position on that curve
};

// A row for a ratio.
Row ratioRow(const std::string& name, const Pair& pair, double limit);

// A row for an absolute figure.
Row figureRow(const std::string& name, const std::string& unit, const Middle& value, size_t rounds,
              std::optional<double> limit = std::nullopt);

bool isMissed(const Row& row);

void printTable(const std::vector<Row>& rows);

// False when the file cannot be written.
bool writeJson(const std::wstring& path, const std::vector<Row>& rows);

// Writes the curves for the plotting program, one block each: "# name", then for each point the
// operations, the figure, and the microseconds of ours and of the bare calls, or 0. False when the
// file cannot be written.
bool writeCurves(const std::wstring& path, const std::vector<Row>& rows);

} // namespace bench
