#include "peer/settings_file.h"

#include <algorithm>

namespace peer {
namespace {

constexpr size_t longestPiece = 1023;
constexpr char endOfText = 0x1A;

std::string withoutCarriageReturns(std::string_view bytes)
{
    std::string text;
    for (size_t i = 0; i < bytes.size() && bytes[i] != endOfText; ++i) {
        const bool isLineEnd = bytes[i] == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n';
        if (!isLineEnd)
            text += bytes[i];
    }
    return text;
}

bool isYes(const std::string& value)
{
    return value == "y" || value == "Y";
}

bool holds(const std::string& line, std::string_view text)
{
    return line.find(text) != std::string::npos;
}

// Quirk Q66: `AlwaysSaveTools=Y` counts as off; only the lower-case y is searched for.
bool areToolsAlwaysSaved(const std::vector<std::string>& lines)
{
    for (const std::string& line : lines)
        if (holds(line, "AlwaysSaveTools=y"))
            return true;
    return false;
}

// On unless a line switches it off; within a line `n` takes precedence over `y`.
bool isNcImported(const std::vector<std::string>& lines)
{
    bool isOn = true;
    for (const std::string& line : lines) {
        isOn = isOn || holds(line, "MCXIMPORTNC=y") || holds(line, "MCXIMPORTNC=Y");
        isOn = isOn && !holds(line, "MCXIMPORTNC=n") && !holds(line, "MCXIMPORTNC=N");
    }
    return isOn;
}

} // namespace

std::vector<std::string> splitSettingLines(std::string_view bytes)
{
    const std::string text = withoutCarriageReturns(bytes);
    std::vector<std::string> lines;
    for (size_t at = 0; at < text.size(); at += lines.back().size()) {
        const size_t lineFeed = text.find('\n', at);
        const size_t rest = (lineFeed == text.npos ? text.size() : lineFeed + 1) - at;
        lines.push_back(text.substr(at, std::min(rest, longestPiece)));
    }
    return lines;
}

std::string findSetting(const std::vector<std::string>& lines, std::string_view key)
{
    std::string value;
    for (const std::string& line : lines) {
        const size_t equals = line.find('=');
        if (holds(line, key) && equals != line.npos) {
            value = line.substr(equals + 1);
            value.resize(value.empty() ? 0 : value.size() - 1);
        }
    }
    return value;
}

Settings parseSettings(std::string_view bytes)
{
    const std::vector<std::string> lines = splitSettingLines(bytes);
    return {isYes(findSetting(lines, "UseFtpServer")), areToolsAlwaysSaved(lines),
            isYes(findSetting(lines, "MCXCATIA")), isNcImported(lines)};
}

bool isLastSettingCut(std::string_view bytes)
{
    const std::vector<std::string> lines = splitSettingLines(bytes);
    return !lines.empty() && !lines.back().ends_with('\n') && holds(lines.back(), "=");
}

} // namespace peer
