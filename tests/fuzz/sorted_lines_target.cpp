// Sorting and dropping repeats: lines, each ended by a line feed.
#include "fuzz/differences.h"
#include "fuzz/targets.h"
#include "formats/sorted_lines.h"

namespace fuzzing {

namespace {

std::vector<std::string> linesOf(std::string_view bytes)
{
    std::vector<std::string> lines = {{}};
    for (const char byte : bytes)
        if (byte == '\n')
            lines.emplace_back();
        else
            lines.back() += byte;
    return lines;
}

bool isBefore(const std::string& a, const std::string& b)
{
    for (size_t i = 0; i < a.size() && i < b.size(); ++i) {
        const int left = static_cast<unsigned char>(a[i]);
        const int right = static_cast<unsigned char>(b[i]);
        if (left != right)
            return left < right;
    }
    return a.size() < b.size();
}

// Each line goes before the first that is not before it, unless it is that one.
std::vector<std::string> plainOrder(const std::vector<std::string>& lines)
{
    std::vector<std::string> ordered;
    for (const std::string& line : lines) {
        auto at = ordered.begin();
        while (at != ordered.end() && isBefore(*at, line))
            ++at;
        if (at == ordered.end() || *at != line)
            ordered.insert(at, line);
    }
    return ordered;
}

std::string checkSortedLines(std::string_view bytes)
{
    std::vector<std::string> answer = linesOf(bytes);
    const std::vector<std::string> expected = plainOrder(answer);
    torvapdm::sortAndRemoveDuplicates(answer);
    Differences differences;
    differences.compare("lines", answer, expected);
    return differences.text();
}

} // namespace

Target sortedLinesTarget()
{
    return {"sorted_lines",
            checkSortedLines,
            {"b\na\nb\na\n", "C:\\NC\\P2.NC|Mill\nC:\\NC\\P10.NC|Mill\nC:\\NC\\P2.NC|Mill\n",
             "\xC4\nz\n\x7F\n", "", "\n\n", "ab\na\nabc\n"},
            {"\n", "a\n", "\xC4\n", "ab"}};
}

} // namespace fuzzing
