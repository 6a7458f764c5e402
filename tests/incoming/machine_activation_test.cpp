#include "incoming/machine_activation.h"

#include "support/add_in_state.h"
#include "support/host_fixture.h"
#include "incoming/incoming_state.h"
#include "host/host.h"
#include "support/system_calls.h"

using namespace torvapdm;
using namespace testing_support;

namespace {

class MachineSettingsFile : public HostFixture {
protected:
    std::wstring file(int id) const
    {
        return installation.path(L"temp\\mcsettings-" + std::to_wstring(id) + L".txt");
    }
    bool exists(int id) const { return readBytes(file(id)).has_value(); }
    static std::wstring activated(const std::wstring& path)
    {
        return L"ui SetActiveMachine(\"" + path + L"\") -> true";
    }
};

std::wstring watchedSettings;
std::vector<std::string> activations;

bool notedActivation(const wchar_t* path)
{
    const bool isClosed = DeleteFileW(watchedSettings.c_str());
    activations.push_back(toUtf8(path) + ' ' + std::to_string(AddInState::ncPathNumber()) + ' ' +
                          std::to_string(AddInState::secondSettingsNumber()) +
                          (isClosed || GetLastError() != ERROR_SHARING_VIOLATION ? " closed" : ""));
    return true;
}

} // namespace

TEST_F(MachineSettingsFile, isOpenWhileItsMachineIsActivated)
{
    watchedSettings = file(0);
    writeBytes(file(0), "0|8|9|C:\\M\n");
    standin::redirectImports(GetModuleHandleW(nullptr), &SetActiveMachine, &notedActivation);
    transferMachineSettings();
    EXPECT_EQ(activations, std::vector<std::string>{"C:\\M 8 9"});
    EXPECT_FALSE(exists(0));
}

TEST_F(MachineSettingsFile, mayNameNoMachine)
{
    writeBytes(file(0), "0|8|9|\n");
    transferMachineSettings();
    EXPECT_EQ(newTrace(), Lines{LR"(ui SetActiveMachine("") -> false)"});
    EXPECT_FALSE(exists(0));
}

TEST_F(MachineSettingsFile, isReadOnItsFirstLineOnly)
{
    AddInState::setRequestId(-3);
    writeBytes(file(-3), "-3|8|9|C:\\First\r\n-3|1|1|C:\\Second\r\n");
    transferMachineSettings();
    EXPECT_EQ(newTrace(), Lines{activated(L"C:\\First")});
    EXPECT_EQ(AddInState::ncPathNumber(), 8);
    EXPECT_EQ(AddInState::secondSettingsNumber(), 9);
    EXPECT_FALSE(exists(-3));
}

TEST_F(MachineSettingsFile, isIgnoredForAnotherRequest)
{
    AddInState::setRequestId(1);
    writeBytes(file(2), "2|8|9|C:\\M");
    transferMachineSettings();
    EXPECT_EQ(newTrace(), Lines{});
    EXPECT_EQ(AddInState::ncPathNumber(), -1);
    EXPECT_TRUE(exists(2));
}

TEST_F(MachineSettingsFile, staysOpenWhenEmpty)
{
    writeBytes(file(0), "");
    transferMachineSettings();
    EXPECT_EQ(newTrace(), Lines{});
    EXPECT_TRUE(exists(0));
    EXPECT_FALSE(DeleteFileW(file(0).c_str())); // open without FILE_SHARE_DELETE
    EXPECT_EQ(GetLastError(), DWORD{ERROR_SHARING_VIOLATION});
}

TEST_F(MachineSettingsFile, isIgnoredWhileLocked)
{
    writeBytes(file(0), "0|8|9|C:\\M\n");
    const HANDLE lock = CreateFileW(file(0).c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    transferMachineSettings();
    EXPECT_EQ(newTrace(), Lines{});
    CloseHandle(lock);
    EXPECT_TRUE(exists(0));
}

TEST_F(MachineSettingsFile, isAllMachineWithoutBars)
{
    AddInState::setNcPathNumber(5);
    AddInState::setSecondSettingsNumber(6);
    writeBytes(file(0), "C:\\whole line\n");
    transferMachineSettings();
    EXPECT_EQ(newTrace(), Lines{activated(L"C:\\whole line")});
    EXPECT_EQ(AddInState::ncPathNumber(), 5);
    EXPECT_EQ(AddInState::secondSettingsNumber(), 6);
}

TEST_F(MachineSettingsFile, passesTheMachineUnchanged)
{
    writeBytes(installation.path(L"a.txt"), "precious");
    const Lines paths = {L"..\\..\\a.txt",
                         installation.path(L"temp\\..\\a.txt"),
                         L"\\\\server.invalid\\share\\m",
                         L"NUL",
                         L"COM1",
                         L"\\\\.\\pipe\\nobodys",
                         L"\\\\?\\C:\\m",
                         L"C:\\a.txt:stream"};
    for (const std::wstring& path : paths) {
        writeBytes(file(0), "0|8|9|" + toUtf8(path) + '\n');
        transferMachineSettings();
        EXPECT_EQ(newTrace(), Lines{activated(path)});
        EXPECT_FALSE(exists(0));
    }
    EXPECT_EQ(readBytes(installation.path(L"a.txt")), "precious");
}

TEST_F(MachineSettingsFile, isNamedByTheRequestId)
{
    for (const std::int32_t id : {std::int32_t{INT32_MIN}, std::int32_t{INT32_MAX}}) {
        AddInState::setRequestId(id);
        writeBytes(file(id), "x");
        transferMachineSettings();
        EXPECT_FALSE(exists(id));
    }
    EXPECT_EQ(newTrace(), Lines(2, activated(L"x")));
}

TEST_F(MachineSettingsFile, isAppliedTwiceForACadFile)
{
    AddInState::setFileTypePrefix(L"CAD");
    writeBytes(file(0), "0|1|2|C:\\M\n");
    transferMachineSettings();
    EXPECT_EQ(newTrace(), (Lines{activated(L"C:\\M"), activated(L"C:\\M")}));
}

TEST_F(MachineSettingsFile, isDeletedDespiteAnException)
{
    AddInState::setFileTypePrefix(L"CAD");
    writeBytes(file(0), "0|1|2|C:\\M\n");
    standin::raiseNext("SetActiveMachine");
    transferMachineSettings();
    EXPECT_EQ(newTrace(), (Lines{LR"(ui SetActiveMachine("C:\M") raised)", activated(L"C:\\M")}));
    EXPECT_FALSE(exists(0));
    EXPECT_EQ(standin::undeletedExceptions(), 0);
}

TEST_F(MachineSettingsFile, isNotReadUnderASimilarName)
{
    // In code page 1252, U+0100 resembles A.
    for (const wchar_t* folder : {L"A", L"A\\temp", L"\u0100", L"\u0100\\temp"})
        CreateDirectoryW(installation.path(folder).c_str(), nullptr);
    registerInstallation(installation.path(L"\u0100"));
    for (const wchar_t* folder : {L"A", L"\u0100"})
        writeBytes(installation.path(folder) + L"\\temp\\mcsettings-0.txt", "0|1|2|C:\\M\n");
    transferMachineSettings();
    EXPECT_EQ(newTrace(), Lines{});
    EXPECT_EQ(AddInState::ncPathNumber(), -1);
}

TEST_F(MachineSettingsFile, isWidenedByteByByte)
{
    writeBytes(file(0), "0|1|2|C:\\\x80\xC4\xFF\n");
    transferMachineSettings();
    EXPECT_EQ(newTrace(), Lines{activated(L"C:\\\x80\xC4\xFF")});
}

TEST_F(MachineSettingsFile, isCutAfter1023Characters)
{
    writeBytes(file(0), std::string(1000, 'x') + "|" + std::string(100, 'p') + "\n");
    transferMachineSettings();
    EXPECT_EQ(newTrace(), Lines{activated(std::wstring(22, L'p'))});
}
