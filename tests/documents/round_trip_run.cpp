// A part on its way: sent by the Companion, opened, saved and announced by the add-in that ships.
#include "documents/exchange_run.h"
#include "support/companion_program.h"
#include "support/host_program.h"
#include "support/sockets.h"

#include <gtest/gtest.h>

using namespace testing_support;

namespace documents {

namespace {

constexpr DWORD carriedOut = 0;
constexpr unsigned postCommand = 41107; // of the host's File menu
constexpr int goOn = 37;                // an event that the add-in only notes

const std::string script = "wait-for CFile_DoFileSave( 60000\n"
                           "call m_save 0\n"
                           "set setup_sheet_files C:\\ZEM\\tmp\\sheet.xml\n"
                           "call m_tools 0\n"
                           "set nc_prefix C:\\ZEM\\tmp\\\n"
                           "wait-for m_notify(37) 60000\n"
                           "call importNCqueue\n"
                           "wait-for OnFileNew 60000\n"
                           "set geo_filename C:\\ZEM\\work\\\xC3\xA4.mcam\n"
                           "call m_save 0\n"
                           "wait-for m_notify(37) 60000\n"
                           "quit\n";

struct InstalledCompanion : Installation {
    InstalledCompanion() : Installation(Registry::ofTheUser, installationOfThePages)
    {
        installCompanionWithLibrary(*this);
    }
};

class RoundTrip {
public:
    // True once the add-in has opened the part.
    bool send()
    {
        return host_.waitForCommandFile() && companion_.tell(L"--send bracket") == carriedOut &&
               host_.waitForTrace(L"CFile_DoFileSave(");
    }
    void noteLoadAndSave()
    {
        made_["commit-notice"] = nextLine();
        made_["setup-sheet-notice"] = nextLine();
        made_["load-log"] = bytesOf(L"sys\\mcxlog.txt");
        // The Companion has moved the picture, without touching it.
        EXPECT_TRUE(
            companion_.waitForLog(L"version name=\"bracket\" version=2 number=17 picture=yes"));
        made_["screen-picture"] = bytesOf(L"library\\bracket\\v2.bmp");
    }
    void noteQueue()
    {
        host_.command(postCommand);
        EXPECT_TRUE(host_.sendEvent(goOn));
        made_["queue-notice"] = nextLine();
        made_["nc-queue"] = bytesOf(L"temp\\ncqueue-17.txt");
    }
    // The second one's id is the number of no request.
    void noteBothCommits()
    {
        EXPECT_EQ(companion_.tell(L"--new-file --id -1"), carriedOut);
        EXPECT_NE(nextLine(), "");
        const std::wstring process = std::to_wstring(companion_.process().id());
        made_["commit-records"] = bytesOf(L"temp\\torvapdm-" + process + L".dat");
    }
    Made end()
    {
        EXPECT_TRUE(host_.sendEvent(goOn));
        EXPECT_EQ(host_.process().waitForExit(), 0u);
        EXPECT_EQ(count(host_.trace(), L"message-box"), 0u);
        return made_;
    }

private:
    std::string nextLine() const { return port_.nextConnection().value_or(""); }
    std::string bytesOf(const std::wstring& file) const
    {
        return readBytes(installation_.path(file)).value_or("");
    }

    const InstalledCompanion installation_;
    // In the Companion's place, which would remove the queue on its notice.
    const LineReceiver port_;
    const CompanionProgram companion_{installation_};
    const HostProgram host_{installation_, script};
    Made made_;
};

} // namespace

Made roundTripOfAPart()
{
    RoundTrip trip;
    if (!trip.send())
        return {}; // the host would wait for the part
    trip.noteLoadAndSave();
    trip.noteQueue();
    trip.noteBothCommits();
    return trip.end();
}

} // namespace documents
