// A command file's content, as the hosts' add-in takes it apart.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zemlink {

enum class RequestKind { none, checkIn, newFile, open, malformed };

struct CommandText {
    RequestKind kind = RequestKind::none;
    std::int32_t id = 0;                // of open and newFile
    std::string path{};                 // of open: bytes; of checkIn: the name behind the word
    std::vector<std::string> remarks{}; // what is not as it should be, a sentence each
};

// Reads the whole content of a command file. An empty one holds no request: none. One that the
// add-in can take nothing from is malformed.
CommandText readCommandText(std::string_view bytes);

// `check-in`
std::string requestName(RequestKind kind);

} // namespace zemlink
