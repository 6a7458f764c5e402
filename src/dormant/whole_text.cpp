#include "dormant/whole_text.h"

#include <cstdio>
#include <iterator>

namespace torvapdm {

std::wstring readWholeText(const std::wstring& path)
{
    std::wstring text;
    FILE* const file = _wfopen(path.c_str(), L"rtS, ccs=UTF-8");
    if (!file) {
        std::fputs("File Open Error\n", stdout);
        return text;
    }
    std::fputs("File Open Success\n", stdout);
    wchar_t piece[1024];
    while (std::fgetws(piece, static_cast<int>(std::size(piece)), file))
        text += piece;
    std::fclose(file);
    return text;
}

} // namespace torvapdm
