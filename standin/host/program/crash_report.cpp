#include "program/crash_report.h"

#include "standin/console/console.h"

#include <bit>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>
#include <windows.h>

namespace standin {

namespace {

LPTOP_LEVEL_EXCEPTION_FILTER earlierFilter = nullptr;

// A function without unwind information has no frame, and neither has a call of a wrong address:
// the return address is on top of the stack. The stack may be damaged, so it is not read directly.
bool leaveLeaf(CONTEXT& context)
{
    DWORD64 caller = 0;
    if (!ReadProcessMemory(GetCurrentProcess(), std::bit_cast<const void*>(context.Rsp), &caller,
                           sizeof caller, nullptr))
        return false;
    context.Rip = caller;
    context.Rsp += sizeof caller;
    return true;
}

bool leaveFunction(CONTEXT& context)
{
    DWORD64 module = 0, frame = 0;
    void* handlerData = nullptr;
    RUNTIME_FUNCTION* const function = RtlLookupFunctionEntry(context.Rip, &module, nullptr);
    if (!function)
        return leaveLeaf(context);
    RtlVirtualUnwind(UNW_FLAG_NHANDLER, module, context.Rip, function, &context, &handlerData,
                     &frame, nullptr);
    return true;
}

std::vector<DWORD64> callStack(CONTEXT context)
{
    constexpr size_t mostFrames = 64;
    std::vector<DWORD64> addresses;
    do
        addresses.push_back(context.Rip);
    while (addresses.size() < mostFrames && leaveFunction(context) && context.Rip != 0);
    return addresses;
}

std::wstring placeText(DWORD64 address)
{
    HMODULE module = nullptr;
    wchar_t path[MAX_PATH] = L"";
    std::wostringstream text;
    text << std::hex << std::uppercase;
    if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                            std::bit_cast<LPCWSTR>(address), &module)) {
        text << L"0x" << address;
        return text.str();
    }
    GetModuleFileNameW(module, path, MAX_PATH);
    text << std::filesystem::path(path).filename().wstring() << L"+0x"
         << address - std::bit_cast<DWORD64>(module);
    return text.str();
}

LONG WINAPI reportCrash(EXCEPTION_POINTERS* crash)
{
    const DWORD code = crash->ExceptionRecord->ExceptionCode;
    // C++ exceptions are not crashes; the compiler's runtime library ends the program for them.
    if (code & APPLICATION_ERROR_MASK)
        return earlierFilter ? earlierFilter(crash) : EXCEPTION_CONTINUE_SEARCH;
    std::wostringstream text;
    text << L"Mastercam.exe has crashed: exception 0x" << std::hex << std::uppercase << code
         << std::dec;
    int number = 0;
    for (const DWORD64 address : callStack(*crash->ContextRecord))
        text << L'\n' << (number < 10 ? L" " : L"") << number++ << L' ' << placeText(address);
    printText(Output::error, text.str());
    return EXCEPTION_EXECUTE_HANDLER;
}

} // namespace

void reportCrashes()
{
    earlierFilter = SetUnhandledExceptionFilter(reportCrash);
}

} // namespace standin
