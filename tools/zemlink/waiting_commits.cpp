#include "tools/zemlink/waiting_commits.h"

#include "peer/commit_record.h"
#include "peer/text.h"

namespace zemlink {
namespace {

constexpr std::uint32_t noId = 0xFFFFFFFF;

Report recordReport(const companion::CommitRecord& record, size_t place)
{
    Report report{{"at", place}, {"id", nullptr}, {"file", companion::toUtf8(record.file)}};
    if (record.id != noId)
        report["id"] = record.id;
    return report;
}

} // namespace

Report commitsReport(std::string_view bytes, size_t offset)
{
    Report report{{"records", Report::array()}};
    size_t at = 0;
    while (at < bytes.size()) {
        const companion::Piece piece = companion::nextPiece(bytes.substr(at));
        if (piece.kind == companion::PieceKind::record)
            report["records"].push_back(recordReport(piece.record, offset + at));
        else if (piece.kind == companion::PieceKind::foreign)
            report["foreign"].push_back(Report{{"at", offset + at}, {"bytes", piece.size}});
        else
            report["incomplete"] = piece.size;
        at += piece.size;
    }
    return report;
}

} // namespace zemlink
