// The path of a part: sent by the Companion; opened, saved and committed by the shipped add-in.
#include "documents/exchange_run.h"
#include "support/companion_program.h"
#include "support/host_program.h"
#include "support/sockets.h"

#include <gtest/gtest.h>

using namespace testing_support;

namespace documents {

namespace {

constexpr unsigned postCommand = 41107; // in the host's File menu
constexpr int goOn = 37;                // an event that the add-in only logs

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

} // namespace

Made roundTripOfAPart()
{
    const Installation installation(Registry::ofTheUser, installationOfThePages);
    installCompanionWithLibrary(installation);
    // The test receives the notice; the Companion would remove the queue.
    const LineReceiver port;
    const CompanionProgram companion(installation);
    const HostProgram host(installation, script);
    const auto nextLine = [&] { return port.nextConnection().value_or(""); };
    const auto bytesOf = [&](const std::wstring& file) {
        return readBytes(installation.path(file)).value_or("");
    };
    if (!host.waitForCommandFile() || companion.tell(L"--send bracket") != carriedOut ||
        !host.waitForTrace(L"CFile_DoFileSave("))
        return {}; // the host would wait for the part forever
    Made made{{"commit-notice", nextLine()}, {"setup-sheet-notice", nextLine()}};
    made["load-log"] = bytesOf(L"sys\\mcxlog.txt");
    // The Companion has moved the picture without changing it.
    EXPECT_TRUE(companion.waitForLog(L"version name=\"bracket\" version=2 number=17 picture=yes"));
    made["screen-picture"] = bytesOf(L"library\\bracket\\v2.bmp");

    host.command(postCommand);
    EXPECT_TRUE(host.sendEvent(goOn));
    made["queue-notice"] = nextLine();
    made["nc-queue"] = bytesOf(L"temp\\ncqueue-17.txt");

    // The second commit has no request id.
    EXPECT_EQ(companion.tell(L"--new-file --id -1"), carriedOut);
    EXPECT_NE(nextLine(), "");
    const std::wstring process = std::to_wstring(companion.process().id());
    made["commit-records"] = bytesOf(L"temp\\torvapdm-" + process + L".dat");

    EXPECT_TRUE(host.sendEvent(goOn));
    EXPECT_EQ(host.process().waitForExit(), 0u);
    EXPECT_EQ(count(host.trace(), L"message-box"), 0u);
    return made;
}

} // namespace documents
