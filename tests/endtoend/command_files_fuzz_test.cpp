// Writes two thousand random command files for real hosts with the shipped add-in: each has exactly
// the effect that the reference implementation predicts, and none is lost.
#include "endtoend/command_file_plan.h"
#include "fuzz/differences.h"
#include "peer/exchange_paths.h"
#include "support/bytes.h"
#include "support/companion_double.h"
#include "support/host_program.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>

using namespace testing_support;

namespace {

const std::string traceOfTheStart = "ui m_version(2100) -> 2100\nui m_open(0) -> 0\n";
const std::string traceOfTheEnd = "ui m_close(0) -> 0\n";

// Does not open the file, because an open handle would prevent its deletion. Returns the largest
// number if there is no file.
std::uintmax_t sizeOf(const std::wstring& path)
{
    std::error_code error;
    return std::filesystem::file_size(path, error);
}

// A host that receives one command file after another.
class CommandFileRun {
public:
    // Starts a host with this name. The host closes after it has opened the last file's part.
    CommandFileRun(const Installation& installation, const std::wstring& name,
                   std::vector<PlannedFile> files);

    // Writes the next file once the previous one has been read and its lines are in the trace.
    // Never waits.
    void goOn();
    // All files have been handled, or handling the last written one has timed out.
    bool isAtEnd() const { return isLost_ || (done_ && sent_ == files_.size()); }

    // Expects that each file had its effect and that the host then closes.
    void expectPlanned() const;

private:
    bool isThroughWithTheLast() const;

    const Installation& installation_;
    const std::wstring tracePath_;
    const std::vector<PlannedFile> files_;
    HostProgram host_;
    size_t sent_ = 0;
    std::uint64_t plannedTraceSize_; // total size of the trace expected so far
    unsigned long long sentAt_;      // milliseconds
    bool done_ = false;
    bool isLost_ = false;
};

CommandFileRun::CommandFileRun(const Installation& installation, const std::wstring& name,
                               std::vector<PlannedFile> files)
    : installation_(installation),
      tracePath_(installation.path(name + L".trace")),
      files_(std::move(files)),
      // Answers message boxes while a script runs, until the last part has been saved.
      host_(installation, "wait-for " + std::string(lastPartName) + "\", main 240000\nquit\n",
            name),
      plannedTraceSize_(traceOfTheStart.size()),
      sentAt_(GetTickCount64())
{
}

void CommandFileRun::goOn()
{
    if (isAtEnd())
        return;
    if (!isThroughWithTheLast()) {
        isLost_ = GetTickCount64() - sentAt_ > generousMs;
        return;
    }
    done_ = sent_ == files_.size();
    if (done_)
        return;
    const PlannedFile& file = files_[sent_];
    if (file.machineRequest)
        writeBytes(peer::machineSettingsPath(installation_.root(), *file.machineRequest),
                   machineSettingsText(*file.machineRequest));
    if (!writeRequest(host_.commandFile(), file.bytes))
        return;
    ++sent_;
    plannedTraceSize_ += file.trace.size();
    sentAt_ = GetTickCount64();
}

bool CommandFileRun::isThroughWithTheLast() const
{
    if (sizeOf(tracePath_) + 1 <= plannedTraceSize_)
        return false;
    // The host closes after the last file and deletes its command file.
    return sent_ == files_.size() || sizeOf(host_.commandFile()) == 0;
}

void CommandFileRun::expectPlanned() const
{
    EXPECT_TRUE(isAtEnd() && !isLost_) << "lost, or not taken: file " << sent_ - 1;
    EXPECT_TRUE(isLost_ || host_.process().waitForExit() == 0u);
    const std::string trace = readBytes(tracePath_).value_or("");
    size_t at = traceOfTheStart.size();
    ASSERT_EQ(trace.substr(0, at), traceOfTheStart);
    for (const PlannedFile& file : files_) {
        ASSERT_EQ(trace.substr(at, file.trace.size()), file.trace)
            << "with this file, or one before it without an effect: " << fuzzing::shown(file.bytes);
        at += file.trace.size();
    }
    EXPECT_EQ(trace.substr(at), traceOfTheEnd);
}

// A listener reads a file about every 100 ms; several hosts in parallel, each with its own files.
constexpr unsigned hosts = 16;
constexpr size_t filesEach = 64;
constexpr std::uint64_t seed = 20'260;

std::vector<PlannedFile> planFiles(const Installation& installation, unsigned host)
{
    CommandFilePlan plan(installation, {host, hosts}, seed + host);
    std::vector<PlannedFile> files;
    while (files.size() < filesEach)
        files.push_back(plan.next());
    files.push_back(plan.last());
    return files;
}

// How many planned files have this text in their trace; an empty text means no trace.
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
    EXPECT_GE(files.size(), 1000u);
    for (const char* text : {"", "m_fclose", "DoFileOpen", "does not exist"})
        EXPECT_GE(countWithTrace(files, text), 50u) << text;
    EXPECT_GE(countWithTrace(files, "OnFileNew"), countWithTrace(files, "m_fclose") + 50);
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
        4 * generousMs);
    for (unsigned i = 0; i < hosts; ++i) {
        SCOPED_TRACE("host " + std::to_string(i) + ", seed " + std::to_string(seed + i));
        runs[i]->expectPlanned();
    }
}
