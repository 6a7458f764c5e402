// The exchange file's name. No platform header: this is a decision.
//
//   exchangeFileName(L"C:\\Temp\\", 1)  is  C:\Temp\\TORVA ZEM-25661.tmp
#pragma once

#include <cstdint>
#include <string>

namespace torvapdm {

// The file's path in the folder, which ends in a backslash of its own, for this time: seconds since
// the beginning of 1970, UTC. The time goes in as a number of 0 to 65535, without leading zeros.
std::wstring exchangeFileName(const std::wstring& folder, std::int64_t seconds);

} // namespace torvapdm
