#include "tools/zemlink/verify/program_job.h"

#include <cstdio>
#include <stdexcept>

namespace zemlink {
namespace {

constexpr DWORD endBoundMs = 10000;

// What it prints must not get between the lines of zemlink.
peer::OwnHandle openNothing()
{
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    return peer::ownFile(CreateFileW(L"NUL", GENERIC_READ | GENERIC_WRITE,
                                     FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited, OPEN_EXISTING,
                                     0, nullptr));
}

// Starting can fail for a moment while another process of the same program is ending.
bool isWorthTrying(DWORD error)
{
    return error != ERROR_BAD_EXE_FORMAT && error != ERROR_FILE_NOT_FOUND;
}

// A process belongs to the job from its first moment, so that it never outlives zemlink, and
// inherits this handle and no other: a socket of ours would stay open in it.
class StartAttributes {
public:
    StartAttributes(HANDLE job, HANDLE inherited) : job_(job), inherited_(inherited)
    {
        constexpr DWORD count = 2;
        SIZE_T size = 0;
        InitializeProcThreadAttributeList(nullptr, count, 0, &size);
        list_.resize(size);
        if (!InitializeProcThreadAttributeList(get(), count, 0, &size) ||
            !set(PROC_THREAD_ATTRIBUTE_JOB_LIST, job_) ||
            !set(PROC_THREAD_ATTRIBUTE_HANDLE_LIST, inherited_))
            throw std::runtime_error("the program's start cannot be prepared");
    }
    ~StartAttributes() { DeleteProcThreadAttributeList(get()); }
    StartAttributes(const StartAttributes&) = delete;
    StartAttributes& operator=(const StartAttributes&) = delete;

    LPPROC_THREAD_ATTRIBUTE_LIST get()
    {
        return reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(list_.data());
    }

private:
    bool set(DWORD_PTR attribute, HANDLE& handle)
    {
        return UpdateProcThreadAttribute(get(), 0, attribute, &handle, sizeof handle, nullptr,
                                         nullptr) != FALSE;
    }

    HANDLE job_, inherited_; // the list refers to them
    std::vector<char> list_{};
};

PROCESS_INFORMATION createProcess(HANDLE job, const std::wstring& program,
                                  const std::wstring& arguments, WORD show)
{
    constexpr int tries = 10;
    constexpr DWORD pauseMs = 100;
    std::wstring commandLine = L'"' + program + L'"';
    if (!arguments.empty())
        commandLine += L' ' + arguments;
    const peer::OwnHandle nothing = openNothing();
    StartAttributes attributes(job, nothing.get());
    STARTUPINFOEXW start{};
    start.lpAttributeList = attributes.get();
    start.StartupInfo.cb = sizeof start;
    start.StartupInfo.dwFlags = STARTF_USESHOWWINDOW | STARTF_USESTDHANDLES;
    start.StartupInfo.wShowWindow = show;
    start.StartupInfo.hStdInput = start.StartupInfo.hStdOutput = start.StartupInfo.hStdError =
        nothing.get();
    PROCESS_INFORMATION created{};
    DWORD error = ERROR_SUCCESS;
    for (int i = 0; i < tries && (i == 0 || isWorthTrying(error)); ++i) {
        if (CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, TRUE,
                           CREATE_NO_WINDOW | EXTENDED_STARTUPINFO_PRESENT, nullptr, nullptr,
                           &start.StartupInfo, &created))
            return created;
        error = GetLastError();
        Sleep(pauseMs);
    }
    throw std::runtime_error("the program cannot be started: error " + std::to_string(error));
}

} // namespace

ProgramJob::ProgramJob() : job_(CreateJobObjectW(nullptr, nullptr))
{
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    if (!SetInformationJobObject(job_.get(), JobObjectExtendedLimitInformation, &limits,
                                 sizeof limits))
        throw std::runtime_error("no job for the program's processes can be made");
}

HANDLE ProgramJob::start(const std::wstring& program, const std::wstring& arguments)
{
    return start(program, arguments, arguments.empty() ? SW_SHOWNORMAL : SW_HIDE);
}

HANDLE ProgramJob::start(const std::wstring& program, const std::wstring& arguments, WORD show)
{
    const PROCESS_INFORMATION created = createProcess(job_.get(), program, arguments, show);
    CloseHandle(created.hThread);
    started_.emplace_back(created.hProcess);
    return created.hProcess;
}

bool ProgramJob::isEmpty() const
{
    JOBOBJECT_BASIC_ACCOUNTING_INFORMATION counts{};
    return QueryInformationJobObject(job_.get(), JobObjectBasicAccountingInformation, &counts,
                                     sizeof counts, nullptr) &&
           counts.ActiveProcesses == 0;
}

bool ProgramJob::contains(HANDLE process) const
{
    BOOL isContained = FALSE;
    return IsProcessInJob(process, job_.get(), &isContained) && isContained;
}

void ProgramJob::end()
{
    constexpr DWORD lookEveryMs = 5;
    TerminateJobObject(job_.get(), endedByZemlink);
    for (const peer::OwnHandle& process : started_)
        WaitForSingleObject(process.get(), endBoundMs);
    // Processes that those have started.
    for (DWORD waitedMs = 0; waitedMs < endBoundMs && !isEmpty(); waitedMs += lookEveryMs)
        Sleep(lookEveryMs);
}

bool hasEnded(HANDLE process)
{
    return WaitForSingleObject(process, 0) == WAIT_OBJECT_0;
}

std::string endText(HANDLE process)
{
    DWORD code = 0;
    GetExitCodeProcess(process, &code);
    constexpr DWORD leastError = 0xC0000000; // of the system's codes for crashes
    char text[32];
    std::snprintf(text, sizeof text, code >= leastError ? "%08lX" : "%lu", code);
    return std::string("it ended with exit code ") + text;
}

} // namespace zemlink
