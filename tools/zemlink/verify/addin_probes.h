// What can be seen of an add-in without a request.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zemlink {

// The names of the entry points that the library lacks; empty when it cannot be read. It is not
// run.
std::optional<std::vector<std::string>> findMissingExports(const std::wstring& library);

// Whether no program has this TCP port.
bool isPortFree(std::uint16_t port);

// The error of opening the file to read, write and delete it, with all sharing modes; 0 for none.
std::uint32_t sharingErrorOf(const std::wstring& file);

} // namespace zemlink
