#include "view/view_operations.h"

#include "core/operation_types.h"
#include "core/text.h"
#include "view/gdi_objects.h"
#include "view/view_style.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace standin {

namespace {

constexpr long rowHeight = 24;
constexpr long columnHeadHeight = 30;

// A row of the list: an operation, or a group's heading, with the group's first operation.
struct ListRow {
    const PartOperation* held;
    bool isHeading;
};

// The columns, from the list's left edge; the last one ends at the right edge.
constexpr long markColumn = 14;
constexpr long numberColumn = 30;
constexpr long typeColumn = 66;
constexpr long toolColumn = 164;
constexpr long depthWidth = 58;
constexpr long timeWidth = 70;

std::vector<ListRow> rowsOf(const Part& part)
{
    std::vector<ListRow> rows;
    const PartOperation* previous = nullptr;
    for (const PartOperation& held : part.operations) {
        if (!previous || previous->node.op.groupId != held.node.op.groupId)
            rows.push_back({&held, true});
        rows.push_back({&held, false});
        previous = &held;
    }
    return rows;
}

std::wstring wide(const std::string& digits)
{
    return {digits.begin(), digits.end()};
}

std::wstring timeText(double seconds)
{
    constexpr double longestTime = 360000000;
    const long long whole = std::llround(std::clamp(seconds, 0.0, longestTime));
    const long long minutes = whole / 60;
    const std::wstring rest = std::to_wstring(whole % 60);
    return std::to_wstring(minutes) + (rest.size() < 2 ? L":0" : L":") + rest;
}

std::wstring groupPath(const Part& part, int id)
{
    std::wstring path;
    std::set<int> shown; // stops a cycle of parent groups
    for (auto group = part.groupById.find(id);
         group != part.groupById.end() && shown.insert(group->first).second;
         group = part.groupById.find(group->second->parentId)) {
        const std::wstring name(fieldText(group->second->name));
        path = path.empty() ? name : name + L"  \u203A  " + path;
    }
    return path.empty() ? L"No group" : path;
}

std::wstring toolText(const tp_tool_lead& tool)
{
    return L"T" + std::to_wstring(tool.toolNumber) + L"  " + std::wstring(fieldText(tool.comment));
}

RECT columnOf(const RECT& row, long from, long to)
{
    return {row.left + from, row.top, row.left + to, row.bottom};
}

void drawRule(HDC context, const RECT& row)
{
    fillArea(context, {row.left, row.bottom - 1, row.right, row.bottom}, colours::rule);
}

void drawColumnHeads(HDC context, const RECT& row)
{
    const long width = row.right - row.left;
    const long time = width - timeWidth;
    const auto head = [&](const wchar_t* text, long from, long to, UINT alignment) {
        drawLine(context, text, columnOf(row, from, to), TextFont::small, colours::quietText,
                 alignment);
    };
    head(L"No.", numberColumn, typeColumn, DT_LEFT);
    head(L"Operation", typeColumn, toolColumn, DT_LEFT);
    head(L"Tool", toolColumn, time - depthWidth, DT_LEFT);
    head(L"Depth", time - depthWidth, time, DT_RIGHT);
    head(L"Time", time, width - 14, DT_RIGHT);
    drawRule(context, row);
}

void drawHeading(HDC context, const RECT& row, const Part& part, const PartOperation& held)
{
    fillArea(context, row, colours::heading);
    drawLine(context, groupPath(part, held.node.op.groupId),
             columnOf(row, markColumn, row.right - row.left - 14), TextFont::bold, colours::accent);
}

void drawMark(HDC context, const RECT& row, COLORREF colour)
{
    const long middle = (row.top + row.bottom) / 2;
    fillArea(context, {row.left + markColumn, middle - 4, row.left + markColumn + 9, middle + 5},
             colour);
}

void drawOperation(HDC context, const RECT& row, const PartOperation& held)
{
    const operation& op = held.node.op;
    const long width = row.right - row.left;
    const long time = width - timeWidth;
    const auto cell = [&](const std::wstring& text, long from, long to, UINT alignment) {
        drawLine(context, text, columnOf(row, from, to), TextFont::plain, colours::text, alignment);
    };
    drawMark(context, row, toolColour(op.tool.toolNumber));
    cell(std::to_wstring(op.operationId), numberColumn, typeColumn - 4, DT_LEFT);
    cell(operationTypeName(op.operationType), typeColumn, toolColumn - 4, DT_LEFT);
    cell(toolText(op.tool), toolColumn, time - depthWidth - 4, DT_LEFT);
    cell(wide(decimalText(op.depth)), time - depthWidth, time, DT_RIGHT);
    cell(timeText(held.cycleSeconds), time, width - 14, DT_RIGHT);
    drawRule(context, row);
}

void drawTotal(HDC context, const RECT& row, const Part& part)
{
    double seconds = 0;
    for (const PartOperation& held : part.operations)
        seconds += held.cycleSeconds;
    const std::wstring count = countText(part.operations.size(), L"operation") + L", " +
                               countText(part.tools.size(), L"tool");
    fillArea(context, {row.left, row.top, row.right, row.top + 1}, colours::rule);
    drawLine(context, count, columnOf(row, markColumn, row.right - row.left - 120), TextFont::bold,
             colours::text);
    drawLine(context, timeText(seconds),
             columnOf(row, row.right - row.left - 120, row.right - row.left - 14), TextFont::bold,
             colours::text, DT_RIGHT);
}

void drawRows(HDC context, const RECT& area, const Part& part, int firstRow)
{
    const std::vector<ListRow> rows = rowsOf(part);
    const int shown = std::max(static_cast<int>((area.bottom - area.top) / rowHeight), 0);
    const int last = std::max(static_cast<int>(rows.size()) - shown, 0);
    RECT row = {area.left, area.top, area.right, area.top + rowHeight};
    for (auto place = static_cast<size_t>(std::clamp(firstRow, 0, last));
         place < rows.size() && row.bottom <= area.bottom; ++place) {
        if (rows[place].isHeading)
            drawHeading(context, row, part, *rows[place].held);
        else
            drawOperation(context, row, *rows[place].held);
        OffsetRect(&row, 0, rowHeight);
    }
}

} // namespace

int operationRowCount(const Part& part)
{
    return static_cast<int>(rowsOf(part).size());
}

void drawOperations(HDC context, const RECT& area, const Part& part, int firstRow)
{
    fillArea(context, area, colours::panel);
    drawColumnHeads(context, {area.left, area.top, area.right, area.top + columnHeadHeight});
    const long total = area.bottom - columnHeadHeight;
    drawRows(context, {area.left, area.top + columnHeadHeight, area.right, total}, part, firstRow);
    drawTotal(context, {area.left, total, area.right, area.bottom}, part);
}

} // namespace standin
