#include "endtoend/command_file_run.h"

#include "fuzz/differences.h"
#include "support/companion_double.h"

#include <windows.h>

namespace testing_support {

namespace {

const std::string traceOfTheStart = "ui m_version(2100) -> 2100\nui m_open(0) -> 0\n";
const std::string traceOfTheEnd = "ui m_close(0) -> 0\n";

// Answers boxes, as a host does while a script runs, until the last part has been saved.
std::string scriptUntilTheLastPart()
{
    return "wait-for " + std::string(lastPartName) + "\", main 240000\nquit\n";
}

// Nothing is opened for it, because an open handle would keep the file from being deleted.
std::optional<std::uint64_t> sizeOf(const std::wstring& path)
{
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data))
        return std::nullopt;
    return std::uint64_t{data.nFileSizeHigh} << 32 | data.nFileSizeLow;
}

// Of a long file only the beginning is shown: the seed makes it again.
std::string shownBytes(const std::string& bytes)
{
    constexpr size_t mostShown = 400;
    return std::to_string(bytes.size()) + " bytes " +
           fuzzing::shown(std::string_view(bytes).substr(0, mostShown)) +
           (bytes.size() > mostShown ? " and so on" : "");
}

} // namespace

CommandFileRun::CommandFileRun(const Installation& installation, const std::wstring& name,
                               std::vector<PlannedFile> files)
    : installation_(installation),
      tracePath_(installation.path(name + L".trace")),
      files_(std::move(files)),
      host_(installation, scriptUntilTheLastPart(), name),
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
        writeBytes(machineSettingsPath(installation_, *file.machineRequest),
                   machineSettingsText(*file.machineRequest));
    if (!writeRequest(host_.commandFile(), file.bytes))
        return;
    ++sent_;
    plannedTraceSize_ += file.trace.size();
    sentAt_ = GetTickCount64();
}

bool CommandFileRun::isThroughWithTheLast() const
{
    if (sizeOf(tracePath_).value_or(0) < plannedTraceSize_)
        return false;
    // The host closes after the last file, and its command file goes with it.
    return sent_ == files_.size() || sizeOf(host_.commandFile()) == 0u;
}

std::string CommandFileRun::complaint() const
{
    const std::string lost = isLost_ ? lostFile() : "";
    if (!isLost_ && host_.process().waitForExit() != 0u)
        return "the host did not close with 0";
    return lost + firstDifference(readBytes(tracePath_).value_or(""));
}

std::string CommandFileRun::lostFile() const
{
    if (sent_ == 0)
        return "the host did not get ready\n";
    return "file " + std::to_string(sent_ - 1) +
           " was not carried out: " + shownBytes(files_[sent_ - 1].bytes) +
           "\nwhat differs first:\n";
}

std::string CommandFileRun::firstDifference(const std::string& trace) const
{
    size_t at = traceOfTheStart.size();
    if (trace.compare(0, at, traceOfTheStart) != 0)
        return "the trace begins otherwise than with the add-in's start";
    for (size_t i = 0; i < files_.size(); ++i) {
        const std::string& planned = files_[i].trace;
        if (trace.compare(at, planned.size(), planned) != 0)
            return "file " + std::to_string(i) +
                   ", or one before it without an effect: " + shownBytes(files_[i].bytes) +
                   "\nplanned:\n" + planned + "traced:\n" + trace.substr(at, planned.size() + 200);
        at += planned.size();
    }
    if (trace.substr(at) != traceOfTheEnd)
        return "after the last file the trace goes on:\n" + trace.substr(at, 800);
    return "";
}

} // namespace testing_support
