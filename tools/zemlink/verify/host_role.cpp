#include "tools/zemlink/verify/host_role.h"

#include "peer/exchange_paths.h"
#include "peer/files.h"
#include "peer/wire_constants.h"

#include <stdexcept>

namespace zemlink {
namespace {

constexpr wchar_t hostTitle[] = L"zemlink verify";
constexpr std::int64_t createAgainMs = 3000;

std::string allBytes(HANDLE file)
{
    LARGE_INTEGER size{};
    if (!GetFileSizeEx(file, &size) || size.QuadPart == 0)
        return {};
    std::string bytes(static_cast<size_t>(size.QuadPart), '\0');
    OVERLAPPED start{};
    DWORD read = 0;
    if (!ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &read, &start))
        read = 0;
    bytes.resize(read);
    return bytes;
}

} // namespace

HostRole::HostRole(const std::wstring& folder, const Waiting& waiting)
    : path_(peer::commandFilePath(folder, GetCurrentProcessId())),
      waiting_(waiting),
      window_(CreateWindowExW(0, L"STATIC", hostTitle, WS_OVERLAPPEDWINDOW, 0, 0, 240, 80, nullptr,
                              nullptr, nullptr, nullptr))
{
    if (!window_ || !SetPropW(window_, peer::hostProperty, reinterpret_cast<HANDLE>(INT_PTR{1})) ||
        !makeFile()) {
        DestroyWindow(window_);
        throw std::runtime_error("the window or the command file of a host cannot be made");
    }
    ShowWindow(window_, SW_SHOWNOACTIVATE);
}

HostRole::~HostRole()
{
    RemovePropW(window_, peer::hostProperty);
    DestroyWindow(window_);
    removeFile();
}

// While another program still has the deleted file open, it cannot be created.
bool HostRole::makeFile(DWORD flags, bool isKept)
{
    constexpr DWORD shareEverything = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    removeFile();
    return waiting_.until(
        [&] {
            file_ =
                peer::ownFile(CreateFileW(path_.c_str(), GENERIC_READ | GENERIC_WRITE,
                                          shareEverything, nullptr, CREATE_ALWAYS, flags, nullptr));
            const bool isMade = file_ != nullptr;
            if (!isKept)
                file_.reset();
            return isMade;
        },
        createAgainMs);
}

bool HostRole::makeFile()
{
    return makeFile(FILE_FLAG_DELETE_ON_CLOSE, true);
}

bool HostRole::makeClosedFile()
{
    return makeFile(FILE_ATTRIBUTE_NORMAL, false);
}

void HostRole::removeFile()
{
    file_.reset();
    DeleteFileW(path_.c_str());
}

bool HostRole::hasFile() const
{
    return peer::isFile(path_);
}

std::string HostRole::content() const
{
    return file_ ? allBytes(file_.get()) : peer::readFile(path_).value_or("");
}

void HostRole::putContent(std::string_view bytes)
{
    DWORD written = 0;
    WriteFile(file_.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}

} // namespace zemlink
