#include "core/posting.h"

#include "core/document.h"
#include "core/file_bytes.h"
#include "core/operation_types.h"
#include "core/text.h"

#include <cmath>
#include <filesystem>
#include <map>
#include <span>

namespace standin {

namespace {

// ---- One program -------------------------------------------------------------------------------

constexpr double clearance = 10; // above the part, for rapid moves
constexpr double approach = 2;   // above the part, where the feed begins

// Rounded to micrometres.
std::string number(double value)
{
    return decimalText(std::round(value * 1000) / 1000);
}

std::string word(char letter, double value)
{
    return letter + number(value);
}

// A comment. Parentheses and characters outside printable ASCII become spaces.
std::string comment(std::wstring_view text)
{
    std::string line = "(";
    for (const char byte : toUtf8(text))
        line += byte >= ' ' && byte <= '~' && byte != '(' && byte != ')' ? byte : ' ';
    return line + ")\r\n";
}

const tp_tool* toolOf(const Part& part, const operation& op)
{
    const auto found = part.toolByNumber.find(op.tool.toolNumber);
    return found == part.toolByNumber.end() ? nullptr : found->second;
}

std::string toolChange(const Part& part, const operation& op)
{
    const std::string tool = std::to_string(op.tool.toolNumber);
    const tp_tool* const full = toolOf(part, op);
    return comment(fieldText(op.tool.comment)) + "T" + tool + " M6\r\nS" +
           std::to_string(full ? full->spindleSpeed : 0) + " M3\r\nG43 H" +
           std::to_string(op.tool.lengthOffsetNumber) + " " + word('Z', clearance) + "\r\n";
}

std::string position(const ViewPoint& point)
{
    return word('X', point.x) + " " + word('Y', point.y);
}

std::string holes(const operation& op, const std::vector<ViewPoint>& path)
{
    std::string lines = (op.operationType == tapping ? "G84 " : "G81 ") + position(path.front()) +
                        " " + word('Z', op.depth) + " " + word('R', approach) + " " +
                        word('F', op.tool.feedRate) + "\r\n";
    for (size_t place = 1; place < path.size(); ++place)
        lines += position(path[place]) + "\r\n";
    return lines + "G80\r\n";
}

std::string cut(const operation& op, const std::vector<ViewPoint>& path)
{
    std::string lines = "G0 " + position(path.front()) + "\r\n" + word('Z', approach) + "\r\nG1 " +
                        word('Z', op.depth) + " " + word('F', op.tool.feedRate) + "\r\n";
    for (size_t place = 1; place < path.size(); ++place)
        lines += position(path[place]) + "\r\n";
    return lines + "G0 " + word('Z', clearance) + "\r\n";
}

std::string passLines(const Part& part, const PartOperation& held)
{
    const operation& op = held.node.op;
    const bool isHoles = op.operationType == drilling || op.operationType == tapping;
    std::string lines = toolChange(part, op);
    for (const std::vector<ViewPoint>& path : held.paths)
        lines += isHoles ? holes(op, path) : cut(op, path);
    return lines + "M5\r\n";
}

// Millimetres and absolute coordinates. Lines end in CR LF.
std::string ncProgram(const std::wstring& name, int programNumber,
                      std::span<const PartOperation* const> operations, const Part& part)
{
    std::string lines = "%\r\nO" + std::to_string(programNumber) + "\r\n" + comment(name) +
                        comment(part.title) + "G21 G17 G90 G40 G80\r\n";
    for (const PartOperation* const held : operations)
        lines += passLines(part, *held);
    return lines + "M30\r\n%\r\n";
}

// ---- All programs of the part ------------------------------------------------------------------

using OperationsByName = std::map<std::wstring, std::vector<const PartOperation*>>;

OperationsByName operationsByProgram(const Part& part)
{
    OperationsByName programs;
    for (const PartOperation& held : part.operations) {
        const std::filesystem::path nci(fieldText(held.node.op.nciName));
        if (nci.has_stem())
            programs[nci.stem().wstring()].push_back(&held);
    }
    return programs;
}

} // namespace

std::vector<std::wstring> postNcPrograms()
{
    const std::shared_ptr<Part> part = openPart();
    const HostSettings settings = hostSettings();
    std::error_code ignored;
    std::filesystem::create_directories(std::filesystem::path(settings.ncPrefix).parent_path(),
                                        ignored);
    std::vector<std::wstring> written;
    int number = 0;
    for (const auto& [name, operations] : operationsByProgram(*part)) {
        const std::wstring path = settings.ncPrefix + name + settings.ncSuffix;
        if (writeFileBytes(path, ncProgram(name, ++number, operations, *part)))
            written.push_back(path);
    }
    return written;
}

} // namespace standin
