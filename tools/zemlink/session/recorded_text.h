// Changes the texts inside a recording's exchanges and leaves their form as it is.
#pragma once

#include "tools/zemlink/session/recording.h"

#include <functional>
#include <string>
#include <string_view>

namespace zemlink {

using TextChange = std::function<std::wstring(std::wstring_view)>;

// Changes the path of the event's file and the texts in its bytes. A picture has no text. A
// character that the ANSI code page lacks becomes a question mark.
void changeTexts(ExchangeEvent& event, const TextChange& change);

// The recording as it would be in another installation folder.
Recording relocated(Recording recording, const std::wstring& folder);

} // namespace zemlink
