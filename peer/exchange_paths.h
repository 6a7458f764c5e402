// Paths of the exchange files. `folder` is the installation folder without a trailing backslash.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace peer {

std::wstring commandFilePath(const std::wstring& folder, std::uint32_t hostProcess);
// Matches all command files.
std::wstring commandFilePattern(const std::wstring& folder);
// The process in the name of a command file; empty for any other name.
std::optional<std::uint32_t> processOfCommandFile(std::wstring_view fileName);
std::wstring machineSettingsPath(const std::wstring& folder, std::int32_t requestId);
// Matches all machine settings.
std::wstring machineSettingsPattern(const std::wstring& folder);
// The request id in the name of machine settings; empty for any other name.
std::optional<std::int32_t> requestOfMachineSettings(std::wstring_view fileName);
std::wstring toolDataPath(const std::wstring& folder, std::int64_t requestId);
std::wstring toolPicturePath(const std::wstring& folder, std::int32_t toolNumber);
std::wstring logPath(const std::wstring& folder);
// The log of the hosts' loads.
std::wstring debugLogPath(const std::wstring& folder);
std::wstring workingCopiesPath(const std::wstring& folder);
// The screen picture that belongs to the commit record written next.
std::wstring screenPicturePath(const std::wstring& folder);
std::wstring libraryFolder(const std::wstring& folder);
std::wstring libraryIndexPath(const std::wstring& folder);

// The process id for commits from the command line. No process has it, because ids are multiples of
// 4, and no host writes there: a host that asks a window that has just closed for its process
// gets 0.
inline constexpr std::uint32_t commandLineProcess = 1;

// The commit files of one process of the Companion.
struct CommitPaths {
    std::wstring live;     // hosts append to it
    std::wstring closed;   // renamed, so that hosts no longer find it
    std::wstring bookmark; // how far it has been taken
};
CommitPaths commitPaths(const std::wstring& folder, std::uint32_t process);

// Matches all commit files and bookmarks.
std::wstring commitFilePattern(const std::wstring& folder);

// The process in the name of a commit file or bookmark; empty for any other name.
std::optional<std::uint32_t> processOfCommitFile(std::wstring_view fileName);

// True for a path that starts with two slashes of either kind: opening it may contact another
// computer.
bool mayBeRemote(std::wstring_view path);

// The part of a path after its last backslash or slash.
std::wstring fileNameOf(const std::wstring& path);

} // namespace peer
