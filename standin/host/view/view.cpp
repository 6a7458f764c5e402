#include "view/view.h"

#include "control.h"
#include "core/document.h"
#include "core/file_bytes.h"
#include "core/lock.h"
#include "core/session.h"
#include "view/gdi_objects.h"
#include "view/memory_picture.h"
#include "view/view_drawing.h"
#include "view/view_operations.h"
#include "view/view_style.h"

#include <algorithm>
#include <mutex>

namespace standin {

namespace {

constexpr long headHeight = 58;
constexpr long statusHeight = 28;
constexpr long widestList = 480;

// UI thread only.
int firstRow = 0;

struct Note {
    Lock lock;
    std::wstring text;
};

Note& theNote()
{
    static Note note;
    return note;
}

struct Layout {
    RECT head;
    RECT drawing;
    RECT list;
    RECT status;
};

Layout layoutOf(const RECT& area)
{
    const long list = area.right - std::min(widestList, (area.right - area.left) * 11 / 20);
    const long top = area.top + headHeight;
    const long bottom = std::max(area.bottom - statusHeight, top);
    return {{area.left, area.top, area.right, top},
            {area.left, top, list, bottom},
            {list, top, area.right, bottom},
            {area.left, bottom, area.right, bottom + statusHeight}};
}

std::wstring fileNameOf(const std::wstring& path)
{
    return path.substr(path.find_last_of(L"\\/") + 1);
}

std::wstring machineText(const std::wstring& machine)
{
    return machine.empty() ? L"No active machine" : L"Machine  " + fileNameOf(machine);
}

std::wstring joined(const std::wstring& left, const std::wstring& right)
{
    return left.empty() || right.empty() ? left + right : left + L"  \u00B7  " + right;
}

void drawHead(HDC context, const RECT& area, const Part& part, const HostSettings& settings)
{
    fillArea(context, area, colours::panel);
    fillArea(context, {area.left, area.bottom - 1, area.right, area.bottom}, colours::rule);
    const std::wstring untitled = isEmpty(part) ? L"No part" : L"Part without a title";
    const std::wstring title = part.title.empty() ? untitled : part.title;
    const long middle = area.right - 320;
    drawLine(context, title, {area.left + 16, area.top + 6, middle, area.top + 34}, TextFont::title,
             colours::text);
    drawLine(context, joined(part.material, part.remark),
             {area.left + 16, area.top + 32, middle, area.top + 52}, TextFont::plain,
             colours::quietText);
    drawLine(context, machineText(settings.activeMachine),
             {middle, area.top + 6, area.right - 16, area.top + 34}, TextFont::bold,
             colours::accent, DT_RIGHT);
    drawLine(context, L"NC programs  " + settings.ncPrefix + L"*" + settings.ncSuffix,
             {middle, area.top + 32, area.right - 16, area.top + 52}, TextFont::plain,
             colours::quietText, DT_RIGHT);
}

std::wstring stateText(const HostSettings& settings)
{
    std::wstring text = settings.databaseChanged ? L"Changed" : L"Saved";
    return settings.backplotActive ? L"Backplot running  \u00B7  " + text : text;
}

void drawStatus(HDC context, const RECT& area, const HostSettings& settings)
{
    fillArea(context, area, colours::panel);
    fillArea(context, {area.left, area.top, area.right, area.top + 1}, colours::rule);
    const std::wstring name = documentName();
    const std::wstring note = shownNote();
    const long middle = area.right - (settings.backplotActive ? 200 : 90);
    drawLine(context, note.empty() ? (name.empty() ? L"Untitled" : name) : note,
             {area.left + 16, area.top, middle, area.bottom}, TextFont::plain, colours::text);
    drawLine(context, stateText(settings), {middle, area.top, area.right - 16, area.bottom},
             TextFont::plain, settings.backplotActive ? colours::warning : colours::quietText,
             DT_RIGHT);
}

} // namespace

void drawView(HDC context, const RECT& area)
{
    const std::shared_ptr<Part> part = openPart();
    const HostSettings settings = hostSettings();
    const Layout layout = layoutOf(area);
    drawHead(context, layout.head, *part, settings);
    drawPart(context, layout.drawing, *part);
    drawOperations(context, layout.list, *part, firstRow);
    fillArea(context, {layout.list.left, layout.list.top, layout.list.left + 1, layout.list.bottom},
             colours::rule);
    drawStatus(context, layout.status, settings);
}

void paintView(HWND window)
{
    PAINTSTRUCT paint{};
    const HDC context = BeginPaint(window, &paint);
    RECT area{};
    GetClientRect(window, &area);
    const MemoryPicture picture(area.right, area.bottom);
    if (picture.context()) {
        drawView(picture.context(), picture.area());
        BitBlt(context, 0, 0, area.right, area.bottom, picture.context(), 0, 0, SRCCOPY);
    }
    EndPaint(window, &paint);
}

void scrollOperations(int rows)
{
    firstRow = std::clamp(firstRow + rows, 0, operationRowCount(*openPart()));
}

void showNote(const std::wstring& text)
{
    {
        const std::scoped_lock guard(theNote().lock);
        theNote().text = text;
    }
    repaintView();
}

std::wstring shownNote()
{
    const std::scoped_lock guard(theNote().lock);
    return theNote().text;
}

bool writeViewPicture(HWND window, const std::wstring& path)
{
    RECT area{};
    GetClientRect(window, &area);
    const MemoryPicture picture(area.right, area.bottom);
    if (!picture.context())
        return false;
    drawView(picture.context(), picture.area());
    return writeFileBytes(path, picture.bitmapFile());
}

} // namespace standin
