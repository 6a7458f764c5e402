// The Companion's installation folder, and the paths below it.
#pragma once

#include <cstdint>
#include <string>

namespace torvapdm {

// The folder from the registry (current user, "SOFTWARE\TORVA AS\ZEM", value "installation
// folder"), or "C:\TORVA\ZEM". Read on the first call and cached for the life of the process.
// Creates the key when it is missing. Any thread, after the first call, in m_open, has returned.
const std::wstring& getInstallationFolder();

std::wstring settingsFilePath();
std::wstring companionProgramPath();
std::wstring screenPicturePath();

// The command file of this process and the commit file of the Companion's process.
std::wstring commandFilePathOfThisProcess();
std::wstring commitFilePath(std::uint32_t companionProcessId);

// The files of a request.
std::wstring machineSettingsPath(std::int32_t requestId);
std::wstring toolDataPath(std::int32_t requestId);
std::wstring ncQueuePath(std::int32_t requestId);

// toolPicturePath(-3) is C:\TORVA\ZEM\temp\toolimage--3.bmp in the default folder.
std::wstring toolPicturePath(std::int32_t imageId);
std::wstring toolAndHolderPicturePath(std::int32_t toolNumber);

// Where the Companion's FTP server keeps a file, in this folder:
// ftpPath(L"C:\\Z", L"D:\\w\\a.mcam") is C:\Z\tmp\a.mcam.
std::wstring ftpPath(const std::wstring& folder, const std::wstring& file);

// The debug log, each UTF-16 unit of the folder narrowed to its low byte.
std::string debugLogPath();

} // namespace torvapdm
