// The four notices, without the line feed that the line sender adds. No platform header.
#pragma once

#include <cstdint>
#include <string>

namespace torvapdm {

// A commit record was written: formatCommitNotice(42, "C:\\a.mcam") is "ZEMID=42|C:\a.mcam".
std::string formatCommitNotice(std::uint32_t zemId, const std::string& file);

// The tool data file of a request is ready: formatToolDataNotice(7) is "TOOL-7".
std::string formatToolDataNotice(std::int32_t requestId);

// The NC queue file is ready: formatNcQueueNotice("C:\\q.txt") is "IMPORTNCQUEUE|C:\q.txt".
std::string formatNcQueueNotice(const std::string& queueFile);

// The host produced a setup sheet: formatSetupSheetNotice(42, L"C:\\s.xml") is
// "MCAMXMLIMPORTDATAID=42;C:\s.xml". UTF-16, since the caller converts the whole notice.
std::wstring formatSetupSheetNotice(std::int32_t requestId, const std::wstring& sheet);

} // namespace torvapdm
