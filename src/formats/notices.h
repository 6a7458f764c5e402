// The line that tells the Companion of a setup sheet. No platform header: this is a decision.
//
//   setupSheetLine(42, L"C:\\s.xml")  is  MCAMXMLIMPORTDATAID=42;C:\s.xml
#pragma once

#include <cstdint>
#include <string>

namespace torvapdm {

// The line for the sheet's file and the request it belongs to, without a line end.
std::wstring setupSheetLine(std::int32_t requestId, const std::wstring& file);

} // namespace torvapdm
