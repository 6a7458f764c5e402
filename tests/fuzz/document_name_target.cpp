// The document's name and the window's title: title, path.
#include "incoming/document_name.h"
#include "fuzz/differences.h"
#include "fuzz/input.h"
#include "fuzz/plain_text.h"
#include "fuzz/targets.h"

namespace fuzzing {

namespace {

std::wstring plainMcamName(const std::wstring& path)
{
    const long long dot = lastOf(path, '.');
    return (dot < 0 ? path : between(path, 0, dot)) + L".mcam";
}

std::wstring plainTitle(const std::wstring& title, const std::wstring& name)
{
    size_t kept = title.size();
    for (size_t i = 0; i + 1 < title.size(); ++i)
        if (title[i] == L' ' && title[i + 1] == L' ')
            kept = i;
    std::wstring result = between(title, 0, static_cast<long long>(kept)) + L"  ";
    for (const wchar_t unit : name) {
        const long long letter = firstOf(std::string_view("abcdefghijklmnopqrstuvwxyz"),
                                         unit < 0x80 ? static_cast<char>(unit) : '\0');
        result += letter < 0 ? unit : L"ABCDEFGHIJKLMNOPQRSTUVWXYZ"[letter];
    }
    return result;
}

std::string checkDocumentName(std::string_view bytes)
{
    Input input(bytes);
    const std::wstring title = input.wideField();
    const std::wstring path = input.wideRest();
    Differences differences;
    differences.compare("name", torvapdm::mcamNameOf(path), plainMcamName(path));
    differences.compare("title", torvapdm::titleForDocument(title, path), plainTitle(title, path));
    return differences.text();
}

} // namespace

Target documentNameTarget()
{
    return {"document_name",
            checkDocumentName,
            {"Host - part  C:\\OLD.MCAM\x1F"
             "C:\\Parts\\new.mcam",
             "Host\x1F"
             "C:\\a.b\\part",
             "a   b\x1F"
             "part.emcam",
             "\x1F", "  \x1F...",
             "t\x1F"
             "C:\\\x01\x01\x61\x01\x01\x7A.m"},
            {".", "  ", "\\", ".mcam", "C:\\", "/", "\x1F"}};
}

} // namespace fuzzing
