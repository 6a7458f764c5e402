// Where the exchange files lie under the installation folder. `folder` is the installation folder
// without a backslash at its end.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace companion {

std::wstring commandFilePath(const std::wstring& folder, std::uint32_t hostProcess);
std::wstring machineSettingsPath(const std::wstring& folder, std::int32_t requestId);
std::wstring toolDataPath(const std::wstring& folder, std::int64_t requestId);
std::wstring toolPicturePath(const std::wstring& folder, std::int32_t toolNumber);
std::wstring logPath(const std::wstring& folder);
std::wstring workingCopiesPath(const std::wstring& folder);
// Of the screen picture that belongs to the commit request written next.
std::wstring screenPicturePath(const std::wstring& folder);
std::wstring libraryFolder(const std::wstring& folder);
std::wstring libraryIndexPath(const std::wstring& folder);

// The process id under which commits of the command line are kept. No process has it, because ids
// are multiples of 4, and no host ever writes there; one that asks a window that has just gone for
// its process gets 0.
inline constexpr std::uint32_t commandLineProcess = 1;

// What belongs to the commit requests for one process of this program.
struct CommitRequestPaths {
    std::wstring live;     // hosts append to it
    std::wstring closed;   // the same file once hosts can no longer find it
    std::wstring bookmark; // how far it has been taken
};
CommitRequestPaths commitRequestPaths(const std::wstring& folder, std::uint32_t process);

// Matches the names of all of these in their folder.
std::wstring commitRequestPattern(const std::wstring& folder);

// The process that one of these names belongs to; empty for any other name.
std::optional<std::uint32_t> processOfCommitRequest(std::wstring_view fileName);

// True for a path that starts with two slashes of either kind: to look at what it names may mean to
// ask another computer.
bool mayBeElsewhere(std::wstring_view path);

// The part of a path behind its last backslash or slash.
std::wstring fileNameOf(const std::wstring& path);

} // namespace companion
