// The machine-settings file, one line that the Companion writes for a request. No platform header.
//
//   17|3|0|C:\Machines\Mill 3-axis.mcam-mmd
//
// Each field ends in "|". Field 1 is the NC-path number, field 2 the second settings number; the
// text after the last "|", up to the first line feed, is the machine definition's path.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace torvapdm {

struct MachineSettings {
    std::optional<std::int32_t> ncPathNumber; // nothing: the line has no such field
    std::optional<std::int32_t> secondNumber;
    std::wstring machinePath;
};

MachineSettings parseMachineSettings(const std::wstring& line);

} // namespace torvapdm
