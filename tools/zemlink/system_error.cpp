#include "tools/zemlink/system_error.h"

#include "peer/text.h"

#include <windows.h>

namespace zemlink {

std::string systemErrorText(std::uint32_t code)
{
    wchar_t words[512];
    const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS |
                                            FORMAT_MESSAGE_MAX_WIDTH_MASK, // no line ends
                                        nullptr, code, 0, words, 512, nullptr);
    std::string text = companion::toUtf8(std::wstring_view(words, length));
    while (text.ends_with(' '))
        text.pop_back();
    return (text.empty() ? "The system has no words for it." : text) + " (error " +
           std::to_string(code) + ")";
}

Result resultOf(bool isFine, std::uint32_t code)
{
    return isFine ? Result{} : Result{code, systemErrorText(code)};
}

} // namespace zemlink
