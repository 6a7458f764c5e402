#include "core/setup_sheet.h"

#include "core/document.h"
#include "core/file_bytes.h"
#include "core/operation_types.h"
#include "core/text.h"

#include <cmath>
#include <windows.h>

namespace standin {

namespace {

std::string escaped(std::wstring_view text)
{
    std::string escapedText;
    for (const char byte : toUtf8(text)) {
        switch (byte) {
        case '&':
            escapedText += "&amp;";
            break;
        case '<':
            escapedText += "&lt;";
            break;
        case '"':
            escapedText += "&quot;";
            break;
        default:
            // XML cannot represent the other control characters.
            escapedText += static_cast<unsigned char>(byte) < 0x20 ? ' ' : byte;
        }
    }
    return escapedText;
}

std::string attribute(std::string_view name, std::string_view value)
{
    return std::string(" ").append(name).append("=\"").append(value).append("\"");
}

std::string toolLine(const tp_tool_lead& tool)
{
    return "      <tool" + attribute("number", std::to_string(tool.toolNumber)) +
           attribute("diameter", decimalText(tool.diameter)) +
           attribute("cornerRadius", decimalText(tool.cornerRadius)) +
           attribute("feed", decimalText(tool.feedRate)) +
           attribute("comment", escaped(fieldText(tool.comment))) + "/>\n";
}

// Rounded to milliseconds.
std::string secondsText(double seconds)
{
    return decimalText(std::round(seconds * 1000) / 1000);
}

std::string groupName(const Part& part, int id)
{
    const auto group = part.groupById.find(id);
    return group == part.groupById.end() ? "" : escaped(fieldText(group->second->name));
}

std::string operationLines(const Part& part, const PartOperation& held)
{
    const operation& op = held.node.op;
    return "    <operation" + attribute("id", std::to_string(op.operationId)) +
           attribute("type", toUtf8(operationTypeName(op.operationType))) +
           attribute("group", groupName(part, op.groupId)) +
           attribute("depth", decimalText(op.depth)) +
           attribute("ncFile", escaped(fieldText(op.ncName))) +
           attribute("seconds", secondsText(held.cycleSeconds)) + ">\n" + toolLine(op.tool) +
           "    </operation>\n";
}

std::string setupSheet(const Part& part)
{
    std::string operations;
    double seconds = 0;
    for (const PartOperation& held : part.operations) {
        operations += operationLines(part, held);
        seconds += held.cycleSeconds;
    }
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<setupSheet" +
           attribute("file", escaped(documentName())) + attribute("title", escaped(part.title)) +
           attribute("machine", escaped(hostSettings().activeMachine)) + ">\n  <operations" +
           attribute("count", std::to_string(part.operations.size())) +
           attribute("seconds", secondsText(seconds)) + ">\n" + operations +
           "  </operations>\n</setupSheet>\n";
}

// One file per process: a later run overwrites it.
std::wstring setupSheetPath()
{
    wchar_t folder[MAX_PATH + 1] = L"";
    GetTempPathW(MAX_PATH + 1, folder);
    return std::wstring(folder) + L"Mastercam setup sheet " +
           std::to_wstring(GetCurrentProcessId()) + L".xml";
}

} // namespace

std::vector<std::wstring> runSetupSheet()
{
    if (const auto files = hostSettings().setupSheetFiles)
        return *files;
    const std::shared_ptr<Part> part = openPart();
    const std::wstring path = setupSheetPath();
    if (part->operations.empty() || !writeFileBytes(path, setupSheet(*part)))
        return {};
    return {path};
}

std::vector<std::wstring> failSetupSheet()
{
    return hostSettings().setupSheetFiles.value_or(std::vector<std::wstring>());
}

} // namespace standin
