// Reads and writes whole files.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace peer {

// The largest announced file that is read; a larger one would block the window.
inline constexpr std::uint32_t largestAnnouncedFile = 1024 * 1024;

// Empty when the file cannot be read, is larger than `mostBytes` or is not on a disk, such as a
// pipe. Other programs may write and delete the file meanwhile.
std::optional<std::string> readFile(const std::wstring& path, std::uint32_t mostBytes = UINT32_MAX);

// The end of the file, or all of it: at most so many bytes. Otherwise like readFile.
std::optional<std::string> readEnd(const std::wstring& path, std::uint32_t mostBytes);

// Creates or overwrites the file. False when not everything was written.
bool writeFile(const std::wstring& path, std::string_view bytes);

// Creates the file so that, whatever happens, it exists completely or not at all. False when it or
// `<path>.new`, which is written first, exists already, or when it cannot be written.
bool createFile(const std::wstring& path, std::string_view bytes);

// Replaces the file so that, whatever happens, either the old or the new one exists completely.
// False when the new one cannot be written or the old one is write-protected or held open.
bool replaceFile(const std::wstring& path, std::string_view bytes);

// Appends the bytes with one write, so that the lines of two writers do not mix; creates the file
// when it is missing. False when not everything was written.
bool appendToFile(const std::wstring& path, std::string_view bytes);

// True when the path exists and is not a folder.
bool isFile(const std::wstring& path);

// In bytes; 0 when there is no such file.
std::uint64_t fileSize(const std::wstring& path);

// `<start><number><end>` with the first number, from 1, for which no file exists.
std::wstring freeName(const std::wstring& start, const std::wstring& end);

} // namespace peer
