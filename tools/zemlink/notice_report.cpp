#include "tools/zemlink/notice_report.h"

#include "peer/notice.h"
#include "peer/ansi_text.h"

namespace zemlink {
namespace {

constexpr std::int64_t noId = 0xFFFFFFFF;

std::string hexadecimal(std::string_view bytes)
{
    constexpr char digits[] = "0123456789ABCDEF";
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        text += {digits[byte >> 4], digits[byte & 15]};
    }
    return text;
}

// A control character would break the text's line.
std::string oneLine(std::string_view bytes)
{
    std::string line(bytes);
    for (char& c : line)
        c = static_cast<unsigned char>(c) < ' ' ? ' ' : c;
    return ansiToUtf8(line);
}

} // namespace

Report noticeReport(std::string_view bytes)
{
    const companion::Notice notice = companion::readNotice(bytes);
    switch (notice.kind) {
    case companion::NoticeKind::setupSheet:
        return {{"notice", "setup sheet"}, {"id", notice.id}, {"file", ansiToUtf8(notice.path)}};
    case companion::NoticeKind::commit:
        return {{"notice", "commit"},
                {"id", notice.id == noId ? Report() : Report(notice.id)},
                {"file", ansiToUtf8(notice.path)}};
    case companion::NoticeKind::toolData:
        return {{"notice", "tool data"}, {"id", notice.id}};
    case companion::NoticeKind::ncQueue:
        return {{"notice", "NC queue"}, {"file", ansiToUtf8(notice.path)}};
    case companion::NoticeKind::unknown:
        break;
    }
    return {{"notice", "unknown"}, {"hex", hexadecimal(bytes)}, {"text", oneLine(bytes)}};
}

} // namespace zemlink
