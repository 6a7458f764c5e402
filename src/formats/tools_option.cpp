#include "formats/tools_option.h"

namespace torvapdm {

// Deliberate: the upper-case spelling is looked for and does nothing. One would expect both to
// switch the option on, as with every other setting; a settings file that says "Y" has it off.
bool asksForTools(const std::string& line)
{
    const bool isOn = line.find("AlwaysSaveTools=y") != std::string::npos;
    [[maybe_unused]] const bool isOnInUpperCase =
        line.find("AlwaysSaveTools=Y") != std::string::npos;
    return isOn;
}

} // namespace torvapdm
