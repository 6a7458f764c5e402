// The look-up of a setting: the identifier, what the value was before, the file.
#include "fuzz/differences.h"
#include "fuzz/input.h"
#include "fuzz/plain_text.h"
#include "fuzz/targets.h"
#include "formats/settings_file.h"

namespace fuzzing {

namespace {

// A line that holds the identifier anywhere gives what stands behind its first "=", less its last
// character.
std::string plainValue(const std::string& line, std::string_view identifier,
                       const std::string& before)
{
    const long long equals = firstOf(line, '=');
    if (equals < 0 || !hasAnywhere(line, identifier))
        return before;
    return between(line, equals + 1, static_cast<long long>(line.size()) - 1);
}

std::string checkSettingsLine(std::string_view bytes)
{
    Input input(bytes);
    const std::string_view identifier = input.field();
    std::string answer(input.field());
    std::string expected = answer;
    Differences differences;
    for (const std::string& line : linesAsRead(input.rest())) {
        torvapdm::applySettingLine(line, identifier, answer);
        expected = plainValue(line, identifier, expected);
        differences.compare("value", answer, expected);
    }
    return differences.text();
}

} // namespace

Target settingsLineTarget()
{
    return {"settings_line",
            checkSettingsLine,
            {"UseFtpServer\x1F\x1FUseFtpServer=y\nXUseFtpServer=n\n",
             "UseFtpServer\x1Fy\x1FUseFtpServer=y", "MCXCATIA\x1Fn\x1FMCXCATIA\r\nMCXCATIA=Y\r\n",
             "A\x1F\x1F"
             "A==\n=A\nA=",
             "A\x1Fold\x1F" + std::string(1020, ' ') + "A=y\n"},
            {"UseFtpServer", "MCXCATIA", "=", "\n", "\r\n", "=y", "=Y", "\x1F", "\xEF\xBB\xBF"}};
}

} // namespace fuzzing
