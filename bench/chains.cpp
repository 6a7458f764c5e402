#include "bench/chains.h"

#include "bench/counted_heap.h"
#include "support/bytes.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

namespace bench {

namespace {

constexpr double timeGrowthLimit = 1.5;
constexpr double memoryGrowthLimit = 1.2;

Row placed(Row row, const std::string& series, size_t operations)
{
    row.name = series + ", " + std::to_string(operations) + " operations";
    row.series = series;
    row.operations = operations;
    return row;
}

double bytesEach(const ChainFigures& figures)
{
    return static_cast<double>(figures.peakBytes) / static_cast<double>(figures.chain.operations);
}

Row memoryRow(const std::string& what, const ChainFigures& figures)
{
    const Middle bytes = middleOf({bytesEach(figures)});
    return placed(figureRow("", "B", bytes, 1), what + ", memory each", figures.chain.operations);
}

const ChainFigures& thousandOf(const Growth& growth)
{
    return *std::find_if(
        growth.begin(), growth.end(),
        [](const ChainFigures& figures) { return figures.chain.operations == 1000; });
}

// Compares the ratios and not the times, since the machine's speed differs between the two chains.
// The quartiles are those of the longer chain.
Row timeGrowthRow(const std::string& what, const ChainFigures& small, const ChainFigures& large)
{
    const double scale = 1 / small.time.ratio.median;
    const Middle& ratio = large.time.ratio;
    return figureRow(what + ", to bare calls: 10000 to 1000", "x",
                     {ratio.median * scale, ratio.lower * scale, ratio.upper * scale},
                     large.time.rounds, timeGrowthLimit);
}

} // namespace

ChainFigures measureChain(ChainLength chain, const Work& ours, const Work& bare)
{
    const size_t peakBytes = peakBytesOf(ours);
    return {chain, timeInPairs(chain.rounds, 1, ours, bare), peakBytes};
}

Rows growthRows(const std::string& what, const Growth& growth, double timeLimit)
{
    Rows rows;
    for (const ChainFigures& figures : growth)
        rows.push_back(
            placed(ratioRow("", figures.time, timeLimit), what, figures.chain.operations));
    for (const ChainFigures& figures : growth)
        rows.push_back(memoryRow(what, figures));
    const ChainFigures& small = thousandOf(growth);
    const ChainFigures& large = growth.back();
    rows.push_back(timeGrowthRow(what, small, large));
    rows.push_back(figureRow(what + ", memory each: 10000 to 1000", "x",
                             middleOf({bytesEach(large) / bytesEach(small)}), 1,
                             memoryGrowthLimit));
    return rows;
}

std::vector<std::string> linesOfFile(const std::wstring& path)
{
    std::vector<std::string> lines;
    const std::string bytes = testing_support::readBytes(path).value_or("");
    for (size_t start = 0; start < bytes.size();) {
        const size_t end = bytes.find("\r\n", start);
        lines.push_back(bytes.substr(start, end - start) + '\n');
        start = end + 2;
    }
    return lines;
}

void writeLinesBare(const std::wstring& path, const std::vector<std::string>& lines)
{
    FILE* const file = _wfopen(path.c_str(), L"w");
    for (const std::string& line : lines)
        std::fputs(line.c_str(), file);
    std::fclose(file);
}

} // namespace bench
