#include "standin/companion/app/setup_sheet.h"

#include "standin/companion/app/xml_tags.h"

#include <cmath>
#include <cwchar>
#include <set>
#include <utility>

namespace companion {
namespace {

std::wstring valueOf(const Tag& tag, const wchar_t* name)
{
    const auto found = tag.attributes.find(name);
    return found == tag.attributes.end() ? std::wstring() : found->second;
}

SheetTool readTool(const Tag& tag)
{
    return {valueOf(tag, L"number"), valueOf(tag, L"diameter"), valueOf(tag, L"cornerRadius"),
            valueOf(tag, L"feed"), valueOf(tag, L"comment")};
}

SheetOperation readOperation(const Tag& tag)
{
    return {valueOf(tag, L"id"),
            valueOf(tag, L"type"),
            valueOf(tag, L"group"),
            valueOf(tag, L"depth"),
            valueOf(tag, L"ncFile"),
            valueOf(tag, L"seconds"),
            {}};
}

void addTag(SetupSheet& sheet, const Tag& tag)
{
    if (!tag.isStart)
        return;
    if (tag.name == L"operations")
        sheet.seconds = valueOf(tag, L"seconds");
    else if (tag.name == L"operation")
        sheet.operations.push_back(readOperation(tag));
    else if (tag.name == L"tool" && !sheet.operations.empty())
        sheet.operations.back().tool = readTool(tag);
}

std::wstring twoDigits(long long number)
{
    return (number < 10 ? L"0" : L"") + std::to_wstring(number);
}

} // namespace

std::optional<SetupSheet> readSetupSheet(std::wstring_view text)
{
    const auto tags = readTags(text);
    if (!tags || tags->empty())
        return std::nullopt;
    const Tag& first = tags->front();
    const Tag& last = tags->back();
    if (first.name != L"setupSheet" || !first.isStart || last.name != L"setupSheet" || !last.isEnd)
        return std::nullopt;
    SetupSheet sheet{
        valueOf(first, L"file"), valueOf(first, L"title"), valueOf(first, L"machine"), {}, {}};
    for (const Tag& tag : *tags)
        addTag(sheet, tag);
    return sheet;
}

SheetRows operationRows(const SetupSheet& sheet)
{
    SheetRows rows;
    for (const SheetOperation& operation : sheet.operations) {
        rows.push_back({operation.id, operation.type, operation.group, operation.tool.number,
                        operation.depth, operation.ncFile, durationText(operation.seconds)});
    }
    return rows;
}

SheetRows toolRows(const SetupSheet& sheet)
{
    std::set<std::vector<std::wstring>> seen;
    SheetRows rows;
    for (const SheetOperation& operation : sheet.operations) {
        const SheetTool& tool = operation.tool;
        std::vector<std::wstring> row{tool.number, tool.diameter, tool.cornerRadius, tool.feed,
                                      tool.comment};
        if (tool.number.empty() || !seen.insert(row).second)
            continue;
        rows.push_back(std::move(row));
    }
    return rows;
}

std::wstring durationText(const std::wstring& seconds)
{
    constexpr double longest = 1e9; // more is not a machining time
    wchar_t* end = nullptr;
    const double value = std::wcstod(seconds.c_str(), &end);
    if (end != seconds.c_str() + seconds.size() || !(value >= 0 && value <= longest) ||
        seconds.empty())
        return seconds;
    const long long whole = std::llround(value);
    const long long minutes = whole / 60 % 60;
    const long long hours = whole / 3600;
    const std::wstring start =
        hours == 0 ? std::to_wstring(minutes) : std::to_wstring(hours) + L':' + twoDigits(minutes);
    return start + L':' + twoDigits(whole % 60);
}

} // namespace companion
