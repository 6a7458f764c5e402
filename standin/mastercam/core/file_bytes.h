// Whole files as bytes.
#pragma once

#include "host/import.h"

#include <optional>
#include <string>
#include <string_view>

namespace standin {

// Nothing when the file cannot be read whole.
MCCORE_API std::optional<std::string> readFileBytes(const std::wstring& path);

// Creates the file or writes over it; false when not all of it could be written.
MCCORE_API bool writeFileBytes(const std::wstring& path, std::string_view bytes);

} // namespace standin
