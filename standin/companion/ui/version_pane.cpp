#include "standin/companion/ui/version_pane.h"

#include "peer/exchange_paths.h"
#include "peer/files.h"
#include "standin/companion/library/library.h"
#include "standin/companion/library/version_plan.h"
#include "standin/companion/ui/list_view.h"
#include "standin/companion/ui/picture_view.h"

#include <algorithm>
#include <cwchar>
#include <vector>

namespace companion {
namespace {

constexpr std::int32_t mostVersions = 50; // listed, the current one and those before it
constexpr LPARAM currentKey = 0; // key of the row of the current version, whatever its number

std::wstring inLibrary(const std::wstring& folder, const std::wstring& file)
{
    return peer::libraryFolder(folder) + L'\\' + file;
}

// `2026-11-21 10:11`, local time; empty when the file does not exist.
std::wstring savedAt(const std::wstring& path)
{
    WIN32_FILE_ATTRIBUTE_DATA data{};
    SYSTEMTIME universal{};
    SYSTEMTIME local{};
    if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data) ||
        !FileTimeToSystemTime(&data.ftLastWriteTime, &universal) ||
        !SystemTimeToTzSpecificLocalTime(nullptr, &universal, &local))
        return {};
    wchar_t text[32];
    std::swprintf(text, 32, L"%04d-%02d-%02d %02d:%02d", local.wYear, local.wMonth, local.wDay,
                  local.wHour, local.wMinute);
    return text;
}

std::vector<ListRow> versionRows(const std::wstring& folder, const LibraryItem& part)
{
    std::vector<ListRow> rows;
    const std::int32_t last = std::max(part.version - mostVersions, 0);
    for (std::int32_t version = part.version; version > last; --version) {
        const std::wstring file =
            inLibrary(folder, versionFile(peer::VersionPlan{part.number, version, part.name}));
        const std::wstring saved = savedAt(file);
        if (saved.empty())
            continue;
        rows.push_back({{std::to_wstring(version), saved,
                         std::to_wstring(countOperations(peer::readFile(file).value_or("")))},
                        version == part.version ? currentKey : version});
    }
    return rows;
}

void setTitle(HWND window, const std::wstring& text)
{
    SetWindowTextW(window, text.c_str());
}

void showSelectedPicture(VersionPane& pane, const std::wstring& folder)
{
    const auto key = selectedKey(pane.versions);
    const std::int32_t version = !key                 ? 0
                                 : *key == currentKey ? pane.shownVersion
                                                      : static_cast<std::int32_t>(*key);
    const std::wstring title =
        version == 0 ? L"Picture" : L"Picture of version " + std::to_wstring(version);
    const std::wstring shown = pane.shownName + L'\n' + title;
    if (shown == pane.shownPicture)
        return;
    pane.shownPicture = shown;
    setTitle(pane.pictureTitle, title);
    const std::wstring file = pictureFile(peer::VersionPlan{0, version, pane.shownName});
    showPicture(pane.picture, version == 0 ? L"" : inLibrary(folder, file),
                version == 0 ? L"" : L"Version " + std::to_wstring(version) + L" has no picture.");
}

HWND createTitle(HWND parent, const Look& look)
{
    HWND title = CreateWindowExW(
        0, L"STATIC", L"", WS_CHILD | WS_VISIBLE | SS_LEFTNOWORDWRAP | SS_NOPREFIX | SS_ENDELLIPSIS,
        0, 0, 0, 0, parent, nullptr, GetModuleHandleW(nullptr), nullptr);
    SendMessageW(title, WM_SETFONT, reinterpret_cast<WPARAM>(look.title.get()), TRUE);
    return title;
}

} // namespace

VersionPane createVersionPane(HWND parent, int listId, const Look& look)
{
    VersionPane pane;
    pane.title = createTitle(parent, look);
    pane.versions = createList(parent, listId);
    setColumns(pane.versions, {{L"Version", 58, true}, {L"Saved", 126}, {L"Operations", 0, true}});
    SendMessageW(pane.versions, WM_SETFONT, reinterpret_cast<WPARAM>(look.text.get()), TRUE);
    pane.pictureTitle = createTitle(parent, look);
    pane.picture = createPictureView(parent, look);
    return pane;
}

void placeVersionPane(const VersionPane& pane, const WindowLayout& layout)
{
    moveTo(pane.title, layout.versionsTitle);
    moveTo(pane.versions, layout.versions);
    moveTo(pane.pictureTitle, layout.pictureTitle);
    moveTo(pane.picture, layout.picture);
    fitLastColumn(pane.versions);
}

void showVersions(VersionPane& pane, const std::wstring& folder, const LibraryItem* part)
{
    const std::wstring name = part != nullptr ? part->name : std::wstring();
    const std::int32_t version = part != nullptr ? part->version : 0;
    if (name != pane.shownName || version != pane.shownVersion) {
        // Set first: the list sends notifications while it gets its rows, and they call this
        // function again.
        pane.shownName = name;
        pane.shownVersion = version;
        setTitle(pane.title, part != nullptr ? L"Versions of " + name : L"Versions");
        setRows(pane.versions,
                part != nullptr ? versionRows(folder, *part) : std::vector<ListRow>{});
    }
    showSelectedPicture(pane, folder);
}

} // namespace companion
