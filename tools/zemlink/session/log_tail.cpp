#include "tools/zemlink/session/log_tail.h"

#include "tools/zemlink/session/file_look.h"

namespace zemlink {
namespace {

constexpr std::uint64_t mostLogBytes = 1u << 28; // at once

} // namespace

std::vector<std::string> LogTail::newLines()
{
    const FileLook look = lookAt(path_);
    if (look.size < offset_)
        offset_ = 0;
    if (look.size == offset_)
        return {};
    const std::string bytes = readFrom(path_, offset_, mostLogBytes).value_or("");
    writtenAt_ = look.writtenAt;
    std::vector<std::string> lines;
    size_t start = 0;
    for (size_t end; (end = bytes.find('\n', start)) != bytes.npos; start = end + 1)
        lines.push_back(bytes.substr(start, end + 1 - start));
    offset_ += start;
    return lines;
}

void LogTail::skip()
{
    newLines();
}

} // namespace zemlink
