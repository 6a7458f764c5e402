#include "tools/zemlink/verify/addin_host.h"

#include "peer/command_file.h"
#include "peer/delivery.h"
#include "peer/exchange_paths.h"
#include "peer/files.h"
#include "peer/running_programs.h"
#include "peer/text.h"
#include "peer/wire_constants.h"

namespace zemlink {
namespace {

bool isOfMessageClass(HWND window)
{
    wchar_t name[256] = L"";
    GetClassNameW(window, name, 256);
    return std::wstring_view(name) == peer::hostProperty;
}

struct WindowSearch {
    DWORD process = 0;
    std::vector<HostWindow> found{};
};

BOOL CALLBACK addHostWindow(HWND window, LPARAM parameter)
{
    auto& search = *reinterpret_cast<WindowSearch*>(parameter);
    if (peer::processOf(window) == search.process)
        search.found.push_back(
            {window, reinterpret_cast<std::intptr_t>(GetPropW(window, peer::hostProperty)),
             isOfMessageClass(window), IsWindowVisible(window) != FALSE});
    return TRUE;
}

std::wstring quotedArgument(const wchar_t* option, const std::wstring& value)
{
    return std::wstring(option) + L" \"" + value + L'"';
}

} // namespace

AddInHost::AddInHost(const AddInToVerify& addIn, const AddInSite& site, const std::wstring& name,
                     const std::string& script, const Waiting& waiting)
    : site_(site), waiting_(waiting), tracePath_(site.ownFile(name + L".trace"))
{
    const std::wstring scriptPath = site.ownFile(name + L".script");
    putFile(scriptPath, script);
    handle_ = job_.start(addIn.host,
                         quotedArgument(L"--addin", addIn.library) + L' ' +
                             quotedArgument(L"--script", scriptPath) + L' ' +
                             quotedArgument(L"--trace", tracePath_),
                         SW_SHOWNORMAL);
}

std::wstring AddInHost::commandFile() const
{
    return peer::commandFilePath(site_.folder(), process());
}

std::vector<HostWindow> AddInHost::windows() const
{
    WindowSearch search{process()};
    EnumWindows(addHostWindow, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

HostTrace AddInHost::trace() const
{
    return HostTrace(peer::readFile(tracePath_).value_or(""));
}

bool AddInHost::waitUntil(const std::function<bool()>& condition) const
{
    waiting_.until([&] { return condition() || hasEnded(); });
    return condition();
}

bool AddInHost::waitFor(std::string_view text, size_t times) const
{
    return waitUntil([&] { return trace().count(text) >= times; });
}

bool AddInHost::write(const std::string& request) const
{
    const std::wstring file = commandFile();
    bool isWritten = false;
    waiting_.until([&] {
        isWritten = peer::writeRequest(file, request);
        return isWritten || hasEnded();
    });
    return isWritten;
}

bool AddInHost::send(const std::string& request) const
{
    const std::wstring file = commandFile();
    const auto isTaken = [&] {
        const peer::CommandFileState state = peer::readCommandFileState(file);
        return state.exists && state.size == 0;
    };
    return write(request) && waitUntil(isTaken);
}

bool AddInHost::open(std::int32_t id, const std::string& path, const std::string& part) const
{
    const std::wstring file = peer::fromUtf8(path);
    putFile(file, part);
    return send(peer::formatOpenRequest(id, file).value_or(""));
}

std::optional<DWORD> AddInHost::waitForEnd() const
{
    DWORD code = 0;
    if (!waiting_.until([&] { return hasEnded(); }) || !GetExitCodeProcess(handle_, &code))
        return std::nullopt;
    return code;
}

std::string AddInHost::whyNot() const
{
    const HostTrace lines = trace();
    if (lines.lines().empty() && !hasEnded())
        return "it has written no trace; does it take --addin, --script and --trace?";
    constexpr std::string_view scriptError = "script error";
    const size_t error = lines.find(scriptError);
    if (error != HostTrace::none)
        return "the host reported a " +
               lines.lines()[error].substr(lines.lines()[error].find(scriptError));
    if (hasEnded())
        return "the host has ended; " + endText(handle_);
    return "nothing happened within " + std::to_string(waiting_.boundMs() / 1000) +
           " s; the trace ends with: " + lines.lastLine();
}

std::string untilOpened(const std::wstring& name)
{
    return "wait-for \\" + peer::toUtf8(name) + "\" 60000\n";
}

} // namespace zemlink
