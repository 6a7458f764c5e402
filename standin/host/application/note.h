// The note at the lower edge of the main window, set through control.h.
#pragma once

#include <string>

namespace standin {

std::wstring shownNote();

} // namespace standin
