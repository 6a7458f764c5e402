#include "tools/zemlink/verify/addin_commit_script.h"

#include "peer/text.h"
#include "peer/wire_constants.h"

namespace zemlink {
namespace {

// Usually a few are enough. When none of the locks is seen, so many are enough even if most of them
// come while the watching thread gets no processor time. They are quick without a picture.
constexpr int watchedSaves = 4000;
constexpr char withoutPictures[] = "fail screen_to_bitmap_file 10000\n";

std::string endOf(CommitStep step)
{
    return "set title " + titleOf(step) + "\nshow title\n";
}

constexpr char saveCommand[] = "call m_save 0\n";

std::string scriptOfSheets()
{
    return untilOpened(L"sheets.mcam") +
           "set setup_sheet_files C:\\sheets\\first.xml;C:\\sheets\\second.xml\n"
           "call m_tools 0\n"
           "set setup_sheet_files C:\\" +
           std::string(peer::longestNoticeBytes, 'x') +
           ".xml\n"
           "call m_tools 0\n"
           "set setup_sheet_files \n"
           "call m_tools 0\n"
           "call importNCqueue\n"
           "set setup_sheet_files C:\\sheets\\menu.xml\n"
           "choose Tools\n"
           "call m_main 0\n" +
           endOf(CommitStep::sheets);
}

std::string scriptOfQueues(const std::string& folder)
{
    return untilOpened(L"queue.mcam") + "set nc_prefix " + folder +
           "\\nc\\\n"
           "set nc_suffix .NC\n"
           "call importNCqueue\n" +
           endOf(CommitStep::queue) + untilOpened(L"queue without settings.mcam") +
           "call importNCqueue\n" + endOf(CommitStep::queueWithoutSettings);
}

std::string scriptOfSettings(const CommitParts& parts)
{
    return untilOpened(L"redirected.mcam") + "set setup_sheet_files C:\\sheets\\save.xml\n" +
           saveCommand + "set geo_filename " + parts.inside + '\n' + saveCommand +
           endOf(CommitStep::redirected) + untilOpened(L"last setting.mcam") + saveCommand +
           endOf(CommitStep::lastSetting);
}

// After events 3, 6 and 52 a document is no longer the Companion's. The second event 5 would have
// to save nothing; a save command before event 3 would never return.
std::string scriptOfEvents()
{
    return untilOpened(L"host save.mcam") +
           "notify 5\n"
           "notify 6\n"
           "notify 5\n"
           "notify 3\n" +
           endOf(CommitStep::hostSave);
}

std::string scriptOfFailures()
{
    return untilOpened(L"failed save.mcam") + "fail CFile_DoFileSave\n" + saveCommand +
           endOf(CommitStep::failedSave) + untilOpened(L"held file.mcam") + saveCommand +
           "fail DoFileOpen\n" + endOf(CommitStep::heldFile) + untilOpened(L"unreadable.mcam") +
           endOf(CommitStep::unreadable);
}

} // namespace

CommitParts commitParts(const AddInSite& site)
{
    const auto inside = [&](const wchar_t* name) { return peer::toUtf8(site.inside(name)); };
    const auto outside = [&](const wchar_t* name) { return peer::toUtf8(site.outside(name)); };
    CommitParts parts;
    parts.first = inside(L"first.mcam");
    parts.second = inside(L"second.mcam");
    parts.unicode = inside(L"gr\u00F6\u00DFe.mcam");
    parts.sheets = inside(L"sheets.mcam");
    parts.queue = inside(L"queue.mcam");
    parts.queueWithoutSettings = inside(L"queue without settings.mcam");
    parts.redirected = outside(L"redirected.mcam");
    parts.inside = inside(L"inside.mcam");
    parts.lastSetting = outside(L"last setting.mcam");
    parts.hostSave = inside(L"host save.mcam");
    parts.failedSave = inside(L"failed save.mcam");
    parts.heldFile = inside(L"held file.mcam");
    parts.unreadable = inside(L"unreadable.mcam");
    parts.afterCheckIn = inside(L"after check-in.mcam");
    return parts;
}

std::string titleOf(CommitStep step)
{
    return "step " + std::to_string(static_cast<int>(step));
}

std::string commitScript(const AddInSite& site, const CommitParts& parts)
{
    std::string script = untilOpened(L"first.mcam") + saveCommand + endOf(CommitStep::first) +
                         untilOpened(L"second.mcam") + "set geo_filename " + parts.unicode + '\n' +
                         saveCommand + endOf(CommitStep::unicode) + scriptOfSheets() +
                         scriptOfQueues(peer::toUtf8(site.folder())) + scriptOfSettings(parts) +
                         scriptOfEvents() + scriptOfFailures() + "wait-for OnFileNew 60000\n" +
                         "set geo_filename " + parts.afterCheckIn + '\n' + saveCommand +
                         endOf(CommitStep::afterCheckIn) + withoutPictures;
    for (int i = 0; i < watchedSaves; ++i)
        script += saveCommand;
    return script;
}

} // namespace zemlink
