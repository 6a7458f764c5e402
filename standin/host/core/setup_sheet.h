// The host's setup sheet: what the workshop needs to know of the operations of the open part.
#pragma once

#include <string>
#include <vector>

namespace standin {

// The files of a setup sheet run: those the host was told to report or, when it was told none, one
// document in the temporary folder; none for a part without operations or when it cannot be
// written.
std::vector<std::wstring> runSetupSheet();

// The files of a run that fails: those the host was told to report, none of its own.
std::vector<std::wstring> failSetupSheet();

} // namespace standin
