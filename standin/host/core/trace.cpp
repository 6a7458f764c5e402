#include "core/trace.h"

#include "control.h"
#include "core/lock.h"
#include "core/session.h"
#include "core/text.h"

#include <mutex>

namespace standin {

namespace {

struct Trace {
    Lock lock;
    std::vector<std::wstring> lines;
    size_t searchStart = 0;
    HANDLE file = INVALID_HANDLE_VALUE;
};

Trace& theTrace()
{
    static Trace trace;
    return trace;
}

void writeToFile(HANDLE file, const std::wstring& line)
{
    const std::string bytes = toUtf8(line) + '\n';
    DWORD written = 0;
    WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}

// Call with the trace's lock held.
void closeFile(Trace& held)
{
    if (held.file != INVALID_HANDLE_VALUE)
        CloseHandle(held.file);
    held.file = INVALID_HANDLE_VALUE;
}

} // namespace

bool openTrace(const std::wstring& path)
{
    Trace& held = theTrace();
    const std::scoped_lock guard(held.lock);
    closeFile(held);
    held.lines.clear();
    held.searchStart = 0;
    if (path.empty())
        return true;
    // All sharing modes: the tests read the file while it is written.
    constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    held.file = CreateFileW(path.c_str(), GENERIC_WRITE, shareAll, nullptr, CREATE_ALWAYS,
                            FILE_ATTRIBUTE_NORMAL, nullptr);
    return held.file != INVALID_HANDLE_VALUE;
}

void closeTrace()
{
    Trace& held = theTrace();
    const std::scoped_lock guard(held.lock);
    closeFile(held);
}

HANDLE traceSignal()
{
    static const HANDLE signal = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    return signal;
}

bool findInTrace(const std::wstring& text)
{
    Trace& held = theTrace();
    const std::scoped_lock guard(held.lock);
    for (size_t place = held.searchStart; place < held.lines.size(); ++place) {
        if (held.lines[place].find(text) == std::wstring::npos)
            continue;
        held.searchStart = place + 1;
        return true;
    }
    return false;
}

std::vector<std::wstring> traceLines()
{
    Trace& held = theTrace();
    const std::scoped_lock guard(held.lock);
    return held.lines;
}

void trace(const std::wstring& line)
{
    if (!isRunning())
        return;
    const bool isUi = isUserInterfaceThread();
    std::wstring whole = (isUi ? L"ui " : L"other ") + line;
    Trace& held = theTrace();
    {
        const std::scoped_lock guard(held.lock);
        if (held.file != INVALID_HANDLE_VALUE)
            writeToFile(held.file, whole);
        held.lines.push_back(std::move(whole));
    }
    if (!isUi)
        SetEvent(traceSignal());
}

} // namespace standin
