#include "tools/zemlink/reports/file_reports.h"

#include "peer/commit_record.h"
#include "peer/notice.h"
#include "peer/settings_file.h"
#include "peer/text.h"
#include "peer/wire_constants.h"

namespace zemlink {
namespace {

// A control character would break the text's line.
std::string oneLine(std::string_view bytes)
{
    std::string line(bytes);
    for (char& c : line)
        c = static_cast<unsigned char>(c) < ' ' ? ' ' : c;
    return peer::ansiToUtf8(line);
}

Report recordReport(const peer::CommitRecord& record, size_t place)
{
    Report report{{"at", place}, {"id", nullptr}, {"file", peer::toUtf8(record.file)}};
    if (record.id != peer::noZemId)
        report["id"] = record.id;
    return report;
}

} // namespace

Report noticeReport(std::string_view bytes)
{
    const peer::Notice notice = peer::parseNotice(bytes);
    switch (notice.kind) {
    case peer::NoticeKind::setupSheet:
        return {
            {"notice", "setup sheet"}, {"id", notice.id}, {"file", peer::ansiToUtf8(notice.path)}};
    case peer::NoticeKind::commit:
        return {{"notice", "commit"},
                {"id", notice.id == peer::noZemId ? Report() : Report(notice.id)},
                {"file", peer::ansiToUtf8(notice.path)}};
    case peer::NoticeKind::toolData:
        return {{"notice", "tool data"}, {"id", notice.id}};
    case peer::NoticeKind::ncQueue:
        return {{"notice", "NC queue"}, {"file", peer::ansiToUtf8(notice.path)}};
    case peer::NoticeKind::unknown:
        break;
    }
    return {{"notice", "unknown"}, {"hex", hexadecimal(bytes)}, {"text", oneLine(bytes)}};
}

Report commitsReport(std::string_view bytes, size_t offset)
{
    Report report{{"records", Report::array()}};
    size_t at = 0;
    while (at < bytes.size()) {
        const peer::Piece piece = peer::parsePiece(bytes.substr(at));
        if (piece.kind == peer::PieceKind::record)
            report["records"].push_back(recordReport(piece.record, offset + at));
        else if (piece.kind == peer::PieceKind::foreign)
            report["foreign"].push_back(Report{{"at", offset + at}, {"bytes", piece.size}});
        else
            report["incomplete"] = piece.size;
        at += piece.size;
    }
    return report;
}

Report settingsReport(std::string_view bytes)
{
    const peer::Settings settings = peer::parseSettings(bytes);
    return {{"UseFtpServer", settings.useFtpServer},
            {"AlwaysSaveTools", settings.alwaysSaveTools},
            {"MCXCATIA", settings.catia},
            {"MCXIMPORTNC", settings.importNc}};
}

} // namespace zemlink
