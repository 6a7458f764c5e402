#include "endtoend/command_file_run.h"

#include "fuzz/differences.h"
#include "peer/exchange_paths.h"
#include "support/companion_double.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <windows.h>

namespace testing_support {

namespace {

const std::string traceOfTheStart = "ui m_version(2100) -> 2100\nui m_open(0) -> 0\n";
const std::string traceOfTheEnd = "ui m_close(0) -> 0\n";

// The file is not opened, because an open handle would keep it from being deleted. Without a file,
// the largest number.
std::uintmax_t sizeOf(const std::wstring& path)
{
    std::error_code error;
    return std::filesystem::file_size(path, error);
}

} // namespace

CommandFileRun::CommandFileRun(const Installation& installation, const std::wstring& name,
                               std::vector<PlannedFile> files)
    : installation_(installation),
      tracePath_(installation.path(name + L".trace")),
      files_(std::move(files)),
      // Answers boxes, as a host does while a script runs, until the last part has been saved.
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
    // The host closes after the last file, and its command file goes with it.
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

} // namespace testing_support
