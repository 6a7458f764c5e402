#include "application/file_dialog.h"

#include <bit>

#include <commdlg.h>

namespace standin {

namespace {

constexpr DWORD longestPath = 4096;

OPENFILENAMEW dialogFor(HWND parent, std::wstring& path)
{
    path.resize(longestPath);
    OPENFILENAMEW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = parent;
    dialog.lpstrFilter = L"Part files (*.mcam, *.emcam)\0*.mcam;*.emcam\0All files\0*.*\0";
    dialog.lpstrFile = path.data();
    dialog.nMaxFile = longestPath;
    dialog.lpstrDefExt = L"mcam";
    // The current folder belongs to the process, so to the add-in too.
    dialog.Flags = OFN_NOCHANGEDIR;
    return dialog;
}

// The system's dialogs bring six more libraries into the process, which few starts of the host
// need.
bool show(const char* dialogFunction, OPENFILENAMEW& dialog)
{
    static const HMODULE dialogs = LoadLibraryW(L"comdlg32.dll");
    using Show = BOOL(WINAPI*)(OPENFILENAMEW*);
    const auto showIt =
        dialogs ? std::bit_cast<Show>(GetProcAddress(dialogs, dialogFunction)) : nullptr;
    return showIt && showIt(&dialog);
}

std::wstring upToNul(const std::wstring& text)
{
    return text.substr(0, text.find(L'\0'));
}

} // namespace

std::optional<std::wstring> askForOpenPath(HWND parent)
{
    std::wstring path;
    OPENFILENAMEW dialog = dialogFor(parent, path);
    dialog.Flags |= OFN_FILEMUSTEXIST;
    if (!show("GetOpenFileNameW", dialog))
        return std::nullopt;
    return upToNul(path);
}

std::optional<std::wstring> askForSavePath(HWND parent, const std::wstring& name)
{
    std::wstring path = name;
    OPENFILENAMEW dialog = dialogFor(parent, path);
    dialog.Flags |= OFN_OVERWRITEPROMPT;
    if (!show("GetSaveFileNameW", dialog))
        return std::nullopt;
    return upToNul(path);
}

} // namespace standin
