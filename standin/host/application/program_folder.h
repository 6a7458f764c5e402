// The folder of the host's programs.
#pragma once

#include <string>

namespace standin {

// Where this library lies; ends in a backslash.
std::wstring programFolder();

} // namespace standin
