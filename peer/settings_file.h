// The settings file, `cfg\settings.ini`, as the hosts' add-in reads it: 8-bit text, one setting a
// line, `UseFtpServer=y`.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace peer {

struct Settings {
    bool useFtpServer = false;
    bool alwaysSaveTools = false;
    bool catia = false;
    bool importNc = true;
};

Settings parseSettings(std::string_view bytes);

// The lines as the add-in reads them one at a time: with their line feed, in pieces of at most 1023
// bytes, up to a Ctrl-Z, without the carriage return before a line feed.
std::vector<std::string> splitSettingLines(std::string_view bytes);

// The value of the last line that contains the key anywhere and an equals sign. It loses its last
// character, which is the line feed unless the last line lacks one. Empty without such a line.
std::string findSetting(const std::vector<std::string>& lines, std::string_view key);

// True when the last line has no line feed, so that its value loses its last character.
bool isLastSettingCut(std::string_view bytes);

} // namespace peer
