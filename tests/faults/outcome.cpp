#include "faults/outcome.h"

#include "support/bytes.h"

#include <filesystem>
#include <windows.h>

namespace testing_support {

namespace {

// Joins the items with commas.
std::string joined(const std::vector<std::string>& parts)
{
    std::string all;
    for (const std::string& part : parts)
        all += (all.empty() ? "" : ", ") + part;
    return all.empty() ? "nothing" : all;
}

} // namespace

Files filesBelow(const std::wstring& folder)
{
    const std::wstring ownId = std::to_wstring(GetCurrentProcessId());
    Files files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        std::wstring name = entry.path().wstring().substr(folder.size() + 1);
        if (entry.is_directory() || name.starts_with(L"user temp"))
            continue;
        if (const size_t place = name.find(ownId); place != name.npos)
            name.replace(place, ownId.size(), L"PID");
        files[name] = readBytes(entry.path().wstring()).value_or("");
    }
    return files;
}

Changes changesBetween(const Files& before, const Files& after)
{
    Changes changes;
    for (const auto& [file, bytes] : before)
        if (!after.contains(file))
            changes[file] = "gone";
        else if (after.at(file) != bytes)
            changes[file] = after.at(file).starts_with(bytes) ? "grown" : "rewritten";
    for (const auto& [file, bytes] : after)
        if (!before.contains(file))
            changes[file] = "made";
    return changes;
}

std::vector<std::wstring> boxesIn(const Lines& trace)
{
    const std::wstring start = L"message-box(\"TORVA ZEM\", ";
    std::vector<std::wstring> boxes;
    for (const std::wstring& line : trace)
        if (const size_t place = line.find(start); place != line.npos)
            boxes.push_back(
                line.substr(place + start.size(), line.rfind(L')') - place - start.size()));
    return boxes;
}

std::string seenByUser(const Outcome& outcome)
{
    std::vector<std::string> parts;
    for (const std::wstring& box : outcome.boxes)
        parts.push_back(toUtf8(box));
    if (outcome.starts == 1)
        parts.emplace_back("a program starts");
    if (outcome.starts > 1)
        parts.push_back("a program starts " + std::to_string(outcome.starts) + " times");
    if (!outcome.escaped.empty())
        parts.push_back(outcome.escaped);
    return joined(parts);
}

std::string leftOnDisk(const Outcome& outcome)
{
    std::vector<std::string> parts;
    for (const auto& [file, change] : outcome.changes)
        parts.push_back(change + " `" + toUtf8(file) + '`');
    return joined(parts);
}

} // namespace testing_support
