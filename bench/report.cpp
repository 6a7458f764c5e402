#include "bench/report.h"

#include <cstdio>
#include <fstream>
#include <nlohmann/json.hpp>

namespace bench {

namespace {

using nlohmann::json;

std::string numberText(double number)
{
    char text[32];
    std::snprintf(text, sizeof text,
                  number < 10     ? "%.3f"
                  : number < 1000 ? "%.1f"
                                  : "%.0f",
                  number);
    return text;
}

std::string optionalText(const std::optional<Middle>& middle)
{
    return middle ? numberText(middle->median) : "";
}

double medianOf(const std::optional<Middle>& middle)
{
    return middle ? middle->median : 0;
}

json jsonOf(const Middle& middle)
{
    return {{"median", middle.median}, {"lower", middle.lower}, {"upper", middle.upper}};
}

json jsonOf(const Row& row)
{
    json object = {{"name", row.name},
                   {"unit", row.unit},
                   {"value", jsonOf(row.value)},
                   {"rounds", row.rounds},
                   {"missed", isMissed(row)}};
    if (row.limit)
        object["limit"] = *row.limit;
    if (row.ours)
        object["oursMicroseconds"] = jsonOf(*row.ours);
    if (row.bare)
        object["bareMicroseconds"] = jsonOf(*row.bare);
    return object;
}

} // namespace

Row ratioRow(const std::string& name, const Pair& pair, double limit)
{
    return {name, "x", pair.ratio, limit, pair.ours, pair.bare, pair.rounds};
}

Row figureRow(const std::string& name, const std::string& unit, const Middle& value, size_t rounds,
              std::optional<double> limit)
{
    return {name, unit, value, limit, std::nullopt, std::nullopt, rounds};
}

bool isMissed(const Row& row)
{
    return row.limit && row.value.median > *row.limit;
}

void printTable(const std::vector<Row>& rows)
{
    std::printf("%-52s %9s %19s %9s %10s %10s %7s\n", "", "median", "middle half", "limit",
                "ours us", "bare us", "rounds");
    for (const Row& row : rows)
        std::printf("%-52s %6s %-2s %9s..%-8s %9s %10s %10s %7zu%s\n", row.name.c_str(),
                    numberText(row.value.median).c_str(), row.unit.c_str(),
                    numberText(row.value.lower).c_str(), numberText(row.value.upper).c_str(),
                    row.limit ? numberText(*row.limit).c_str() : "", optionalText(row.ours).c_str(),
                    optionalText(row.bare).c_str(), row.rounds, isMissed(row) ? "  MISSED" : "");
}

bool writeJson(const std::wstring& path, const std::vector<Row>& rows)
{
    json all = json::array();
    for (const Row& row : rows)
        all.push_back(jsonOf(row));
    std::ofstream file(path.c_str(), std::ios::binary);
    file << all.dump(2) << '\n';
    return file.good();
}

bool writeCurves(const std::wstring& path, const std::vector<Row>& rows)
{
    std::ofstream file(path.c_str(), std::ios::binary);
    std::string series;
    for (const Row& row : rows) {
        if (row.series.empty())
            continue;
        if (row.series != series)
            file << (series.empty() ? "# " : "\n\n# ") << row.series << '\n';
        series = row.series;
        file << row.operations << ' ' << row.value.median << ' ' << medianOf(row.ours) << ' '
             << medianOf(row.bare) << '\n';
    }
    return file.good();
}

} // namespace bench
