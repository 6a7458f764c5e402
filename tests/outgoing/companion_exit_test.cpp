// The Companion exits right after the add-in has found its window.
#include "outgoing/commit.h"
#include "support/companion_program.h"
#include "support/add_in_state.h"
#include "control.h"
#include "support/system_calls.h"

#include <gtest/gtest.h>

#include <utility>

using namespace torvapdm;
using namespace testing_support;

namespace {

HANDLE endingCompanion = nullptr;

// Terminates the Companion before its commit file is opened.
HANDLE WINAPI createFileOfTheEnded(LPCWSTR path, DWORD access, DWORD share,
                                   LPSECURITY_ATTRIBUTES security, DWORD disposition, DWORD flags,
                                   HANDLE pattern)
{
    if (endingCompanion &&
        std::wstring_view(path).find(L"\\torvapdm-") != std::wstring_view::npos) {
        TerminateProcess(endingCompanion, 98);
        WaitForSingleObject(endingCompanion, INFINITE);
    }
    return systems(&CreateFileW, "CreateFileW")(path, access, share, security, disposition, flags,
                                                pattern);
}

} // namespace

TEST(EndingCompanion, leavesTheCommitToTheNextOne)
{
    const Installation installation(Registry::ofTheUser);
    installation.endStandardInput();
    installCompanionWithLibrary(installation);
    const std::wstring part = installation.path(L"part.mcam");
    writeBytes(part, "mastercam part 1\n");
    ASSERT_TRUE(standin::startHost({.tracePath = {}, .answersMessageBoxes = true}));
    standin::setState("geo_filename", part);
    AddInState::setZemId(77);
    {
        const CompanionProgram companion(installation);
        ASSERT_NE(companion.waitForWindow(), nullptr);
        endingCompanion =
            OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, companion.process().id());
        ASSERT_NE(endingCompanion, nullptr);
        redirectCalls(&CreateFileW, "CreateFileW", &createFileOfTheEnded);
        EXPECT_TRUE(commitDocument());
        EXPECT_FALSE(companion.process().isRunning());
        EXPECT_EQ(companion.count(L"commit file="), 0u);
        CloseHandle(std::exchange(endingCompanion, nullptr));
    }
    const CompanionProgram next(installation);
    EXPECT_TRUE(next.waitForLog(L"version name=\"part\" version=1 "));
    EXPECT_EQ(next.count(L"commit file=\"" + part + L"\" id=77 "), 1u);
    standin::stopHost();
}
