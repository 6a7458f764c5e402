// The setup-sheet hand-over. UI thread.
#pragma once

#include <cstdint>
#include <string>

namespace torvapdm {

// Has the host produce its setup sheet for the selected operations and tells the Companion the
// first file's path. Nothing is sent when the host produced none. Passes on the framework's
// exceptions that the host raises.
void sendSetupSheet();

// The line that tells it: setupSheetLine(42, L"C:\\s.xml") is "MCAMXMLIMPORTDATAID=42;C:\s.xml".
std::wstring setupSheetLine(std::int32_t requestId, const std::wstring& file);

} // namespace torvapdm
