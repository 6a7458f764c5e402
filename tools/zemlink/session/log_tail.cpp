#include "tools/zemlink/session/log_tail.h"

#include "tools/zemlink/session/file_look.h"

#include <algorithm>

namespace zemlink {
namespace {

constexpr std::uint32_t mostBytesAtOnce = 1u << 24;
constexpr std::uint32_t longestLine = 1u << 16;

} // namespace

std::vector<std::string> LogTail::newLines()
{
    const FileLook look = lookAt(path_);
    if (look.size < offset_) {
        offset_ = 0;
        isInLongLine_ = false;
    }
    if (look.size == offset_)
        return {};
    const std::string bytes = readFrom(path_, offset_, mostBytesAtOnce).value_or("");
    writtenAt_ = look.writtenAt;
    std::vector<std::string> lines;
    size_t start = 0;
    for (size_t end; (end = bytes.find('\n', start)) != bytes.npos; start = end + 1) {
        if (!isInLongLine_ && end + 1 - start <= longestLine)
            lines.push_back(bytes.substr(start, end + 1 - start));
        isInLongLine_ = false;
    }
    isInLongLine_ = isInLongLine_ || bytes.size() - start > longestLine;
    offset_ += isInLongLine_ ? bytes.size() : start;
    return lines;
}

void LogTail::skip()
{
    const std::uint64_t size = lookAt(path_).size;
    const std::uint64_t start = size - std::min<std::uint64_t>(size, longestLine);
    const std::string end = readFrom(path_, start, longestLine).value_or("");
    const size_t lineEnd = end.rfind('\n');
    isInLongLine_ = lineEnd == end.npos && start != 0;
    offset_ = start + (isInLongLine_ ? end.size() : lineEnd + 1);
}

} // namespace zemlink
