#include "tools/zemlink/verify/addin_starts.h"

#include "peer/command_file.h"
#include "peer/files.h"
#include "peer/handle.h"
#include "peer/running_programs.h"
#include "peer/text.h"
#include "peer/wire_constants.h"

#include <stdexcept>

namespace zemlink {
namespace {

constexpr std::int32_t aboutId = 61, commitId = 62, notInstalledId = 63;
constexpr size_t startsInAll = 5; // about, the Companion itself, check-out, and two commits

std::string markOf(const std::string& word)
{
    return "set title " + word + "\nshow title\n";
}

// A new-file request with the id -1 is the only one that leaves this id and shows when it has been
// taken.
std::string startScript(const std::string& committed)
{
    return untilOpened(L"about.mcam") +
           "call m_about 0\n"
           "call m_load 0\n" +
           markOf("asked") + untilOpened(L"committed.mcam") + "call m_save 0\n" +
           markOf("committed") +
           "wait-for OnFileNew 60000\n"
           "set geo_filename " +
           committed + "\ncall m_save 0\n" + markOf("without id") +
           untilOpened(L"not installed.mcam") +
           "call m_about 0\n"
           "call m_save 0\n" +
           markOf("not installed") + "call m_close 0\n" + markOf("closed");
}

std::wstring temporaryFolder()
{
    wchar_t path[MAX_PATH + 1] = L"";
    GetTempPathW(MAX_PATH + 1, path);
    return path;
}

class StartRun {
public:
    StartRun(const AddInToVerify& addIn, const AddInSite& site, const Waiting& waiting)
        : site_(site),
          waiting_(waiting),
          committed_(peer::toUtf8(site.inside(L"committed.mcam"))),
          host_((putRecorder(site.folder()), addIn), site, L"starts", startScript(committed_),
                waiting)
    {
        site.writeSettings("");
        seen_.committed = committed_;
        seen_.temporaryFolder = temporaryFolder();
    }

    StartsSeen run()
    {
        bool isGoingOn = note(StartStep::addInOpen, host_.waitFor("m_open("));
        seen_.windows = host_.windows();
        for (const auto step :
             {&StartRun::askCompanion, &StartRun::commit, &StartRun::commitWithoutId,
              &StartRun::missCompanion, &StartRun::close})
            isGoingOn = isGoingOn && (this->*step)();
        host_.end();
        seen_.trace = host_.trace();
        seen_.starts = readStarts(site_.folder());
        return seen_;
    }

private:
    bool note(StartStep step, bool isReached)
    {
        if (isReached)
            seen_.reached = step;
        else
            seen_.cut = "the script did not come to this: " + host_.whyNot();
        return isReached;
    }
    bool isAt(const std::string& mark) const { return host_.waitFor("title = \"" + mark + '"'); }
    std::string part(const wchar_t* name) const { return peer::toUtf8(site_.inside(name)); }

    // The Companion is not running.
    bool askCompanion()
    {
        return note(StartStep::notRunning,
                    host_.open(aboutId, part(L"about.mcam")) && isAt("asked"));
    }

    // It is running and shows no window.
    bool commit()
    {
        semaphore_ = peer::claimInstance();
        return note(StartStep::noWindow, host_.open(commitId, committed_) && isAt("committed"));
    }
    bool commitWithoutId()
    {
        return note(StartStep::noId,
                    host_.send(peer::formatNewFileRequest(-1)) && isAt("without id"));
    }

    // A program that is running can be renamed but not deleted.
    bool missCompanion()
    {
        semaphore_.reset();
        waiting_.until([&] { return readStarts(site_.folder()).size() >= startsInAll; });
        const std::wstring program = site_.folder() + L'\\' + peer::companionProgram;
        if (!MoveFileW(program.c_str(), site_.ownFile(L"started.exe").c_str()))
            throw std::runtime_error(peer::toUtf8(program) + " cannot be renamed");
        return note(StartStep::notInstalled,
                    host_.open(notInstalledId, part(L"not installed.mcam")) &&
                        isAt("not installed"));
    }

    bool close()
    {
        const bool isClosed = isAt("closed");
        seen_.windowsLeft = host_.windows();
        seen_.isCommandFileLeft = peer::isFile(host_.commandFile());
        return note(StartStep::closed, isClosed);
    }

    const AddInSite& site_;
    const Waiting& waiting_;
    const std::string committed_;
    AddInHost host_;
    peer::OwnHandle semaphore_{};
    StartsSeen seen_{};
};

} // namespace

StartsSeen runStarts(const AddInToVerify& addIn, const AddInSite& site, const Waiting& waiting)
{
    return StartRun(addIn, site, waiting).run();
}

} // namespace zemlink
