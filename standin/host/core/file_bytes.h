// Whole files as bytes.
#pragma once

#include "host/import.h"

#include <optional>
#include <string>
#include <string_view>

namespace standin {

// Nothing when the file cannot be read whole.
MCCORE_API std::optional<std::string> readFileBytes(const std::wstring& path);

// Writes the file beside its place and then moves it there, so that whoever reads it gets the old
// one or the new one whole. False, with the old one as it was, when that failed.
MCCORE_API bool writeFileBytes(const std::wstring& path, std::string_view bytes);

} // namespace standin
