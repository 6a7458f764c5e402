#include "formats/command_lines.h"

#include "formats/decimal.h"
#include "formats/wire_constants.h"

namespace torvapdm {

std::wstring formatCheckoutArguments(const std::wstring& answerFile)
{
    return L"--checkout \"" + answerFile + L'"';
}

// Quirk Q53: the id is passed exactly when none is set, so its value is always 4294967295.
std::wstring formatCommitArguments(std::uint32_t zemId, const std::wstring& file)
{
    const std::wstring arguments = L"--commit \"" + file + L'"';
    return zemId == noZemId ? arguments + L" --id " + formatDecimal(zemId) : arguments;
}

std::wstring formatAboutArguments(std::uint32_t parentWindow)
{
    return L"--about --parentwindow " + formatDecimal(parentWindow);
}

} // namespace torvapdm
