#include "standin/companion/ui/window.h"

#include "peer/command_line.h"
#include "peer/running_programs.h"
#include "peer/wire_constants.h"
#include "standin/companion/app/commands.h"
#include "standin/companion/app/notices.h"
#include "standin/companion/app/resource.h"
#include "standin/companion/log/event_text.h"
#include "standin/companion/ui/about.h"
#include "standin/companion/ui/list_view.h"
#include "standin/companion/ui/panes.h"
#include "standin/companion/ui/queue_window.h"
#include "standin/companion/ui/sheet_window.h"
#include "standin/companion/ui/tool_window.h"

#include <commctrl.h>

#include <memory>
#include <variant>

namespace companion {
namespace {

constexpr wchar_t mainClass[] = L"ZemMainWindow";
constexpr UINT newEvents = WM_APP + 1;
constexpr UINT newLines = WM_APP + 2;
constexpr UINT_PTR refreshTimer = 1;
constexpr UINT refreshEveryMs = 1000;
// Commits are polled with a timer, even without a delay: timer messages come after user input.
constexpr UINT_PTR commitTimer = 2;
constexpr UINT commitsEveryMs = 500;
constexpr UINT commitsAtOnceMs = USER_TIMER_MINIMUM;
constexpr int leastWidth = 480;
constexpr int leastHeight = 610;

struct MainWindow {
    HWND window = nullptr;
    State* state = nullptr;
    Look look;
    Panes panes;
};

MainWindow* mainWindowOf(HWND window)
{
    return reinterpret_cast<MainWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

void bringForward(HWND window)
{
    ShowWindow(window, IsIconic(window) ? SW_RESTORE : SW_SHOW);
    SetForegroundWindow(window);
    BringWindowToTop(window);
}

void showEverything(MainWindow& main)
{
    showLibrary(main.panes, *main.state);
    showHosts(main.panes, *main.state);
    showChoice(main.panes, *main.state);
}

void refresh(MainWindow& main)
{
    if (refreshLibrary(main.state->library, main.state->folder, main.state->log))
        showLibrary(main.panes, *main.state);
    if (refreshHosts(*main.state))
        showHosts(main.panes, *main.state);
    showChoice(main.panes, *main.state);
}

void lookForCommits(MainWindow& main, UINT inMs)
{
    SetTimer(main.window, commitTimer, inMs, nullptr);
}

void receiveCommits(MainWindow& main)
{
    const CommitProgress progress = takeCommits(*main.state);
    lookForCommits(main, progress.isMoreWaiting ? commitsAtOnceMs : commitsEveryMs);
    if (progress.isLibraryTouched) {
        showLibrary(main.panes, *main.state);
        showChoice(main.panes, *main.state);
    }
}

void create(MainWindow& main)
{
    main.look = makeLook();
    main.panes = createPanes(main.window, main.look);
    refreshLibrary(main.state->library, main.state->folder, main.state->log);
    refreshHosts(*main.state);
    showEverything(main);
    showEventsIn(main.state->log, main.window, newEvents);
    SetTimer(main.window, refreshTimer, refreshEveryMs, nullptr);
    lookForCommits(main, commitsAtOnceMs); // an ended process may have left some
    // A host that finds the property may send a notice immediately.
    startListening(main.state->lines, main.state->log, main.window, newLines);
    SetPropW(main.window, peer::instanceProperty, reinterpret_cast<HANDLE>(INT_PTR{1}));
}

// Shows what a notice announced.
struct ShowIn {
    HWND owner;

    void operator()(std::monostate) const {}
    void operator()(const ReceivedSheet& sheet) const { showSheet(owner, sheet); }
    void operator()(const ReceivedQueue& queue) const { showQueue(owner, queue); }
    void operator()(const ReceivedTools& tools) const { showTools(owner, tools); }
};

void receiveNotices(MainWindow& main)
{
    for (const std::string& line : takeNotices(main.state->lines))
        std::visit(ShowIn{main.window}, receiveNotice(main.state->log, main.state->folder, line));
    lookForCommits(main, commitsAtOnceMs); // one of the notices may announce a commit
}

// Handles the notices and commits that arrived before the end; they are not shown any more. The
// message loop is stopped first, so that it ends even if memory runs out meanwhile.
void destroy(MainWindow& main)
{
    PostQuitMessage(0);
    RemovePropW(main.window, peer::instanceProperty);
    KillTimer(main.window, refreshTimer);
    KillTimer(main.window, commitTimer);
    showEventsIn(main.state->log, nullptr, 0);
    stopListening(main.state->lines);
    for (const std::string& line : takeNotices(main.state->lines))
        receiveNotice(main.state->log, main.state->folder, line);
    finishCommits(*main.state);
}

void paintHeader(MainWindow& main)
{
    PAINTSTRUCT paint{};
    RECT client{};
    HDC context = BeginPaint(main.window, &paint);
    GetClientRect(main.window, &client);
    const Area header = layOutWindow(client.right, client.bottom).header;
    const int half = header.width / 2;
    fillArea(context, header, headerColour);
    fillArea(context, {0, header.height - 3, header.width, 3}, accentColour);
    drawLine(context, {16, 6, half, 28}, peer::productName, main.look.product.get(),
             headerTextColour, DT_LEFT | DT_VCENTER);
    drawLine(context, {16, 33, half, 18}, L"Part files for machine tools", main.look.text.get(),
             faintHeaderTextColour, DT_LEFT | DT_VCENTER);
    drawLine(context, {half, 33, half - 16, 18}, main.state->folder, main.look.text.get(),
             faintHeaderTextColour, DT_RIGHT | DT_VCENTER);
    EndPaint(main.window, &paint);
}

// The buttons carry out the commands of the command line for the selected rows.
void pressButton(MainWindow& main, int id)
{
    peer::Command command;
    command.host = chosenHost(main.panes);
    if (id == sendId) {
        command.word = peer::Word::send;
        command.value = std::to_wstring(chosenNumber(main.panes).value_or(0));
    } else {
        command.word = id == newFileId ? peer::Word::newFile : peer::Word::checkIn;
    }
    carryOut(*main.state, command, {});
    showEverything(main);
}

void showHelp(HWND window)
{
    MessageBoxW(window, (L"TORVA-ZEM.exe with one of:\n\n" + peer::commandLineHelp()).c_str(),
                L"Command line of TORVA ZEM", MB_OK);
}

HMENU createMenuBar()
{
    const HMENU help = CreatePopupMenu();
    AppendMenuW(help, MF_STRING, helpId, L"&Command Line...");
    AppendMenuW(help, MF_STRING, aboutId, L"&About TORVA ZEM...");
    const HMENU bar = CreateMenu();
    AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(help), L"&Help");
    return bar;
}

// Pressing Return in a list arrives as IDOK.
void receiveClick(MainWindow& main, int id, int code)
{
    if (id == IDOK && IsWindowEnabled(main.panes.send))
        pressButton(main, sendId);
    if (code == BN_CLICKED && (id == sendId || id == newFileId || id == checkInId))
        pressButton(main, id);
    if (id == helpId)
        showHelp(main.window);
    if (id == aboutId)
        showAbout(main.window, 0);
}

LRESULT receiveNotice(MainWindow& main, LPARAM lParam)
{
    const auto& notice = *reinterpret_cast<const NMHDR*>(lParam);
    if (notice.code == NM_CUSTOMDRAW)
        return drawListRow(*reinterpret_cast<NMLVCUSTOMDRAW*>(lParam));
    if (notice.code == LVN_ITEMCHANGED)
        showChoice(main.panes, *main.state);
    if (notice.code == NM_DBLCLK && notice.idFrom == libraryId && IsWindowEnabled(main.panes.send))
        pressButton(main, sendId);
    return 0;
}

LRESULT receiveCopyData(HWND window, LPARAM lParam)
{
    const auto arguments = peer::parseHandedOver(lParam);
    if (!arguments)
        return 0;
    return receiveArguments(window, *arguments) ? peer::answerCarriedOut
                                                : peer::answerNotCarriedOut;
}

LRESULT colourOfText(const MainWindow& main, WPARAM wParam)
{
    HDC context = reinterpret_cast<HDC>(wParam);
    SetTextColor(context, titleColour);
    SetBkColor(context, backgroundColour);
    return reinterpret_cast<LRESULT>(main.look.background.get());
}

void limitSize(LPARAM lParam)
{
    reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {leastWidth, leastHeight};
}

LRESULT receive(MainWindow& main, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_CREATE:
        create(main);
        return 0;
    case WM_SIZE:
        placePanes(main.panes, LOWORD(lParam), HIWORD(lParam));
        InvalidateRect(main.window, nullptr, TRUE);
        return 0;
    case WM_GETMINMAXINFO:
        limitSize(lParam);
        return 0;
    case WM_ERASEBKGND: {
        RECT client{};
        GetClientRect(main.window, &client);
        fillArea(reinterpret_cast<HDC>(wParam), {0, 0, client.right, client.bottom},
                 backgroundColour);
        return 1;
    }
    case WM_PAINT:
        paintHeader(main);
        return 0;
    case WM_CTLCOLORSTATIC:
        return colourOfText(main, wParam);
    case WM_SETFOCUS:
        SetFocus(main.panes.library);
        return 0;
    case WM_TIMER:
        if (wParam == commitTimer)
            receiveCommits(main);
        else
            refresh(main);
        return 0;
    case newEvents:
        showNewEvents(main.panes, main.state->log);
        return 0;
    case newLines:
        receiveNotices(main);
        return 0;
    case WM_COMMAND:
        receiveClick(main, LOWORD(wParam), HIWORD(wParam));
        return 0;
    case WM_NOTIFY:
        return receiveNotice(main, lParam);
    case WM_COPYDATA:
        return receiveCopyData(main.window, lParam);
    case WM_DESTROY:
        destroy(main);
        return 0;
    default:
        return DefWindowProcW(main.window, message, wParam, lParam);
    }
}

LRESULT CALLBACK mainProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_NCCREATE) {
        auto* main = static_cast<MainWindow*>(
            reinterpret_cast<const CREATESTRUCTW*>(lParam)->lpCreateParams);
        main->window = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(main));
    }
    MainWindow* main = mainWindowOf(window);
    if (message == WM_NCDESTROY) {
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        const std::unique_ptr<MainWindow> owned(main);
        return DefWindowProcW(window, message, wParam, lParam);
    }
    if (main == nullptr)
        return DefWindowProcW(window, message, wParam, lParam);
    try {
        return receive(*main, message, wParam, lParam);
    } catch (...) {
        return 0; // out of memory; Windows cannot handle exceptions
    }
}

void registerMainClass()
{
    WNDCLASSEXW record{};
    record.cbSize = sizeof record;
    record.lpfnWndProc = mainProcedure;
    record.hInstance = GetModuleHandleW(nullptr);
    record.hIcon = LoadIconW(record.hInstance, MAKEINTRESOURCEW(IDI_COMPANION));
    record.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    record.lpszClassName = mainClass;
    RegisterClassExW(&record);
}

Area firstPlace()
{
    RECT work{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    return placeWindow({work.left, work.top, work.right - work.left, work.bottom - work.top});
}

bool carryOutInWindow(MainWindow& main, const peer::Command& command, const std::wstring& arguments)
{
    const std::uint32_t parent = command.parentWindow.value_or(0);
    switch (command.word) {
    case peer::Word::none:
        bringForward(main.window);
        return true;
    case peer::Word::about:
        logEvent(main.state->log, L"about", numberField(L"parent", parent));
        showAbout(main.window, parent);
        return true;
    case peer::Word::quit:
        // Posted, so that the start that requested it gets its answer first.
        PostMessageW(main.window, WM_CLOSE, 0, 0);
        return true;
    default:
        return carryOut(*main.state, command, arguments);
    }
}

} // namespace

HWND createMainWindow(State& state)
{
    const INITCOMMONCONTROLSEX controls{sizeof controls, ICC_LISTVIEW_CLASSES};
    InitCommonControlsEx(&controls);
    registerMainClass();
    auto main = std::make_unique<MainWindow>();
    main->state = &state;
    const Area place = firstPlace();
    // The window owns the record from WM_NCCREATE to WM_NCDESTROY.
    HWND window = CreateWindowExW(WS_EX_CONTROLPARENT, mainClass, peer::productName,
                                  WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, place.left, place.top,
                                  place.width, place.height, nullptr, createMenuBar(),
                                  GetModuleHandleW(nullptr), main.release());
    if (window != nullptr) {
        // A start with arguments requests a hidden window, and the first ShowWindow call uses that
        // instead of its argument. The window of the running instance must be visible.
        ShowWindow(window, SW_SHOWNORMAL);
        ShowWindow(window, SW_SHOWNORMAL);
        UpdateWindow(window);
    }
    return window;
}

bool receiveArguments(HWND window, const std::wstring& arguments)
{
    MainWindow* main = mainWindowOf(window);
    if (main == nullptr)
        return false;
    logEvent(main->state->log, L"command", textField(L"text", arguments));
    const bool isCarriedOut = carryOutInWindow(*main, peer::parseCommandLine(arguments), arguments);
    lookForCommits(*main, commitsAtOnceMs); // the command may have added a commit
    showEverything(*main);
    return isCarriedOut;
}

} // namespace companion
