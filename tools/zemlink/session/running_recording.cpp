#include "tools/zemlink/session/running_recording.h"

#include "tools/zemlink/session/recording.h"

#include <cwchar>
#include <stdexcept>

namespace zemlink {
namespace {

constexpr const wchar_t* mappingName = L"Local\\torvapdm-zemlink-recording";
constexpr DWORD mappingBytes = (longestPath + 1) * sizeof(wchar_t);

struct ViewCloser {
    void operator()(void* view) const { UnmapViewOfFile(view); }
};
using View = std::unique_ptr<void, ViewCloser>;

} // namespace

RunningRecording::RunningRecording(const std::wstring& path)
{
    const HANDLE created = CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0,
                                              mappingBytes, mappingName);
    const bool isOther = GetLastError() == ERROR_ALREADY_EXISTS;
    mapping_.reset(created);
    if (isOther)
        throw std::runtime_error("another recording is under way");
    const View view(created ? MapViewOfFile(created, FILE_MAP_WRITE, 0, 0, 0) : nullptr);
    if (view && path.size() <= longestPath)
        std::wmemcpy(static_cast<wchar_t*>(view.get()), path.c_str(), path.size() + 1);
}

std::wstring findRunningRecording()
{
    const peer::OwnHandle mapping(OpenFileMappingW(FILE_MAP_READ, FALSE, mappingName));
    const View view(mapping ? MapViewOfFile(mapping.get(), FILE_MAP_READ, 0, 0, 0) : nullptr);
    if (!view)
        return {};
    const auto* path = static_cast<const wchar_t*>(view.get());
    return std::wstring(path, wcsnlen(path, longestPath));
}

} // namespace zemlink
