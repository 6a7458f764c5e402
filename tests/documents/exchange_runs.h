// Runs of the programs that write or read the bytes shown in the pages' dumps.
#pragma once

#include "control.h"
#include "documents/pages.h"
#include "formats/checkout_answer.h"
#include "outgoing/tool_export.h"
#include "support/add_in_state.h"
#include "support/companion_double.h"
#include "support/companion_program.h"
#include "support/draw_tool_entry.h"
#include "support/host_program.h"
#include "support/sockets.h"
#include "zemlink/announced_host.h"

#include <cstring>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

namespace testing_support {

using documents::installationOfThePages;

// Bytes written by a program, by the names of the dumps that show them.
using Made = std::map<std::string, std::string>;

// One run in its own process.
struct ExchangeRun {
    const char* name;
    std::vector<std::string> dumps; // the dumps it produces
    Made (*make)();
};

// For bytes that no program here writes: a program receives the dump's bytes and must do what the
// page describes.
struct GivenBytes {
    const char* dump;
    void (*give)(const std::string& bytes);
};

inline std::string bytesOrNone(const std::wstring& path)
{
    return readBytes(path).value_or("");
}

// ---- The Companion's requests, written to a command file that no add-in reads, and the files it
// writes with them.

// Registers the folder; returns the value's bytes in the 32-bit registry view.
inline std::string registerAgain(const Installation& installation)
{
    constexpr wchar_t companionKey[] = L"SOFTWARE\\TORVA AS\\ZEM";
    RegDeleteKeyW(HKEY_CURRENT_USER, companionKey);
    EXPECT_EQ(startCompanion(installation, L"--register"), carriedOut);
    std::string bytes(1024, '\0');
    auto size = static_cast<DWORD>(bytes.size());
    EXPECT_EQ(RegGetValueW(HKEY_CURRENT_USER, companionKey, L"installation folder",
                           RRF_RT_REG_SZ | RRF_SUBKEY_WOW6432KEY, nullptr, bytes.data(), &size),
              ERROR_SUCCESS);
    return bytes.substr(0, size);
}

inline Made requestsOfTheCompanion()
{
    const Installation installation(Registry::ofTheUser, installationOfThePages);
    installCompanionWithLibrary(installation);
    Made made{{"registry-value", registerAgain(installation)}};
    const AnnouncedHost host;
    const std::wstring commandFile = AnnouncedHost::makeCommandFile(installation);
    const CompanionProgram companion(installation);
    // Takes the request as a host does.
    const auto requestAfter = [&](const std::wstring& arguments, const std::wstring& taken) {
        EXPECT_EQ(companion.run(arguments), carriedOut);
        EXPECT_TRUE(waitUntil([&] { return bytesOrNone(commandFile) != ""; }));
        std::string request = bytesOrNone(commandFile);
        writeBytes(commandFile, "");
        EXPECT_TRUE(companion.waitForLog(taken));
        return request;
    };
    made["open-request"] = requestAfter(L"--send bracket", L"taken id=17");
    made["machine-settings"] = bytesOrNone(installation.path(L"temp\\mcsettings-17.txt"));
    made["check-in-request"] = requestAfter(L"--check-in", L"taken id=0");
    made["new-file-request"] = requestAfter(L"--new-file --id 7", L"taken id=7");
    return made;
}

// ---- The path of a part: sent by the Companion; opened, saved and committed by the shipped
// add-in.

inline constexpr unsigned postCommand = 41107; // in the host's File menu
inline constexpr int goOn = 37;                // an event that the add-in only logs

inline const std::string script = "wait-for CFile_DoFileSave( 60000\n"
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

inline Made roundTripOfAPart()
{
    const Installation installation(Registry::ofTheUser, installationOfThePages);
    installCompanionWithLibrary(installation);
    // The test receives the notice; the Companion would remove the queue.
    const LineReceiver port;
    const CompanionProgram companion(installation);
    const HostProgram host(installation, script);
    const auto nextLine = [&] { return port.nextConnection().value_or(""); };
    const auto bytesOf = [&](const std::wstring& file) {
        return bytesOrNone(installation.path(file));
    };
    if (!host.waitForCommandFile() || companion.run(L"--send bracket") != carriedOut ||
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
    EXPECT_EQ(companion.run(L"--new-file --id -1"), carriedOut);
    EXPECT_NE(nextLine(), "");
    const std::wstring process = std::to_wstring(companion.process().id());
    made["commit-records"] = bytesOf(L"temp\\torvapdm-" + process + L".dat");

    EXPECT_TRUE(host.sendEvent(goOn));
    EXPECT_EQ(host.process().waitForExit(), 0u);
    EXPECT_EQ(count(host.trace(), L"message-box"), 0u);
    return made;
}

// ---- The tool data of a part, made by the add-in's code from the host's records. Linked directly,
// because no exported function of the library reaches it.

inline const char oneOperation[] = R"(mastercam part 1

[plane]
id = 1
name = Top

[tool]
number = 4
length-offset = 5
feed-rate = 900
geometry-file = end-mill.step
overall-length = 80
shoulder-angle = 45
additional-diameter = 11.5
tip-angle = 118
pilot-diameter = 1.25
flute-length = 26
shoulder-length = 30
shoulder-diameter = 13
arbor-diameter = 14
holder-diameter = 50
holder-length = 60
plunge-rate = 300
retract-rate = 1000000
station = 8
slot = 9
spindle-speed = 8000
tool-group = 15
machine-group = 16
level = 18
spindle-rotation = 1

[operation]
id = 101
holder = 20
type = 19
compensation = 21
work-offset = 54
tool-plane = 1
construction-plane = 1
depth = -12.5
nc-name = BRACKET.NC
cycle-time = 61.5
tool.number = 4
tool.type = 10
tool.flutes = 3
tool.corner-radius-type = 2
tool.material = 1
tool.length-offset = 5
tool.diameter-offset = 6
tool.diameter = 12.5
tool.corner-radius = 0.5
tool.feed-rate = 900.25
tool.geometry-file = end-mill.step
tool.comment = End mill | 12=B
)";

inline Made toolDataOfAPart()
{
    const Installation installation(Registry::ofThisProcess, installationOfThePages);
    const LineReceiver port;
    EXPECT_TRUE(standin::startHost({}));
    writeBytes(installation.path(L"part.mcam"), oneOperation);
    EXPECT_TRUE(standin::putPart(installation.path(L"part.mcam")));
    AddInState::setRequestId(17);
    torvapdm::exportToolData();
    const Made made{{"tools-notice", port.nextConnection().value_or("")},
                    {"tool-data", bytesOrNone(installation.path(L"temp\\tool-17.txt"))}};
    standin::stopHost();
    return made;
}

// ---- A tool picture drawn by the shipped library.

inline Made pictureOfATool()
{
    const Installation installation(Registry::ofThisProcess, installationOfThePages);
    const HMODULE library = LoadLibraryW((programFolder() + L"torvapdm.dll").c_str());
    EXPECT_EQ(drawToolEntry(library)(24, 40, 7, 20, 0, 0, 10, 20, 40, 10, 1), 0);
    Made made{{"tool-picture", bytesOrNone(installation.path(L"temp\\toolimage-1.bmp"))}};
    FreeLibrary(library);
    return made;
}

// ---- Bytes that no program here writes.

// Each key has a visible effect: loading a part wakes the reader, saving sends the setup sheet, and
// the commit names a file in the Companion's folder.
inline void giveSettings(const std::string& bytes)
{
    const Installation installation(Registry::ofTheUser, installationOfThePages);
    writeBytes(installation.path(L"cfg\\settings.ini"), bytes);
    writeBytes(installation.path(L"part.mcam"), "");
    const LineReceiver port;
    CompanionDouble companion;
    companion.holdSemaphore();
    companion.showWindow();
    const HostProgram host(installation, "wait-for CFile_DoFileSave( 60000\n"
                                         "set setup_sheet_files C:\\ZEM\\tmp\\sheet.xml\n"
                                         "notify 3\n"
                                         "set geo_filename C:\\Parts\\a.mcam\n"
                                         "call m_save 0\n"
                                         "quit\n");
    EXPECT_TRUE(waitUntil([&] { return readBytes(host.commandFile()) == ""; }));
    EXPECT_TRUE(
        writeRequest(host.commandFile(), openRequest(17, toUtf8(installation.path(L"part.mcam")))));
    EXPECT_EQ(port.nextConnection(), "MCAMXMLIMPORTDATAID=17;C:\\ZEM\\tmp\\sheet.xml\n");
    EXPECT_EQ(port.nextConnection(), "ZEMID=17|C:\\ZEM\\tmp\\a.mcam\n");
    EXPECT_EQ(host.process().waitForExit(), 0u);
    EXPECT_EQ(count(host.trace(), L"ui catread5x.m_notify(6) -> 0"), 1u);
}

inline torvapdm::CheckoutAnswer answerOf(const std::string& bytes, std::wstring& kind)
{
    std::wstring text(bytes.size() / sizeof(wchar_t), L'\0');
    std::memcpy(text.data(), bytes.data(), text.size() * sizeof(wchar_t));
    return torvapdm::parseCheckoutAnswer(text, kind);
}

inline void giveCheckoutAnswer(const std::string& bytes)
{
    std::wstring kind;
    const auto answer = answerOf(bytes, kind);
    EXPECT_EQ(answer.kind, torvapdm::CheckoutAnswer::Kind::file);
    EXPECT_EQ(kind, L"CAD");
    EXPECT_EQ(answer.file.id, 1234);
    EXPECT_EQ(answer.file.path, L"C:\\Parts\\bracket.mcam");
}

inline void giveCheckinAnswer(const std::string& bytes)
{
    std::wstring kind;
    EXPECT_EQ(answerOf(bytes, kind).kind, torvapdm::CheckoutAnswer::Kind::checkIn);
}

inline const std::vector<ExchangeRun> exchangeRuns = {
    {"requests",
     {"registry-value", "open-request", "machine-settings", "new-file-request", "check-in-request"},
     requestsOfTheCompanion},
    {"roundTrip",
     {"commit-notice", "setup-sheet-notice", "load-log", "screen-picture", "queue-notice",
      "nc-queue", "commit-records"},
     roundTripOfAPart},
    {"toolData", {"tools-notice", "tool-data"}, toolDataOfAPart},
    {"toolPicture", {"tool-picture"}, pictureOfATool},
};

inline const std::vector<GivenBytes> givenBytes = {
    {"settings", giveSettings},
    {"check-out-answer", giveCheckoutAnswer},
    {"check-in-answer", giveCheckinAnswer},
};

} // namespace testing_support
