// Whole files as bytes.
#pragma once

#include "host/import.h"

#include <optional>
#include <string>
#include <string_view>

namespace standin {

// Nothing if the file cannot be read completely.
MCCORE_API std::optional<std::string> readFileBytes(const std::wstring& path);

// Writes a temporary file and renames it, so readers see the complete old or new file. False, with
// the old file unchanged, on failure.
MCCORE_API bool writeFileBytes(const std::wstring& path, std::string_view bytes);

} // namespace standin
