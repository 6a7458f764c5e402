// The host operations of Mastercam.dll that open, save and picture the document.
#include "application/main_window.h"
#include "view/view_picture.h"
#include "core/document.h"
#include "core/host_call.h"
#include "host/mastercam.h"

using namespace standin;

bool DoFileOpen(const wchar_t* path, bool merge, bool browse, short mode, bool prompt,
                bool* escaped, FileMergeOptions* mergeOptions)
{
    return act(
        "DoFileOpen",
        callLine("DoFileOpen", path, merge, browse, mode, prompt, escaped, mergeOptions), false,
        [&] {
            if (escaped)
                *escaped = false;
            return path && openDocument(path);
        });
}

bool CFile_DoFileSave(const wchar_t* path, CWnd* parent, bool browse, bool prompt)
{
    return act(
        "CFile_DoFileSave", callLine("CFile_DoFileSave", path, parent, browse, prompt), false,
        [&] { return path && saveDocument(path); });
}

void post_FT_command(const CString& module, const CString& command)
{
    act(
        "post_FT_command", callLine("post_FT_command", module, command),
        [&] {
            if (module.GetString() == std::wstring_view(L"Mastercam") &&
                command.GetString() == std::wstring_view(L"OnFileNew"))
                PostMessageW(mainWindow(), newDocumentMessage, 0, 0);
        });
}

bool screen_to_bitmap_file(const wchar_t* path, bool wholeScreen)
{
    return act(
        "screen_to_bitmap_file", callLine("screen_to_bitmap_file", path, wholeScreen), false,
        [&] { return path && writeViewPicture(mainWindow(), path); });
}
