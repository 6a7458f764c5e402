// The host's setup sheet: a report on the operations of the open part.
#pragma once

#include <string>
#include <vector>

namespace standin {

// The files of a setup-sheet run: those set by a script or, if none are set, one file in the
// temporary folder. Empty for a part without operations, or if the file cannot be written.
std::vector<std::wstring> runSetupSheet();

// The files of a failing run: only those set by a script.
std::vector<std::wstring> failSetupSheet();

} // namespace standin
