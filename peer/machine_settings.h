// The machine settings of a request, `temp\mcsettings-<request id>.txt`: one line of 8-bit text,
// ended by CR LF.
//
//   17|3|0|C:\Machines\Mill 3-axis.mcam-mmd    id, NC path number, second number, machine
//   definition
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace peer {

struct MachineSettings {
    std::string id{};                           // as written; the add-in ignores it
    std::optional<std::int32_t> ncPath{};       // absent: the add-in keeps its value
    std::optional<std::int32_t> secondNumber{}; // absent: the add-in keeps its value
    std::string machine{};                      // path of the machine definition, bytes
    bool hasMoreLines = false;                  // lines after the first, which the add-in ignores
};

// Empty for an empty file. A number counts only if a `|` follows it.
std::optional<MachineSettings> parseMachineSettings(std::string_view bytes);

// The line as text; the caller converts it to the host's code page. Empty when the machine path is
// empty or contains a `|` or a line end, at which the add-in would split it.
std::optional<std::wstring> formatMachineSettings(std::int32_t id, std::int32_t ncPath,
                                                  std::int32_t secondNumber,
                                                  std::wstring_view machine);

} // namespace peer
