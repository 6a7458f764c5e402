#include "incoming/document_name.h"

#include <algorithm>

namespace torvapdm {

namespace {

std::wstring upperCased(std::wstring text)
{
    std::transform(text.begin(), text.end(), text.begin(), [](wchar_t c) {
        return c >= L'a' && c <= L'z' ? static_cast<wchar_t>(c - L'a' + L'A') : c;
    });
    return text;
}

} // namespace

// Quirk Q41: the last dot of the whole path counts, so "C:\a.b\part" becomes "C:\a.mcam".
std::wstring mcamNameOf(const std::wstring& path)
{
    return path.substr(0, path.rfind(L'.')) + L".mcam";
}

std::wstring titleForDocument(const std::wstring& title, const std::wstring& name)
{
    const std::wstring separator = L"  ";
    return title.substr(0, title.rfind(separator)) + separator + upperCased(name);
}

} // namespace torvapdm
