// `zemlink verify addin` with the stand-in host: the shipped add-in, and the same with a flaw.
#include "peer/running_programs.h"
#include "peer/wire_constants.h"
#include "support/installation.h"
#include "tools/zemlink/reports/report.h"
#include "zemlink/own_console.h"
#include "zemlink/tool_run.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>

using namespace testing_support;
using zemlink::Report;

namespace {

using Ids = std::vector<std::string>;

std::wstring argumentsFor(const std::wstring& library)
{
    return L"verify addin " + quoted(programFolder() + L"Mastercam.exe") + L' ' +
           quoted(programFolder() + library);
}

Report verified(const Installation& installation, const std::wstring& library)
{
    const ToolResult result = runTool(installation, argumentsFor(library) + L" --json");
    EXPECT_EQ(result.errors, "");
    return Report::parse(result.output, nullptr, false);
}

Ids rulesThatAre(const Report& report, const std::string& result)
{
    Ids ids;
    for (const Report& rule : report["rules"])
        if (rule["result"] == result)
            ids.push_back(rule["id"]);
    return ids;
}

std::wstring registeredFolder()
{
    wchar_t folder[MAX_PATH] = L"";
    DWORD size = sizeof folder;
    RegGetValueW(HKEY_CURRENT_USER, peer::registryKey, peer::registryValue,
                 RRF_RT_REG_SZ | RRF_SUBKEY_WOW6432KEY, nullptr, folder, &size);
    return folder;
}

// Names in the user's temporary folder.
std::set<std::wstring> temporaryFiles()
{
    std::set<std::wstring> names;
    for (const auto& each :
         std::filesystem::directory_iterator(std::filesystem::temp_directory_path()))
        names.insert(each.path().filename().native());
    return names;
}

// Without the folders of verifications that were killed, which the next one removes.
std::set<std::wstring> temporaryFilesToKeep()
{
    std::set<std::wstring> names = temporaryFiles();
    std::erase_if(names, [](const auto& name) { return name.starts_with(L"zemlink verify "); });
    return names;
}

struct FlawedAddIn {
    const char* flaws;
    Ids broken;
    Ids notSeen{};
};

// Flaws in one row have nothing to do with each other.
const FlawedAddIn flawedAddIns[] = {
    {"undeletable-command-file,record-cut,property-stays",
     {"start.command-file-sharing", "commit.record", "end.close-property"}},
    {"check-out-without-quotes,no-lock,notice-without-line-end,machine-settings-stay",
     {"machine.deleted", "commit.lock", "commit.notice", "companion.check-out"},
     {"commit.lock-only-record"}},
    {"no-property,record-over-first,no-picture",
     {"start.host-property", "commit.picture", "commit.appended"},
     {"commit.picture-first", "commit.lock", "commit.lock-only-record", "end.close-property"}},
    {"opens-during-backplot,late-picture", {"requests.backplot", "commit.picture-first"}},
};

void PrintTo(const FlawedAddIn& flawed, std::ostream* stream)
{
    *stream << flawed.flaws;
}

class VerifiedAddIn : public ::testing::Test {
protected:
    const Installation installation{Registry::ofTheUser};
};

class EachAddInFlaw : public VerifiedAddIn, public ::testing::WithParamInterface<FlawedAddIn> {};

} // namespace

TEST_F(VerifiedAddIn, endsWithItsHostsWhenItIsKilled)
{
    const std::set<std::wstring> before = temporaryFilesToKeep();
    Process tool(quoted(programFolder() + L"zemlink.exe") + L' ' + argumentsFor(L"torvapdm.dll"));
    ASSERT_TRUE(waitUntil([] { return peer::findHosts().size() == 2; }));
    tool.end();
    EXPECT_TRUE(waitUntil([] { return peer::findHosts().empty(); }));
    EXPECT_NE(registeredFolder(), installation.root());
    const ToolResult again = runTool(installation, argumentsFor(L"torvapdm.dll"));
    EXPECT_EQ(again.exitCode, 0u) << again.output << again.errors;
    EXPECT_EQ(registeredFolder(), installation.root());
    EXPECT_EQ(temporaryFiles(), before);
}

TEST_F(VerifiedAddIn, isLeftAloneAtCtrlC)
{
    const OwnConsole console;
    const std::set<std::wstring> before = temporaryFilesToKeep();
    const ToolRun run(installation, argumentsFor(L"torvapdm.dll"));
    ASSERT_TRUE(waitUntil([] { return peer::findHosts().size() == 2; }));
    console.pressCtrlC();
    EXPECT_EQ(run.waitForExit(), 1u);
    EXPECT_EQ(run.errors(), "zemlink: the verification was interrupted\n");
    EXPECT_TRUE(peer::findHosts().empty());
    EXPECT_EQ(registeredFolder(), installation.root());
    EXPECT_EQ(temporaryFiles(), before);
}

TEST_F(VerifiedAddIn, needsAHostThatTakesScripts)
{
    wchar_t folder[MAX_PATH] = L"";
    GetSystemDirectoryW(folder, MAX_PATH);
    const std::wstring library = quoted(programFolder() + L"torvapdm.dll");
    const ToolResult result =
        runTool(installation, L"verify addin --timeout 1 " +
                                  quoted(folder + std::wstring(L"\\notepad.exe")) + L' ' + library);
    EXPECT_EQ(result.exitCode, 1u);
    EXPECT_NE(result.errors.find("does it take --addin, --script and --trace?"), std::string::npos)
        << result.errors;
    EXPECT_EQ(registeredFolder(), installation.root());
}

TEST_P(EachAddInFlaw, breaksOnlyItsRules)
{
    SetEnvironmentVariableA("FLAWS", GetParam().flaws);
    const std::set<std::wstring> before = temporaryFilesToKeep();
    const Report report = verified(installation, L"flawed_addin.dll");
    EXPECT_EQ(rulesThatAre(report, "broken"), GetParam().broken) << report.dump(1);
    EXPECT_EQ(rulesThatAre(report, "not seen"), GetParam().notSeen) << report.dump(1);
    EXPECT_EQ(temporaryFiles(), before);
    EXPECT_EQ(registeredFolder(), installation.root());
}

INSTANTIATE_TEST_SUITE_P(VerifiedAddIn, EachAddInFlaw, ::testing::ValuesIn(flawedAddIns));
