#include "standin/companion/ui/queue_window.h"

#include "peer/exchange_paths.h"
#include "standin/companion/ui/list_view.h"
#include "standin/companion/ui/notice_window.h"

#include <algorithm>
#include <memory>

namespace companion {
namespace {

constexpr wchar_t queueClass[] = L"ZemQueueWindow";
constexpr int programsId = 100;

class QueueWindow : public NoticeWindow {
public:
    HWND programs = nullptr;

    void createChildren() override;
    void placeChildren(int clientWidth, int clientHeight) override;
    void paintBody(HDC, int, int) const override {}
};

void QueueWindow::createChildren()
{
    programs = createList(window, programsId);
    setColumns(programs, {{L"Program", 128},
                          {L"Bytes", 66, true},
                          {L"Group", 112},
                          {L"NC path", 64, true},
                          {L"Folder", 0}});
}

void QueueWindow::placeChildren(int clientWidth, int clientHeight)
{
    moveTo(programs, {margin, bandHeight + margin, std::max(clientWidth - 2 * margin, 0),
                      std::max(clientHeight - bandHeight - 2 * margin, 0)});
    fitLastColumn(programs);
}

std::unique_ptr<NoticeWindow> makeQueueWindow()
{
    return std::make_unique<QueueWindow>();
}

bool isMissing(const QueuedProgram& program)
{
    return program.bytes == -1;
}

std::wstring sizeText(const QueuedProgram& program)
{
    return isMissing(program)         ? L"missing"
           : program.bytes == notRead ? L"elsewhere"
                                      : std::to_wstring(program.bytes);
}

std::vector<std::wstring> cellsOf(const QueuedProgram& program)
{
    const std::wstring name = peer::fileNameOf(program.file);
    return {name, sizeText(program), program.group, std::to_wstring(program.pathNumber),
            program.file.substr(0, program.file.size() - name.size())};
}

std::wstring detailsOf(const ReceivedQueue& queue)
{
    const auto missing = std::count_if(queue.programs.begin(), queue.programs.end(), isMissing);
    const std::wstring details = L"Programs: " + std::to_wstring(queue.programs.size());
    return missing == 0 ? details : details + L"     Missing: " + std::to_wstring(missing);
}

} // namespace

void showQueue(HWND owner, const ReceivedQueue& queue)
{
    auto* window = static_cast<QueueWindow*>(openNoticeWindow(owner, queueClass, makeQueueWindow));
    if (window == nullptr)
        return;
    std::vector<std::vector<std::wstring>> rows;
    for (const QueuedProgram& program : queue.programs)
        rows.push_back(cellsOf(program));
    window->heading = L"NC programs";
    window->details = detailsOf(queue);
    setRows(window->programs, numberedRows(rows));
    showNoticeWindow(*window, L"NC queue: " + peer::fileNameOf(queue.file));
}

} // namespace companion
