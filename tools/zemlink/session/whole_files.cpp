#include "tools/zemlink/session/whole_files.h"

#include "peer/bitmap_file.h"

#include <algorithm>

namespace zemlink {
namespace {

constexpr std::int64_t quietMs = 200;
constexpr std::uint32_t mostFileBytes = peer::largestBitmapFile; // larger ones are not read

} // namespace

WholeFiles::WholeFiles(EventKind written, std::wstring folder, std::wstring pattern)
    : written_(written), folder_(std::move(folder)), pattern_(std::move(pattern))
{
}

std::vector<ExchangeEvent> WholeFiles::look(std::int64_t now, bool isFollowed)
{
    std::vector<ExchangeEvent> events;
    for (const std::wstring& name : listFiles(folder_ + L'\\' + pattern_))
        files_[folder_ + L'\\' + name];
    addGone(events, now);
    for (auto& [path, known] : files_) {
        refresh(path, known, now);
        if (known.isReported || !isComplete(known, now, isFollowed))
            continue;
        known.isReported = true;
        events.push_back({known.look.writtenAt, written_, 0, path, known.bytes});
        if (written_ != EventKind::machineSettingsWritten)
            known.bytes = {};
    }
    return events;
}

bool WholeFiles::isWaiting() const
{
    return std::ranges::any_of(
        files_,
        [this](const auto& file) {
            const Known& known = file.second;
            return known.look.exists && !known.isReported && (known.look.size != 0 || mayBeEmpty());
        });
}

void WholeFiles::refresh(const std::wstring& path, Known& known, std::int64_t now) const
{
    const FileLook look = lookAt(path);
    if (look == known.look || !look.exists || look.size > mostFileBytes)
        return;
    const auto bytes = look.size != 0 ? readFrom(path, 0, mostFileBytes) : std::string();
    if (!bytes)
        return; // its writer shares it with nobody, or it has just been removed
    known = {look, *bytes, now, false};
}

// A part without operations makes an empty file.
bool WholeFiles::mayBeEmpty() const
{
    return written_ == EventKind::ncQueueWritten || written_ == EventKind::toolDataWritten;
}

bool WholeFiles::isComplete(const Known& known, std::int64_t now, bool isFollowed) const
{
    const bool isQuiet = now - known.changedAt >= quietMs;
    if (known.bytes.empty())
        return mayBeEmpty() && known.look.exists && isQuiet;
    const bool isWhole = written_ == EventKind::pictureWritten
                             ? peer::findBitmapForm(known.bytes).has_value()
                             : written_ == EventKind::machineSettingsWritten;
    return isWhole || isFollowed || isQuiet;
}

// A file that its reader has removed was complete. One that was seen empty may have had content
// since.
void WholeFiles::addGone(std::vector<ExchangeEvent>& events, std::int64_t now)
{
    std::erase_if(
        files_,
        [&](const auto& file) {
            const auto& [path, known] = file;
            if (lookAt(path).exists)
                return false;
            if (!known.isReported && !known.bytes.empty())
                events.push_back({known.look.writtenAt, written_, 0, path, known.bytes});
            if (written_ == EventKind::machineSettingsWritten && !known.bytes.empty())
                events.push_back({now, EventKind::machineSettingsTaken, 0, path, known.bytes});
            return true;
        });
}

} // namespace zemlink
