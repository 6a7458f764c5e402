#include "standin/companion/ui/tool_window.h"

#include "peer/exchange_paths.h"
#include "standin/companion/ui/list_view.h"
#include "standin/companion/ui/notice_window.h"
#include "standin/companion/ui/picture_view.h"

#include <algorithm>
#include <memory>

namespace companion {
namespace {

constexpr wchar_t toolClass[] = L"ZemToolWindow";
constexpr int toolsId = 100;
constexpr int valuesId = 101;

class ToolWindow : public NoticeWindow {
public:
    HWND tools = nullptr, values = nullptr, picture = nullptr;
    ReceivedTools received;

    void createChildren() override;
    void placeChildren(int clientWidth, int clientHeight) override;
    void paintBody(HDC context, int clientWidth, int clientHeight) const override;
    void choiceChanged(UINT_PTR list) override;
    // The picture and the data of the selected tool.
    void showChosen();
};

struct ToolLayout {
    Area toolsTitle, tools, pictureTitle, picture, valuesTitle, values;
};

// The tools get two fifths of the height of both lists; the picture and the values half the width
// each.
ToolLayout layOutTools(int clientWidth, int clientHeight)
{
    const int width = std::max(clientWidth - 2 * margin, 0);
    const int top = bandHeight + margin / 2;
    const int lists = std::max(clientHeight - top - margin - margin / 2 - 2 * titleHeight, 0);
    const int tools = lists * 2 / 5;
    const int lowerTop = top + titleHeight + tools + margin / 2;
    const int lower = lists - tools;
    const int half = std::max((width - margin) / 2, 0);
    const int right = margin + half + margin;
    return {.toolsTitle = {margin, top, width, titleHeight},
            .tools = {margin, top + titleHeight, width, tools},
            .pictureTitle = {margin, lowerTop, half, titleHeight},
            .picture = {margin, lowerTop + titleHeight, half, lower},
            .valuesTitle = {right, lowerTop, half, titleHeight},
            .values = {right, lowerTop + titleHeight, half, lower}};
}

void ToolWindow::createChildren()
{
    tools = createList(window, toolsId);
    setColumns(tools, {{L"Tool", 64, true},
                       {L"Type", 48, true},
                       {L"Diameter", 86, true},
                       {L"Operation", 76, true},
                       {L"Comment", 0}});
    picture = createPictureView(window, look);
    values = createList(window, valuesId);
    setColumns(values, {{L"Of the tool", 150}, {L"Value", 0, true}});
}

void ToolWindow::placeChildren(int clientWidth, int clientHeight)
{
    const ToolLayout layout = layOutTools(clientWidth, clientHeight);
    moveTo(tools, layout.tools);
    moveTo(picture, layout.picture);
    moveTo(values, layout.values);
    fitLastColumn(tools);
    fitLastColumn(values);
}

void ToolWindow::paintBody(HDC context, int clientWidth, int clientHeight) const
{
    const ToolLayout layout = layOutTools(clientWidth, clientHeight);
    drawTitle(*this, context, layout.toolsTitle, L"Tools");
    drawTitle(*this, context, layout.pictureTitle, L"Picture");
    drawTitle(*this, context, layout.valuesTitle, L"Data");
}

void ToolWindow::choiceChanged(UINT_PTR list)
{
    if (list == toolsId)
        showChosen();
}

void ToolWindow::showChosen()
{
    const auto row = static_cast<size_t>(selectedKey(tools).value_or(-1));
    if (row >= received.records.size()) {
        showPicture(picture, L"", L"No tool selected");
        setRows(values, {});
        return;
    }
    const peer::ToolRecord& record = received.records[row];
    showPicture(picture, peer::toolPicturePath(received.folder, record.number),
                L"No picture of this tool yet");
    setRows(values, numberedRows(toolDetails(record)));
}

std::unique_ptr<NoticeWindow> makeToolWindow()
{
    return std::make_unique<ToolWindow>();
}

} // namespace

void showTools(HWND owner, const ReceivedTools& tools)
{
    auto* window = static_cast<ToolWindow*>(openNoticeWindow(owner, toolClass, makeToolWindow));
    if (window == nullptr)
        return;
    std::vector<std::vector<std::wstring>> rows;
    for (const peer::ToolRecord& record : tools.records)
        rows.push_back(toolCells(record));
    window->received = tools;
    window->heading = L"Tools";
    window->details = L"Tools in operations: " + std::to_wstring(rows.size());
    setRows(window->tools, numberedRows(rows));
    window->showChosen(); // also without a tool
    showNoticeWindow(*window, L"Tools " + std::to_wstring(tools.id));
}

} // namespace companion
