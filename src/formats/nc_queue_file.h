// The texts of the NC import queue. No platform header: these are decisions.
#pragma once

#include <cstdint>
#include <string>

namespace torvapdm {

// The bare program name of an NCI name: cut before its last dot, then only what follows the last
// slash or backslash. programName(L"C:\\NC\\PART.nci") is "PART", programName(L"C:\\a.b\\PART")
// "a".
std::wstring programName(const std::wstring& nciName);

// What the queue holds for one NC file: queueEntry("C:\\NC\\", "P.NC", "Mill") is
// "C:\NC\P.NC|Mill".
std::string queueEntry(const std::string& folder, const std::string& file,
                       const std::string& topGroup);

// The queue file's line for an entry, with its line feed: queueLine(-1, "E") is "NCPATH|-1|E\n".
std::string queueLine(std::int32_t ncPathNumber, const std::string& entry);

} // namespace torvapdm
