// The machine settings of a request, `temp\mcsettings-<request id>.txt`, as the hosts' add-in takes
// them apart: `17|3|0|C:\Machines\Mill 3-axis.mcam-mmd`.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zemlink {

struct MachineText {
    std::string id{};                           // as written; nothing reads it
    std::optional<std::int32_t> ncPath{};       // absent: it stays as it was
    std::optional<std::int32_t> secondNumber{}; // absent: it stays as it was
    std::string machine{};                      // path of the machine definition, bytes
    bool hasMore = false;                       // lines behind the first, which nobody reads
};

// Empty for an empty file, from which nothing is read. A number counts only with a bar behind it.
std::optional<MachineText> readMachineText(std::string_view bytes);

} // namespace zemlink
