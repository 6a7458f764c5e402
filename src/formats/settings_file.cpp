#include "formats/settings_file.h"

namespace torvapdm {

// Deliberate: the identifier is found anywhere in the line, and the last character goes whatever it
// is. One would expect "identifier=" at the line's start and only a line feed to be dropped; both
// are kept, and the last matching line wins. "XUseFtpServer=n\n" answers "n" for
// "UseFtpServer"; "UseFtpServer=y" without a line feed answers an empty value.
void applySettingLine(std::string_view line, std::string_view identifier, std::string& value)
{
    if (line.find(identifier) == std::string_view::npos)
        return;
    const size_t equals = line.find('=');
    if (equals == std::string_view::npos)
        return;
    value = line.substr(equals + 1, line.size() - equals - 2);
}

} // namespace torvapdm
