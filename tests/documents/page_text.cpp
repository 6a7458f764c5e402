#include "documents/page_text.h"

#include <sstream>

namespace documents {

namespace {

constexpr std::string_view fence = "```";

FencedBlock opened(const std::string& line, size_t number)
{
    const std::string information = line.substr(fence.size());
    const size_t space = information.find(' ');
    FencedBlock block;
    block.word = information.substr(0, space);
    block.name = space == information.npos ? "" : information.substr(space + 1);
    block.line = number;
    return block;
}

// The cells of a line `| a | b |`. An escaped bar `\|` is part of the text.
TableRow cellsOf(const std::string& line)
{
    TableRow cells;
    std::string cell;
    for (size_t i = 2; i < line.size(); ++i) {
        if (line[i] == '\\' && i + 1 < line.size() && line[i + 1] == '|') {
            cell += line[++i];
        } else if (line[i] == '|') {
            cells.push_back(cell.substr(0, cell.find_last_not_of(' ') + 1));
            cell.clear();
            ++i; // skips the space
        } else {
            cell += line[i];
        }
    }
    return cells;
}

} // namespace

std::vector<FencedBlock> fencedBlocks(std::string_view page, std::string_view word)
{
    std::vector<FencedBlock> blocks;
    std::istringstream lines{std::string(page)};
    bool isInside = false;
    size_t number = 0;
    for (std::string line; std::getline(lines, line);) {
        ++number;
        const bool isFence = line.starts_with(fence);
        if (isFence && !isInside)
            blocks.push_back(opened(line, number));
        else if (isInside && !isFence)
            blocks.back().lines.push_back(line);
        isInside = isInside != isFence;
    }
    std::erase_if(blocks, [&](const FencedBlock& block) { return block.word != word; });
    return blocks;
}

std::string joined(const std::vector<std::string>& lines)
{
    std::string text;
    for (const std::string& line : lines)
        text += line + '\n';
    return text;
}

std::vector<TableRow> tableBelow(std::string_view page, std::string_view heading)
{
    std::vector<TableRow> rows;
    std::istringstream lines{std::string(page)};
    bool isBelow = false;
    for (std::string line; std::getline(lines, line);) {
        const bool isRow = line.starts_with("| ") || line.starts_with("|-");
        if (isBelow && isRow)
            rows.push_back(cellsOf(line));
        else if (isBelow && (!rows.empty() || line.starts_with("## ")))
            break;
        isBelow = isBelow || line == heading;
    }
    constexpr std::ptrdiff_t linesOfHead = 2;
    if (std::ssize(rows) < linesOfHead)
        return {};
    rows.erase(rows.begin(), rows.begin() + linesOfHead);
    return rows;
}

std::string codeIn(std::string_view text)
{
    const size_t begin = text.find('`');
    const size_t end = begin == text.npos ? begin : text.find('`', begin + 1);
    return end == text.npos ? "" : std::string(text.substr(begin + 1, end - begin - 1));
}

bool isLike(std::string_view text, std::string_view pattern)
{
    const size_t begin = pattern.find('<');
    const size_t end = pattern.find('>', begin);
    if (begin == pattern.npos || end == pattern.npos)
        return text == pattern;
    if (text.substr(0, begin) != pattern.substr(0, begin))
        return false;
    for (size_t taken = begin + 1; taken <= text.size(); ++taken)
        if (isLike(text.substr(taken), pattern.substr(end + 1)))
            return true;
    return false;
}

} // namespace documents
