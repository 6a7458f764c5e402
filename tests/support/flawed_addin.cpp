// The add-in with flaws, which the environment variable FLAWS names, separated by commas: it
// redirects some of its own imports. For the tests of `zemlink verify addin`.
#include "host/host.h"
#include "support/system_calls.h"

#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>
#include <string_view>
#include <winsock2.h>
// Must come after winsock2.h.
#include <shellapi.h>

namespace {

using testing_support::cLibrary;
using testing_support::systems;

HMODULE ownLibrary()
{
    HMODULE library = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                           GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&ownLibrary), &library);
    return library;
}

template <class Function>
void redirect(Function* from, Function* to)
{
    standin::redirectImports(ownLibrary(), from, to);
}

// What the replacements call.
const auto systemsCreateFile = systems(&CreateFileW, "CreateFileW");
const auto systemsSetFilePointer = systems(&SetFilePointer, "SetFilePointer");
const auto systemsWriteFile = systems(&WriteFile, "WriteFile");
const auto systemsShellExecute = systems(&ShellExecuteExW, "ShellExecuteExW", L"shell32.dll");
const auto systemsSend = systems(&send, "send", L"ws2_32.dll");
const auto hostsPicture = &screen_to_bitmap_file;

// The add-in writes nothing else with this function than commit records.
BOOL WINAPI writeWithoutLastUnit(HANDLE file, LPCVOID bytes, DWORD count, LPDWORD written,
                                 LPOVERLAPPED place)
{
    return systemsWriteFile(file, bytes, count - sizeof(wchar_t), written, place);
}

DWORD WINAPI setFilePointerToStart(HANDLE file, LONG distance, PLONG high, DWORD)
{
    return systemsSetFilePointer(file, distance, high, FILE_BEGIN);
}

BOOL WINAPI lockNothing(HANDLE, DWORD, DWORD, DWORD, DWORD)
{
    return TRUE;
}

bool isCommitNotice(const char* bytes, int count)
{
    return std::string_view(bytes, static_cast<size_t>(count)).starts_with("ZEMID=");
}

int WINAPI sendWithoutLineEnd(SOCKET connection, const char* bytes, int count, int flags)
{
    return systemsSend(connection, bytes, isCommitNotice(bytes, count) ? count - 1 : count, flags);
}

// The only file that is deleted on close and that others open.
HANDLE WINAPI createUndeletable(LPCWSTR path, DWORD access, DWORD sharing,
                                LPSECURITY_ATTRIBUTES security, DWORD disposition, DWORD flags,
                                HANDLE model)
{
    const bool isCommandFile = std::wstring_view(path).find(L"\\mastercam-") != std::wstring::npos;
    return systemsCreateFile(path, access,
                             isCommandFile ? sharing & ~DWORD{FILE_SHARE_DELETE} : sharing,
                             security, disposition, flags, model);
}

int removeNothing(const char*)
{
    return 0;
}

BOOL WINAPI setNoProperty(HWND, LPCWSTR, HANDLE)
{
    return TRUE;
}

HANDLE WINAPI removeNoProperty(HWND, LPCWSTR)
{
    return nullptr;
}

bool pictureNothing(const wchar_t*, bool)
{
    return true;
}

std::wstring latePicture;

bool pictureLater(const wchar_t* path, bool)
{
    latePicture = path;
    return true;
}

// The notice follows the record.
int WINAPI sendAfterPicture(SOCKET connection, const char* bytes, int count, int flags)
{
    constexpr DWORD moreThanTheAccuracyOfTimesMs = 50;
    if (isCommitNotice(bytes, count)) {
        Sleep(moreThanTheAccuracyOfTimesMs);
        hostsPicture(latePicture.c_str(), false);
    }
    return systemsSend(connection, bytes, count, flags);
}

BOOL WINAPI startWithoutQuotes(SHELLEXECUTEINFOW* start)
{
    std::wstring arguments = start->lpParameters;
    if (arguments.starts_with(L"--checkout"))
        std::erase(arguments, L'"');
    start->lpParameters = arguments.c_str();
    return systemsShellExecute(start);
}

bool noBackplot()
{
    return false;
}

struct Flaw {
    std::string_view name;
    void (*apply)();
};

const Flaw flaws[] = {
    {"record-cut", [] { redirect(systemsWriteFile, &writeWithoutLastUnit); }},
    {"record-over-first", [] { redirect(systemsSetFilePointer, &setFilePointerToStart); }},
    {"no-lock", [] { redirect(systems(&LockFile, "LockFile"), &lockNothing); }},
    {"notice-without-line-end", [] { redirect(systemsSend, &sendWithoutLineEnd); }},
    {"undeletable-command-file", [] { redirect(systemsCreateFile, &createUndeletable); }},
    {"machine-settings-stay",
     [] { redirect(systems(&::remove, "remove", cLibrary), &removeNothing); }},
    {"no-property",
     [] { redirect(systems(&SetPropW, "SetPropW", L"user32.dll"), &setNoProperty); }},
    {"property-stays",
     [] { redirect(systems(&RemovePropW, "RemovePropW", L"user32.dll"), &removeNoProperty); }},
    {"no-picture", [] { redirect(hostsPicture, &pictureNothing); }},
    {"late-picture",
     [] {
         redirect(hostsPicture, &pictureLater);
         redirect(systemsSend, &sendAfterPicture);
     }},
    {"check-out-without-quotes", [] { redirect(systemsShellExecute, &startWithoutQuotes); }},
    {"opens-during-backplot", [] { redirect(&BackplotActive, &noBackplot); }},
};

// An unknown name would look like an add-in without a flaw.
void applyFlaw(const std::string& name)
{
    for (const Flaw& flaw : flaws)
        if (flaw.name == name)
            return flaw.apply();
    std::abort();
}

bool applyFlaws()
{
    const char* const names = std::getenv("FLAWS");
    std::istringstream list(names ? names : "none");
    for (std::string name; std::getline(list, name, ',');)
        applyFlaw(name);
    return true;
}

[[maybe_unused]] const bool isFlawed = applyFlaws();

} // namespace
