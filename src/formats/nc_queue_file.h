// The NC queue file: a line for each posted NC program of the open part. No platform header.
//
//   NCPATH|3|C:\NC\PART.NC|Mill
#pragma once

#include <cstdint>
#include <string>

namespace torvapdm {

// The program name in an NCI name, cut before the last dot and after the last slash or backslash:
// programNameOf(L"C:\\NC\\PART.nci") is "PART", programNameOf(L"C:\\a.b\\PART") is "a".
std::wstring programNameOf(const std::wstring& nciName);

// An entry: formatQueueEntry("C:\\NC\\", "P.NC", "Mill") is "C:\NC\P.NC|Mill".
std::string formatQueueEntry(const std::string& folder, const std::string& file,
                             const std::string& topGroup);

// An entry's line with its line feed: formatQueueLine(-1, "E") is "NCPATH|-1|E\n".
std::string formatQueueLine(std::int32_t ncPathNumber, const std::string& entry);

} // namespace torvapdm
