// The host operations of Mastercam.dll: the application interface, and opening, saving and
// picturing the document.
#include "application/main_window.h"
#include "application/message_loop.h"
#include "core/document.h"
#include "core/host_call.h"
#include "host/mastercam.h"
#include "view/view.h"

#include <string>

using namespace standin;

namespace {

// The folder of this DLL, with a backslash at its end.
std::wstring programFolder()
{
    wchar_t path[MAX_PATH] = L"";
    GetModuleFileNameW(ownModule(), path, MAX_PATH);
    const std::wstring whole = path;
    return whole.substr(0, whole.rfind(L'\\') + 1);
}

class View final : public CMastercamView {
public:
    void position0() override
    {
        act("CMastercamView.position0", callLine("CMastercamView.position0"), repaintView);
    }
};

class ApplicationInterface final : public CMastercamInterface {
public:
    CString position0(const int* selector) override;
    void position1(const CString& path) override;
    CMastercamView* position2() override;
    void position3() override;
    CWnd* position4() override;
    bool position5() override;

private:
    View view_;
};

CString ApplicationInterface::position0(const int* selector)
{
    constexpr int programs = 1;
    return question("CMastercamInterface.position0", CString(), [&] {
        const bool isKnown = selector && *selector == programs;
        return isKnown ? CString(programFolder().c_str()) : CString();
    });
}

// Only traced: the document keeps its name.
void ApplicationInterface::position1(const CString& path)
{
    act("CMastercamInterface.position1", callLine("CMastercamInterface.position1", path),
        repaintView);
}

CMastercamView* ApplicationInterface::position2()
{
    return question(
        "CMastercamInterface.position2", static_cast<CMastercamView*>(nullptr),
        [this] { return &view_; });
}

void ApplicationInterface::position3()
{
    act("CMastercamInterface.position3", callLine("CMastercamInterface.position3"), repaintView);
}

CWnd* ApplicationInterface::position4()
{
    return question(
        "CMastercamInterface.position4", static_cast<CWnd*>(nullptr), [] { return mainFrame(); });
}

bool ApplicationInterface::position5()
{
    return question("CMastercamInterface.position5", false, processOneMessage);
}

CMastercamInterface* theInterface()
{
    static ApplicationInterface application;
    return &application;
}

// Shows the outcome of what the add-in asked for in the status bar, and returns it.
bool noteOutcome(bool isDone, const std::wstring& done, const std::wstring& failed,
                 const wchar_t* path)
{
    showNote((isDone ? done : failed) + (path ? path : L"no path"));
    return isDone;
}

} // namespace

CMastercamInterface* GetMastercamApp()
{
    return question("GetMastercamApp", static_cast<CMastercamInterface*>(nullptr), theInterface);
}

CMastercamInterface* GetApp()
{
    return question("GetApp", static_cast<CMastercamInterface*>(nullptr), theInterface);
}

CFrameWnd* get_MainFrame()
{
    return question("get_MainFrame", static_cast<CFrameWnd*>(nullptr), mainFrame);
}

bool DoFileOpen(const wchar_t* path, bool merge, bool browse, short mode, bool prompt,
                bool* escaped, FileMergeOptions* mergeOptions)
{
    return act(
        "DoFileOpen",
        callLine("DoFileOpen", path, merge, browse, mode, prompt, escaped, mergeOptions), false,
        [&] {
            if (escaped)
                *escaped = false;
            return noteOutcome(path && openDocument(path), L"Opened for the add-in: ",
                               L"Load failed: ", path);
        },
        [&] { return noteOutcome(false, {}, L"Load failed: ", path); });
}

bool CFile_DoFileSave(const wchar_t* path, CWnd* parent, bool browse, bool prompt)
{
    return act(
        "CFile_DoFileSave", callLine("CFile_DoFileSave", path, parent, browse, prompt), false,
        [&] {
            return noteOutcome(path && saveDocument(path), L"Saved for the add-in: ",
                               L"Save failed: ", path);
        },
        [&] { return noteOutcome(false, {}, L"Save failed: ", path); });
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
