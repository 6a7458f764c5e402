#include "tools/zemlink/verify/addin_requests.h"

#include "peer/command_file.h"
#include "peer/exchange_paths.h"
#include "peer/files.h"
#include "peer/text.h"
#include "peer/wire_constants.h"
#include "tools/zemlink/verify/addin_probes.h"

#include <stdexcept>
#include <string_view>

namespace zemlink {
namespace {

constexpr std::uint16_t greetingPort = 20248;
constexpr std::int32_t otherRequest = 99; // one that is never sent

// The ids of the requests, in the order in which they are sent.
constexpr std::int32_t firstId = 21, afterMalformedId = 23, newFileId = 24, missingId = 25,
                       busyId = 26, waitsId = 27, insteadId = 28, releaseId = 29, backplotId = 30,
                       secondReleaseId = 31, lastId = 32;

// The host is busy between the two lines that show so. A new-file request is carried out meanwhile
// too, and ends it.
std::string requestScript()
{
    return "call m_version 2250\n"
           "call m_version 1105\n" +
           untilOpened(L"first.emcam") +
           "show geo_filename\n"
           "show db_changed\n"
           "show title\n" +
           untilOpened(L"busy.mcam") +
           "set main_window_enabled false\n"
           "show main_window_enabled\n"
           "wait-for OnFileNew 60000\n"
           "show main_window_enabled\n"
           "set main_window_enabled true\n"
           "wait-for DoFileOpen( 60000\n"
           "set backplot true\n"
           "show backplot\n"
           "wait-for OnFileNew 60000\n"
           "show backplot\n"
           "set backplot false\n" +
           untilOpened(L"last.mcam") + "quit\n";
}

// What a listener must drop: no id, no space, too short, no number, too large a number; and what
// only looks like a check-in.
std::vector<std::string> malformedRequests()
{
    const std::string mark(peer::byteOrderMark);
    return {"nospace",
            "a",
            mark + "x C:\\a.mcam\n",
            mark + "99999999999 C:\\a.mcam\n",
            "CHECKIN\n",
            "checkin first.mcam"};
}

RequestParts requestParts(const AddInSite& site)
{
    const auto path = [&](const wchar_t* name) { return peer::toUtf8(site.inside(name)); };
    RequestParts parts;
    parts.first = path(L"first.emcam");
    parts.marked = path(L"marked.mcam");
    parts.withoutId = path(L"without id.mcam");
    parts.afterMalformed = path(L"after malformed.mcam");
    parts.missing = path(L"missing.mcam");
    parts.busy = path(L"busy.mcam");
    parts.waits = path(L"waits.mcam");
    parts.instead = path(L"instead.mcam");
    parts.backplot = path(L"backplot.mcam");
    parts.last = path(L"last.mcam");
    return parts;
}

class RequestRun {
public:
    RequestRun(const AddInToVerify& addIn, const AddInSite& site, const Waiting& waiting)
        : site_(site),
          wasPortFree_(isPortFree(greetingPort)),
          host_(addIn, site, L"requests", requestScript(), waiting)
    {
        seen_.parts = requestParts(site);
        seen_.missingExports = findMissingExports(addIn.library);
    }

    RequestsSeen run()
    {
        if (!host_.waitFor("m_open("))
            throw std::runtime_error("the host has not opened the add-in: " + host_.whyNot());
        lookAtStart();
        // Each continues where the one before has ended.
        bool isGoingOn = true;
        for (const auto step :
             {&RequestRun::openFirst, &RequestRun::openWithOtherMark, &RequestRun::sendMalformed,
              &RequestRun::startNewFile, &RequestRun::checkIn, &RequestRun::checkInBarely,
              &RequestRun::openMissing, &RequestRun::openWhileDisabled,
              &RequestRun::openDuringBackplot, &RequestRun::sendLongest, &RequestRun::openLast})
            isGoingOn = isGoingOn && (this->*step)();
        lookAtEnd();
        return seen_;
    }

private:
    // Notes that the host has come so far, or why not.
    bool note(RequestStep step, bool isReached, const char* what)
    {
        if (isReached)
            seen_.reached = step;
        else
            seen_.cut = std::string(what) + ": " + host_.whyNot();
        return isReached;
    }
    bool isOpened(const std::string& path) const
    {
        return host_.waitFor(callOf("DoFileOpen", path));
    }

    void lookAtStart()
    {
        seen_.commandFile = peer::readCommandFileState(host_.commandFile());
        seen_.sharingError = sharingErrorOf(host_.commandFile());
        seen_.windows = host_.windows();
        if (wasPortFree_)
            seen_.opensGreetingPort = !isPortFree(greetingPort);
    }

    bool openFirst()
    {
        site_.writeMachineSettings(firstId, 3, verifiedMachine);
        site_.writeMachineSettings(otherRequest, 4, "C:\\Machines\\Other.mcam-mmd");
        seen_.isFirstTaken = host_.open(firstId, seen_.parts.first);
        const bool isDone = seen_.isFirstTaken && host_.waitFor("ui title = \"");
        seen_.haveSettingsGone = !peer::isFile(peer::machineSettingsPath(site_.folder(), firstId));
        seen_.haveOthersStayed =
            peer::isFile(peer::machineSettingsPath(site_.folder(), otherRequest));
        seen_.loadLog = peer::readFile(peer::debugLogPath(site_.folder())).value_or("");
        return note(RequestStep::firstPart, isDone, "the first open request was not carried out");
    }

    // A request that is not carried out is the rule's concern.
    bool openWithOtherMark()
    {
        putFile(peer::fromUtf8(seen_.parts.marked), "");
        const bool isTaken = host_.send("###22 " + seen_.parts.marked + '\n');
        if (isTaken)
            isOpened(seen_.parts.marked);
        return note(RequestStep::otherMark, isTaken, "a request with another mark was not taken");
    }

    bool sendMalformed()
    {
        bool isTaken = host_.open(-1, seen_.parts.withoutId);
        for (const std::string& request : malformedRequests())
            isTaken = isTaken && host_.send(request);
        isTaken = isTaken && host_.open(afterMalformedId, seen_.parts.afterMalformed);
        if (isTaken)
            isOpened(seen_.parts.afterMalformed);
        return note(RequestStep::malformed, isTaken, "a malformed request was not taken");
    }

    bool startNewFile()
    {
        const bool isTaken = host_.send(peer::formatNewFileRequest(newFileId));
        if (isTaken)
            host_.waitFor("OnFileNew");
        return note(RequestStep::newFile, isTaken, "a new-file request was not taken");
    }

    size_t countCheckIns() const { return host_.trace().count("m_fclose("); }

    bool checkInWith(const std::string& request)
    {
        const size_t before = host_.trace().count("OnFileNew");
        const bool isTaken = host_.send(request);
        if (isTaken)
            host_.waitFor("OnFileNew", before + 1);
        return isTaken;
    }
    bool checkIn()
    {
        seen_.checkIns = countCheckIns();
        const bool isTaken = checkInWith(peer::formatCheckIn(L"first.mcam"));
        seen_.checkIns = countCheckIns() - seen_.checkIns;
        return note(RequestStep::checkIn, isTaken, "a check-in was not taken");
    }
    bool checkInBarely()
    {
        seen_.bareCheckIns = countCheckIns();
        const bool isTaken = checkInWith(std::string(peer::checkInWord));
        seen_.bareCheckIns = countCheckIns() - seen_.bareCheckIns;
        return note(RequestStep::bareCheckIn, isTaken, "a check-in without a name was not taken");
    }

    bool openMissing()
    {
        const std::wstring path = peer::fromUtf8(seen_.parts.missing);
        const bool isTaken = host_.send(peer::formatOpenRequest(missingId, path).value_or(""));
        if (isTaken)
            host_.waitFor("message-box(");
        return note(RequestStep::missingFile, isTaken,
                    "a request for a missing file was not taken");
    }

    bool openWhileDisabled()
    {
        const bool isDone = host_.open(busyId, seen_.parts.busy) &&
                            host_.waitFor("main_window_enabled = \"false\"") &&
                            host_.open(waitsId, seen_.parts.waits) &&
                            host_.open(insteadId, seen_.parts.instead) &&
                            host_.send(peer::formatNewFileRequest(releaseId)) &&
                            host_.waitFor("main_window_enabled = \"false\"", 2) &&
                            host_.waitFor("backplot = \"true\"");
        return note(RequestStep::busy, isDone,
                    "the requests for a disabled host were not carried out");
    }

    bool openDuringBackplot()
    {
        const bool isDone = host_.open(backplotId, seen_.parts.backplot) &&
                            host_.send(peer::formatNewFileRequest(secondReleaseId)) &&
                            host_.waitFor("backplot = \"true\"", 2) &&
                            isOpened(seen_.parts.backplot);
        return note(RequestStep::backplot, isDone,
                    "the request during a backplot was not carried out");
    }

    bool sendLongest()
    {
        return note(RequestStep::longest, host_.send(std::string(peer::longestRequestBytes, 'x')),
                    "a request of 65,536 bytes was not taken");
    }

    // Then the script ends, and with it the command file, so that is not waited for.
    bool openLast()
    {
        const std::wstring path = peer::fromUtf8(seen_.parts.last);
        putFile(path, "");
        const bool isDone = host_.write(peer::formatOpenRequest(lastId, path).value_or("")) &&
                            isOpened(seen_.parts.last);
        return note(RequestStep::lastPart, isDone, "the last open request was not carried out");
    }

    void lookAtEnd()
    {
        if (seen_.cut.empty())
            seen_.exitCode = host_.waitForEnd();
        host_.end();
        seen_.trace = host_.trace();
        seen_.isCommandFileGone = !peer::isFile(host_.commandFile());
        seen_.loadLogAtEnd = peer::readFile(peer::debugLogPath(site_.folder())).value_or("");
    }

    const AddInSite& site_;
    const bool wasPortFree_;
    AddInHost host_;
    RequestsSeen seen_{};
};

} // namespace

RequestsSeen runRequests(const AddInToVerify& addIn, const AddInSite& site, const Waiting& waiting)
{
    return RequestRun(addIn, site, waiting).run();
}

} // namespace zemlink
