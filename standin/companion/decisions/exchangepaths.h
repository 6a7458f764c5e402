// Where the exchange files lie under the installation folder. `folder` is the installation folder
// without a backslash at its end.
#pragma once

#include <cstdint>
#include <string>

namespace companion {

std::wstring commandFilePath(const std::wstring& folder, std::uint32_t hostProcess);
std::wstring machineSettingsPath(const std::wstring& folder, std::int32_t requestId);
std::wstring logPath(const std::wstring& folder);
std::wstring libraryFolder(const std::wstring& folder);
std::wstring libraryIndexPath(const std::wstring& folder);

// The part of a path behind its last backslash or slash.
std::wstring fileNameOf(const std::wstring& path);

} // namespace companion
