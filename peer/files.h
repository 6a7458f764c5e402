// Small files as a whole.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace companion {

// A file that a host announces is read up to this size; more would only hold up the window.
inline constexpr std::uint32_t largestAnnouncedFile = 1024 * 1024;

// Empty when the file cannot be read, is larger than that or lies on no disk, as a pipe does not.
// Others may write and delete it meanwhile.
std::optional<std::string> readFile(const std::wstring& path, std::uint32_t mostBytes = UINT32_MAX);

// Writes the file anew. False when it cannot be written whole.
bool writeFile(const std::wstring& path, std::string_view bytes);

// Puts the file in the place of an earlier one so that, whatever happens, one of the two is there
// whole. False when it cannot be written, or when the earlier one is write-protected or held open.
bool replaceFile(const std::wstring& path, std::string_view bytes);

// Adds the bytes to the end with one write, so that two writers' lines do not mix; creates the
// file when it is missing. False when they could not be written.
bool appendToFile(const std::wstring& path, std::string_view bytes);

// True when the path exists and is not a folder.
bool isFile(const std::wstring& path);

// In bytes; 0 also when there is no such file.
std::uint64_t fileSize(const std::wstring& path);

// `<start>1<end>`, or with the first number that no file has.
std::wstring freeName(const std::wstring& start, const std::wstring& end);

} // namespace companion
