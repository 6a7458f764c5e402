#include "documents/fenced_block.h"

#include <sstream>

namespace documents {

namespace {

constexpr std::string_view fence = "```";

FencedBlock opened(const std::string& line, size_t number)
{
    const std::string information = line.substr(fence.size());
    const size_t blank = information.find(' ');
    FencedBlock block;
    block.word = information.substr(0, blank);
    block.name = blank == information.npos ? "" : information.substr(blank + 1);
    block.line = number;
    return block;
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

} // namespace documents
