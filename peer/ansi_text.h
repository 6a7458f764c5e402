// 8-bit text of the system's ANSI code page, as reports hold it.
#pragma once

#include "peer/text.h"

#include <string>
#include <string_view>

namespace zemlink {

inline std::string ansiToUtf8(std::string_view bytes)
{
    return companion::toUtf8(companion::fromAnsi(bytes));
}

} // namespace zemlink
