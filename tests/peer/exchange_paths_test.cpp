#include "peer/exchange_paths.h"
#include "peer/numbers.h"
#include "standin/companion/library/library.h"

#include <gtest/gtest.h>

using namespace peer;

TEST(PeerExchangePaths, areBelowTheInstallationFolder)
{
    EXPECT_EQ(commandFilePath(L"C:\\ZEM", 4294967295), L"C:\\ZEM\\temp\\mastercam-4294967295.dat");
    EXPECT_EQ(machineSettingsPath(L"C:\\ZEM", 17), L"C:\\ZEM\\temp\\mcsettings-17.txt");
    EXPECT_EQ(machineSettingsPath(L"C:\\ZEM", -1), L"C:\\ZEM\\temp\\mcsettings--1.txt");
    EXPECT_EQ(toolDataPath(L"C:\\ZEM", -17), L"C:\\ZEM\\temp\\tool--17.txt");
    EXPECT_EQ(toolPicturePath(L"C:\\ZEM", 4), L"C:\\ZEM\\temp\\toolimage-4.bmp");
    EXPECT_EQ(logPath(L"C:\\ZEM"), L"C:\\ZEM\\sys\\companion.log");
    EXPECT_EQ(libraryFolder(L"C:\\ZEM"), L"C:\\ZEM\\library");
    EXPECT_EQ(libraryIndexPath(L"C:\\ZEM"), L"C:\\ZEM\\library\\library.txt");
    EXPECT_EQ(workingCopiesPath(L"C:\\ZEM"), L"C:\\ZEM\\sys\\working-copies.txt");
    EXPECT_EQ(screenPicturePath(L"C:\\ZEM"), L"C:\\ZEM\\commit\\screendump.bmp");
    const CommitPaths requests = commitPaths(L"C:\\ZEM", 4294967295);
    EXPECT_EQ(requests.live, L"C:\\ZEM\\temp\\torvapdm-4294967295.dat");
    EXPECT_EQ(requests.closed, L"C:\\ZEM\\temp\\torvapdm-4294967295.closed");
    EXPECT_EQ(requests.bookmark, L"C:\\ZEM\\temp\\torvapdm-4294967295.taken");
    EXPECT_EQ(commitFilePattern(L"C:\\ZEM"), L"C:\\ZEM\\temp\\torvapdm-*");
}

TEST(PeerCommitFileName, containsTheProcessId)
{
    EXPECT_EQ(processOfCommitFile(L"torvapdm-4711.dat"), 4711u);
    EXPECT_EQ(processOfCommitFile(L"torvapdm-4294967295.closed"), 4294967295u);
    EXPECT_EQ(processOfCommitFile(L"torvapdm-0.taken"), 0u);
    for (const wchar_t* name :
         {L"torvapdm-.dat", L"torvapdm-4711", L"torvapdm-4711.dat.new", L"torvapdm-x.dat",
          L"torvapdm--1.dat", L"torvapdm-4294967296.dat", L"mastercam-4711.dat", L"4711.dat"})
        EXPECT_EQ(processOfCommitFile(name), std::nullopt) << name;
}

TEST(PeerPath, mayBeRemoteWithTwoSlashes)
{
    for (const wchar_t* path : {L"\\\\server\\share\\a.NC", L"//server/share/a.NC", L"\\/server",
                                L"/\\", L"\\\\?\\C:\\a.NC", L"\\\\.\\pipe\\a"})
        EXPECT_TRUE(mayBeRemote(path)) << path;
    for (const wchar_t* path :
         {L"", L"\\", L"\\a.NC", L"a.NC", L"C:\\a.NC", L"C:\\\\a.NC", L"a\\\\b"})
        EXPECT_FALSE(mayBeRemote(path)) << path;
}

TEST(PeerFileName, isAfterTheLastSeparator)
{
    EXPECT_EQ(fileNameOf(L"C:\\a\\b c.mcam"), L"b c.mcam");
    EXPECT_EQ(fileNameOf(L"C:\\a/b.mcam"), L"b.mcam");
    EXPECT_EQ(fileNameOf(L"b.mcam"), L"b.mcam");
    EXPECT_EQ(fileNameOf(L"C:\\a\\"), L"");
}

TEST(PeerMachineSettings, areNamedAfterTheirRequest)
{
    EXPECT_EQ(requestOfMachineSettings(L"mcsettings-17.txt"), 17);
    EXPECT_EQ(requestOfMachineSettings(L"mcsettings--1.txt"), -1);
    for (const wchar_t* name : {L"mcsettings-.txt", L"mcsettings-017.txt", L"mcsettings-17.dat",
                                L"mcsettings-2147483648.txt", L"tool-17.txt"})
        EXPECT_EQ(requestOfMachineSettings(name), std::nullopt) << name;
}
