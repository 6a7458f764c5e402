#include "formats/checkout_answer.h"
#include "documents/exchange_run.h"
#include "support/host_program.h"
#include "support/companion_double.h"
#include "support/sockets.h"

#include <cstring>
#include <gtest/gtest.h>

using namespace testing_support;

namespace documents {

using torvapdm::CheckoutAnswer;

static CheckoutAnswer answerOf(const std::string& bytes, std::wstring& kind)
{
    std::wstring text(bytes.size() / sizeof(wchar_t), L'\0');
    std::memcpy(text.data(), bytes.data(), text.size() * sizeof(wchar_t));
    return torvapdm::parseCheckoutAnswer(text, kind);
}

// Each key has a visible effect: loading a part wakes the reader, saving sends the setup sheet, and
// the commit names a file in the Companion's folder.
void giveSettings(const std::string& bytes)
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

void giveCheckoutAnswer(const std::string& bytes)
{
    std::wstring kind;
    const CheckoutAnswer answer = answerOf(bytes, kind);
    EXPECT_EQ(answer.kind, CheckoutAnswer::Kind::file);
    EXPECT_EQ(kind, L"CAD");
    EXPECT_EQ(answer.file.id, 1234);
    EXPECT_EQ(answer.file.path, L"C:\\Parts\\bracket.mcam");
}

void giveCheckinAnswer(const std::string& bytes)
{
    std::wstring kind;
    EXPECT_EQ(answerOf(bytes, kind).kind, CheckoutAnswer::Kind::checkIn);
}

} // namespace documents
