#include "standin/companion/ui/panes.h"

#include "standin/companion/ui/list_view.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>

namespace companion {
namespace {

constexpr int mostEventRows = 2000;

HWND createChild(HWND parent, const wchar_t* windowClass, const wchar_t* text, DWORD style, int id)
{
    return CreateWindowExW(0, windowClass, text, WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0, parent,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                           GetModuleHandleW(nullptr), nullptr);
}

HWND createTitle(HWND parent, const wchar_t* text)
{
    return createChild(parent, L"STATIC", text, SS_LEFTNOWORDWRAP | SS_NOPREFIX, -1);
}

HWND createButton(HWND parent, const wchar_t* text, DWORD style, int id)
{
    return createChild(parent, L"BUTTON", text, WS_TABSTOP | style, id);
}

void createLists(HWND parent, const Look& look, Panes& panes)
{
    panes.library = createList(parent, libraryId);
    setColumns(panes.library, {{L"No.", 44, true},
                               {L"Name", 104},
                               {L"Version", 58, true},
                               {L"Operations", 82, true},
                               {L"Description", 0}});
    panes.hosts = createList(parent, hostsId);
    setColumns(panes.hosts, {{L"Process", 64, true}, {L"Title", 0}});
    panes.versions = createVersionPane(parent, versionsId, look);
    panes.events = createList(parent, eventsId);
    setColumns(panes.events, {{L"Time", 96}, {L"Event", 132}, {L"Details", 0}});
}

void setFonts(const Panes& panes, const Look& look)
{
    const auto setFont = [](std::initializer_list<HWND> windows, HGDIOBJ font) {
        for (HWND window : windows)
            SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    };
    setFont({panes.library, panes.hosts, panes.events, panes.newFile, panes.checkIn, panes.hint,
             panes.status},
            look.text.get());
    setFont({panes.libraryTitle, panes.hostsTitle, panes.eventsTitle, panes.send},
            look.title.get());
}

void setText(HWND window, const std::wstring& text)
{
    wchar_t shown[512];
    GetWindowTextW(window, shown, static_cast<int>(std::size(shown)));
    if (text != shown)
        SetWindowTextW(window, text.c_str());
}

std::wstring hostsTitle(size_t count)
{
    return count == 0 ? L"Mastercam: none running"
                      : L"Mastercam: " + std::to_wstring(count) + L" running";
}

const LibraryItem* chosenItem(const Panes& panes, const State& state)
{
    const auto number = chosenNumber(panes);
    return number ? findItem(state.library.index, std::to_wstring(*number)) : nullptr;
}

std::wstring hintText(const LibraryItem* item, std::optional<std::uint32_t> host)
{
    if (!host)
        return L"Start Mastercam to send a part to it.";
    if (item == nullptr)
        return L"Choose a part of the library to send.";
    return L"Sends " + item->name + L", version " + std::to_wstring(item->version) +
           L", to Mastercam " + std::to_wstring(*host) + L".";
}

} // namespace

Panes createPanes(HWND parent, const Look& look)
{
    Panes panes;
    panes.libraryTitle = createTitle(parent, L"Part library");
    panes.hostsTitle = createTitle(parent, L"");
    panes.eventsTitle = createTitle(parent, L"Events");
    constexpr DWORD line = SS_LEFTNOWORDWRAP | SS_NOPREFIX | SS_CENTERIMAGE | SS_ENDELLIPSIS;
    panes.hint = createChild(parent, L"STATIC", L"", line, -1);
    panes.status = createChild(parent, L"STATIC", L"", line, statusId);
    createLists(parent, look, panes);
    panes.send = createButton(parent, L"Send to host", BS_DEFPUSHBUTTON, sendId);
    panes.newFile = createButton(parent, L"New file", BS_PUSHBUTTON, newFileId);
    panes.checkIn = createButton(parent, L"Check in", BS_PUSHBUTTON, checkInId);
    setFonts(panes, look);
    return panes;
}

void placePanes(const Panes& panes, int clientWidth, int clientHeight)
{
    const WindowLayout layout = layOutWindow(clientWidth, clientHeight);
    moveTo(panes.libraryTitle, layout.libraryTitle);
    moveTo(panes.library, layout.library);
    moveTo(panes.hostsTitle, layout.hostsTitle);
    moveTo(panes.hosts, layout.hosts);
    moveTo(panes.send, layout.send);
    moveTo(panes.newFile, layout.newFile);
    moveTo(panes.checkIn, layout.checkIn);
    moveTo(panes.hint, layout.hint);
    placeVersionPane(panes.versions, layout);
    moveTo(panes.eventsTitle, layout.eventsTitle);
    moveTo(panes.events, layout.events);
    moveTo(panes.status, layout.status);
    for (HWND list : {panes.library, panes.hosts, panes.events})
        fitLastColumn(list);
}

void showLibrary(const Panes& panes, const State& state)
{
    std::vector<ListRow> rows;
    for (size_t i = 0; i < state.library.index.items.size(); ++i) {
        const LibraryItem& item = state.library.index.items[i];
        rows.push_back({{std::to_wstring(item.number), item.name, std::to_wstring(item.version),
                         std::to_wstring(state.library.operations[i]), item.description},
                        item.number});
    }
    setRows(panes.library, rows);
}

void showHosts(const Panes& panes, const State& state)
{
    std::vector<ListRow> rows;
    for (const peer::Host& host : state.hosts)
        rows.push_back({{std::to_wstring(host.process), host.title}, host.process});
    setRows(panes.hosts, rows);
    setText(panes.hostsTitle, hostsTitle(rows.size()));
}

void showNewEvents(const Panes& panes, EventLog& log)
{
    const std::vector<EventRow> events = takeNewRows(log);
    const size_t shown = std::min(events.size(), size_t{mostEventRows});
    for (const EventRow& event : events)
        if (!event.status.empty())
            setText(panes.status, event.status);
    std::vector<ListRow> rows;
    for (auto row = events.end() - static_cast<std::ptrdiff_t>(shown); row != events.end(); ++row)
        rows.push_back({{row->time, row->title, row->details}});
    if (!rows.empty())
        appendRows(panes.events, rows, mostEventRows);
}

void showChoice(Panes& panes, const State& state)
{
    const LibraryItem* item = chosenItem(panes, state);
    const auto host = chosenHost(panes);
    EnableWindow(panes.send, host && item != nullptr);
    EnableWindow(panes.newFile, host.has_value());
    EnableWindow(panes.checkIn, host.has_value());
    setText(panes.hint, hintText(item, host));
    showVersions(panes.versions, state.folder, item);
}

std::optional<std::int32_t> chosenNumber(const Panes& panes)
{
    const auto key = selectedKey(panes.library);
    return key ? std::optional(static_cast<std::int32_t>(*key)) : std::nullopt;
}

std::optional<std::uint32_t> chosenHost(const Panes& panes)
{
    const auto key = selectedKey(panes.hosts);
    return key ? std::optional(static_cast<std::uint32_t>(*key)) : std::nullopt;
}

} // namespace companion
