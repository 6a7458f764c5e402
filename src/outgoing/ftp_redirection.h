// Where a document goes when the Companion's settings ask for its FTP server. UI thread.
#pragma once

#include <string>

namespace torvapdm {

// True when the setting "UseFtpServer" is "y" or "Y".
bool isFtpServerUsed();

// The name under the folder's "tmp": redirectedTo(L"C:\\Z", L"D:\\w\\a.mcam") is "C:\Z\tmp\a.mcam".
std::wstring redirectedTo(const std::wstring& folder, const std::wstring& name);

} // namespace torvapdm
