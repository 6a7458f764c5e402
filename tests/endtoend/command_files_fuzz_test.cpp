// Two thousand random command files, written for real hosts with the add-in that ships: each has
// exactly the effect that the plain rule gives it, and none is lost.
#include "endtoend/command_file_run.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>

using namespace testing_support;

namespace {

// A listener takes a file every 100 ms or so; several hosts at once have their own each.
constexpr unsigned hosts = 16;
constexpr size_t filesEach = 125;
constexpr std::uint64_t seed = 20'260;
constexpr unsigned longestRunMs = 4 * generousMs;

std::vector<PlannedFile> planFiles(const Installation& installation, unsigned host)
{
    CommandFilePlan plan(installation, {host, hosts}, seed + host);
    std::vector<PlannedFile> files;
    while (files.size() < filesEach)
        files.push_back(plan.next());
    files.push_back(plan.last());
    return files;
}

// How many of the planned files leave this in the trace; an empty text means no trace.
size_t countWithTrace(const std::vector<PlannedFile>& files, const std::string& text)
{
    return static_cast<size_t>(std::count_if(
        files.begin(), files.end(),
        [&](const PlannedFile& file) {
            return text.empty() ? file.trace.empty() : file.trace.find(text) != std::string::npos;
        }));
}

} // namespace

TEST(FuzzedCommandFiles, areOfEveryKind)
{
    const Installation installation(Registry::ofTheUser);
    std::vector<PlannedFile> files;
    for (unsigned i = 0; i < hosts; ++i)
        for (const PlannedFile& file : planFiles(installation, i))
            files.push_back(file);
    EXPECT_GE(files.size(), 2000u);
    for (const char* text : {"", "m_fclose", "DoFileOpen", "does not exist"})
        EXPECT_GE(countWithTrace(files, text), 100u) << text;
    EXPECT_GE(countWithTrace(files, "OnFileNew"), countWithTrace(files, "m_fclose") + 100);
}

TEST(FuzzedCommandFiles, haveTheExpectedEffect)
{
    const Installation installation(Registry::ofTheUser);
    std::vector<std::unique_ptr<CommandFileRun>> runs;
    for (unsigned i = 0; i < hosts; ++i)
        runs.push_back(std::make_unique<CommandFileRun>(installation, L"host " + std::to_wstring(i),
                                                        planFiles(installation, i)));
    waitUntil(
        [&] {
            bool areAllAtEnd = true;
            for (const auto& run : runs) {
                run->goOn();
                areAllAtEnd = areAllAtEnd && run->isAtEnd();
            }
            return areAllAtEnd;
        },
        longestRunMs);
    for (unsigned i = 0; i < hosts; ++i) {
        SCOPED_TRACE("host " + std::to_string(i) + ", seed " + std::to_string(seed + i));
        runs[i]->expectPlanned();
    }
}
