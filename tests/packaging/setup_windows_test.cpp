// The windows of the setup program.
#include "packaging/setup_fixture.h"
#include "support/host_program.h"

#include <tlhelp32.h>

using namespace testing_support;

namespace {

struct ControlSearch {
    DWORD process;
    std::wstring className;
    std::wstring text;
    HWND found = nullptr;
};

std::wstring textOf(HWND window)
{
    wchar_t text[1024] = L"";
    DWORD_PTR length = 0;
    SendMessageTimeoutW(window, WM_GETTEXT, std::size(text), reinterpret_cast<LPARAM>(text),
                        SMTO_NORMAL, 1000, &length);
    return text;
}

BOOL CALLBACK stopAtControl(HWND window, LPARAM parameter)
{
    auto& search = *reinterpret_cast<ControlSearch*>(parameter);
    wchar_t className[64] = L"";
    GetClassNameW(window, className, 64);
    if (!IsWindowVisible(window) || !IsWindowEnabled(window) || search.className != className ||
        textOf(window).find(search.text) == std::wstring::npos)
        return TRUE;
    search.found = window;
    return FALSE;
}

BOOL CALLBACK searchControls(HWND window, LPARAM parameter)
{
    auto& search = *reinterpret_cast<ControlSearch*>(parameter);
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    if (owner == search.process && IsWindowVisible(window))
        EnumChildWindows(window, stopAtControl, parameter);
    return search.found == nullptr;
}

// Waits for a visible, enabled control of this class whose text contains this one; null on timeout.
HWND control(const Process& setup, const std::wstring& className, const std::wstring& text = L"")
{
    ControlSearch search{setup.id(), className, text};
    waitUntil([&] {
        EnumWindows(searchControls, reinterpret_cast<LPARAM>(&search));
        return search.found != nullptr || !setup.isRunning();
    });
    return search.found;
}

// Not with a click, which an inactive window ignores.
void press(const Process& setup, const std::wstring& button)
{
    const HWND found = control(setup, L"Button", button);
    ASSERT_NE(found, nullptr) << toUtf8(button);
    PostMessageW(GetParent(found), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(found), BN_CLICKED),
                 reinterpret_cast<LPARAM>(found));
}

// The running programs that this process started.
std::vector<DWORD> childrenOf(DWORD processId)
{
    std::vector<DWORD> children;
    const HANDLE processes = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32W found{};
    found.dwSize = sizeof found;
    for (BOOL isThere = Process32FirstW(processes, &found); isThere;
         isThere = Process32NextW(processes, &found))
        if (found.th32ParentProcessID == processId)
            children.push_back(found.th32ProcessID);
    CloseHandle(processes);
    return children;
}

// What the console of this process shows; empty if it has none.
std::wstring consoleText(DWORD processId)
{
    FreeConsole();
    if (!AttachConsole(processId))
        return L"";
    std::wstring text(80 * 25, L' ');
    DWORD length = 0;
    const HANDLE screen =
        CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                    nullptr, OPEN_EXISTING, 0, nullptr);
    ReadConsoleOutputCharacterW(screen, text.data(), static_cast<DWORD>(text.size()), {0, 0},
                                &length);
    CloseHandle(screen);
    FreeConsole();
    return text.substr(0, length);
}

} // namespace

TEST_F(Setup, offersTheFolderOfARunningHost)
{
    const std::wstring withHooks = installation.path(L"Mastercam 2");
    layOutHost(withHooks);
    std::filesystem::create_directory(withHooks + L"\\chooks");
    const Process first(quoted(site.hostFolder + L"\\Mastercam.exe"));
    const Process second(quoted(withHooks + L"\\Mastercam.exe"));
    const Process setup{quoted(setupProgram())};
    const HWND folder = control(setup, L"Edit");
    ASSERT_NE(folder, nullptr);
    EXPECT_EQ(textOf(folder), withHooks);
    press(setup, L"Cancel");
    EXPECT_EQ(setup.waitForExit(), 1u);
    EXPECT_TRUE(setupLog().back().ends_with(L"Cancelled by the user. Exit code 1."));
}

TEST_F(Setup, offersToCheckTheInstallation)
{
    // The console runs as the user of the desktop's shell, here of this process.
    const HWND shell =
        CreateWindowW(L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    using SetShellWindow = BOOL(WINAPI*)(HWND);
    const FARPROC setShell = GetProcAddress(GetModuleHandleW(L"user32.dll"), "SetShellWindow");
    EXPECT_TRUE(reinterpret_cast<SetShellWindow>(reinterpret_cast<void*>(setShell))(shell));
    EXPECT_EQ(GetShellWindow(), shell);
    const Process setup(quoted(setupProgram()) + L" /HOST=" + quoted(installation.root()) +
                        L" /D=" + site.addInFolder);
    press(setup, L"&Next");
    EXPECT_NE(control(setup, L"Static", L"torvapdm-setup.log"), nullptr); // the error names the log
    press(setup, L"OK");
    const HWND folder = control(setup, L"Edit");
    ASSERT_NE(folder, nullptr);
    SendMessageW(folder, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(site.hostFolder.c_str()));
    press(setup, L"&Next");
    press(setup, L"&Install");
    const HWND check = control(setup, L"Button", L"Check the installation");
    ASSERT_NE(check, nullptr);
    EXPECT_NE(control(setup, L"Static", L"\"zemlink doctor\""), nullptr);
    EXPECT_NE(control(setup, L"Static", L"torvapdm-setup.log"), nullptr);
    std::filesystem::copy_file(programFolder() + L"start_recorder.exe",
                               site.addInFolder + L"\\zemlink.exe",
                               std::filesystem::copy_options::overwrite_existing);
    SendMessageW(check, BM_SETCHECK, BST_CHECKED, 0);
    press(setup, L"&Finish");
    EXPECT_EQ(setup.waitForExit(), done);
    EXPECT_TRUE(waitUntil([&] {
        return installed(L"starts.txt").value_or("").find(" doctor\n") != std::string::npos;
    }));
    const std::vector<DWORD> consoles = childrenOf(setup.id());
    ASSERT_EQ(consoles.size(), 1u);
    // The prompt shows that the console stays open.
    EXPECT_TRUE(waitUntil(
        [&] { return consoleText(consoles[0]).find(L"ZEM add-in>") != std::wstring::npos; }));
    const HANDLE console = OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, consoles[0]);
    TerminateProcess(console, 0);
    WaitForSingleObject(console, generousMs);
    CloseHandle(console);
}

TEST_F(Setup, showsItsOptions)
{
    const Process setup(quoted(setupProgram()) + L" /?");
    EXPECT_NE(control(setup, L"Static", L"/LOG=FILE"), nullptr);
    press(setup, L"OK");
    EXPECT_EQ(setup.waitForExit(), done);
    expectNothingInstalled();
}
