#include "formats/settings_file.h"

namespace torvapdm {

namespace {

bool contains(std::string_view line, std::string_view text)
{
    return line.find(text) != std::string_view::npos;
}

} // namespace

// Quirk Q33: the identifier matches anywhere in the line, the last matching line wins, and the last
// character is dropped whatever it is: "XUseFtpServer=n\n" gives "n" for "UseFtpServer", and
// "UseFtpServer=y" without a line feed gives an empty value.
void applySettingLine(std::string_view line, std::string_view identifier, std::string& value)
{
    if (!contains(line, identifier))
        return;
    const size_t equals = line.find('=');
    if (equals == std::string_view::npos)
        return;
    value = line.substr(equals + 1, line.size() - equals - 2);
}

// Quirk Q50: the upper-case spelling is searched for and the result is not used.
bool hasAlwaysSaveTools(std::string_view line)
{
    const bool isOn = contains(line, "AlwaysSaveTools=y");
    [[maybe_unused]] const bool isOnInUpperCase = contains(line, "AlwaysSaveTools=Y");
    return isOn;
}

// Quirk Q44: the four spellings are tested in this order and the last one found wins, so the line
// "MCXIMPORTNC=n MCXIMPORTNC=Y" gives "n".
void applyNcImportLine(std::string_view line, std::string& answer)
{
    for (const char letter : {'y', 'Y', 'n', 'N'})
        if (contains(line, std::string(ncImportKey) + '=' + letter))
            answer = letter == 'y' || letter == 'Y' ? "y" : "n";
}

} // namespace torvapdm
