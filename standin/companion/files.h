// Whole small files.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace companion {

// Empty when the file cannot be read or is larger than that. Others may write and delete it
// meanwhile.
std::optional<std::string> readFile(const std::wstring& path, std::uint32_t mostBytes = UINT32_MAX);

// Writes the file anew. False when it cannot be written whole.
bool writeFile(const std::wstring& path, std::string_view bytes);

// Adds the bytes to the end with one write, so that two writers' lines do not mix; creates the
// file when it is missing. False when they could not be written.
bool appendToFile(const std::wstring& path, std::string_view bytes);

// True when the path exists and is not a folder.
bool isFile(const std::wstring& path);

} // namespace companion
