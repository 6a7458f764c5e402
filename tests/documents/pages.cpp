#include "documents/pages.h"

#include "support/bytes.h"
#include "support/installation.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <regex>
#include <sstream>

using namespace testing_support;

namespace documents {

namespace {

const std::string fence = "```";

std::wstring pagesFolder()
{
    return programFolder() + L"shipped\\docs\\";
}

// The cells of a line `| a | b |`. An escaped bar `\|` is part of the text.
TableRow cellsOf(const std::string& line)
{
    static const std::regex cell(R"( ((?:\\\||[^|])*?) *\|)");
    static const std::regex escapedBar(R"(\\\|)");
    TableRow cells;
    for (std::sregex_iterator at(line.begin() + 1, line.end(), cell), end; at != end; ++at)
        cells.push_back(std::regex_replace((*at)[1].str(), escapedBar, "|"));
    return cells;
}

std::string hexadecimal(size_t number)
{
    char digits[2 * sizeof number + 1];
    std::snprintf(digits, sizeof digits, "%02zX", number);
    return digits;
}

std::string shown(const std::optional<char>& byte)
{
    return byte ? hexadecimal(size_t{static_cast<unsigned char>(*byte)}) : "??";
}

// Adds a line of a dump. Returns the error in it, or an empty string.
std::string addRow(const std::string& line, Dump& dump)
{
    static const std::regex row("([0-9A-F]{2,})(?:  +(.*))?");
    static const std::regex content(R"re((?:"([^"]+)")re"
                                    "|\xE2\x80\xA6 (?:([1-9][0-9]*) bytes|(any))"
                                    "|((?:[0-9A-F]{2}|\\?\\?)(?: (?:[0-9A-F]{2}|\\?\\?))*))"
                                    "(?:  .*)?");
    std::smatch fields, parts;
    if (dump.isOpenEnded)
        return "a row after the rest";
    if (!std::regex_match(line, fields, row))
        return "no offset";
    if (std::stoul(fields[1], nullptr, 16) != dump.bytes.size())
        return "offset " + fields[1].str() + " where " + hexadecimal(dump.bytes.size()) + " is due";
    const std::string rest = fields[2];
    if (!std::regex_match(rest, parts, content))
        return "no bytes";
    const std::string text = parts[1], count = parts[2], bytes = parts[4];
    dump.bytes.insert(dump.bytes.end(), text.begin(), text.end());
    dump.leavesOut = dump.leavesOut || parts[2].matched || parts[3].matched;
    dump.isOpenEnded = parts[3].matched;
    if (parts[2].matched)
        dump.bytes.resize(dump.bytes.size() + std::stoul(count));
    for (size_t at = 0; at < bytes.size(); at += 3)
        dump.bytes.push_back(bytes[at] == '?' ? std::nullopt
                                              : std::optional(static_cast<char>(
                                                    std::stoi(bytes.substr(at, 2), nullptr, 16))));
    return "";
}

} // namespace

std::string pageText(const std::string& name)
{
    return readBytes(pagesFolder() + fromUtf8(name)).value_or("");
}

std::vector<TableRow> tableBelow(const std::string& page, std::string_view heading)
{
    std::vector<TableRow> rows;
    std::istringstream lines(page);
    bool isBelow = false;
    for (std::string line; std::getline(lines, line);) {
        const bool isRow = line.starts_with("| ") || line.starts_with("|-");
        if (isBelow && isRow)
            rows.push_back(cellsOf(line));
        else if (isBelow && (!rows.empty() || line.starts_with("## ")))
            break;
        isBelow = isBelow || line == heading;
    }
    rows.erase(rows.begin(), rows.begin() + std::min(std::ssize(rows), std::ptrdiff_t{2}));
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

std::vector<FencedBlock> fencedBlocks(const std::string& page, std::string_view word)
{
    std::vector<FencedBlock> blocks;
    std::istringstream lines(page);
    bool isInside = false;
    size_t number = 0;
    for (std::string line; std::getline(lines, line);) {
        ++number;
        const bool isFence = line.starts_with(fence);
        if (isFence && !isInside) {
            const size_t space = std::min(line.find(' '), line.size());
            blocks.push_back({line.substr(fence.size(), space - fence.size()),
                              line.substr(std::min(space + 1, line.size())), number});
        } else if (isInside && !isFence) {
            blocks.back().lines.push_back(line);
        }
        isInside = isInside != isFence;
    }
    std::erase_if(blocks, [&](const FencedBlock& block) { return block.word != word; });
    return blocks;
}

std::vector<FencedBlock> blocksOfPages(std::string_view word)
{
    std::vector<FencedBlock> blocks;
    for (const auto& entry : std::filesystem::directory_iterator(pagesFolder())) {
        const std::string page = toUtf8(entry.path().filename().wstring());
        for (FencedBlock& block : fencedBlocks(pageText(page), word)) {
            block.page = page;
            blocks.push_back(block);
        }
    }
    return blocks;
}

Dump parseDump(const FencedBlock& block)
{
    Dump dump;
    size_t number = block.line;
    std::string wrong =
        block.name.empty() || block.lines.empty() ? "a dump without a name or without rows" : "";
    for (size_t i = 0; i < block.lines.size() && wrong.empty(); ++i, ++number)
        wrong = addRow(block.lines[i], dump);
    if (!wrong.empty())
        dump.fault = "line " + std::to_string(number) + ": " + wrong;
    return dump;
}

std::map<std::string, Dump> dumpsOfPages()
{
    std::map<std::string, Dump> dumps;
    for (const FencedBlock& block : blocksOfPages("dump"))
        if (const Dump dump = parseDump(block); dump.fault.empty())
            dumps.emplace(block.name, dump);
    return dumps;
}

std::string difference(std::string_view bytes, const Dump& dump)
{
    const size_t shared = std::min(bytes.size(), dump.bytes.size());
    for (size_t i = 0; i < shared; ++i)
        if (dump.bytes[i] && *dump.bytes[i] != bytes[i])
            return "offset " + hexadecimal(i) + ": " + shown(bytes[i]) + ", shown is " +
                   shown(dump.bytes[i]);
    if (shared < dump.bytes.size() || (shared < bytes.size() && !dump.isOpenEnded))
        return std::to_string(bytes.size()) + " bytes, shown are " +
               std::to_string(dump.bytes.size());
    return "";
}

std::optional<std::string> bytesOf(const Dump& dump)
{
    if (dump.leavesOut)
        return std::nullopt;
    std::string bytes;
    for (const std::optional<char>& byte : dump.bytes)
        bytes += byte.value_or('0');
    return bytes;
}

std::string asBlock(const std::string& name, std::string_view bytes)
{
    constexpr size_t bytesInARow = 16;
    std::string block = "```dump " + name;
    for (size_t i = 0; i < bytes.size(); ++i)
        block += (i % bytesInARow == 0 ? '\n' + hexadecimal(i) + "  " : " ") + shown(bytes[i]);
    return block + "\n```\n";
}

} // namespace documents
