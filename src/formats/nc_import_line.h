// How one line of the settings file answers the NC-import switch. No platform header: this is a
// decision.
#pragma once

#include <string>
#include <string_view>

namespace torvapdm {

inline constexpr char ncImportKey[] = "MCXIMPORTNC";

// Applies one line to the answer so far, "y" or "n".
void applyNcImportLine(std::string_view line, std::string& answer);

} // namespace torvapdm
