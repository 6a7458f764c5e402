// Parses part files: lines, sections, records.
#include "core/part_file.h"

#include "core/file_bytes.h"
#include "core/part_fields.h"
#include "core/part_shapes.h"

#include <optional>

namespace standin {

namespace {

enum class Section { none, part, geometry, plane, group, tool, operation, noOperation };

constexpr std::string_view operationToolPrefix = "tool.";
// Bits of `SeenKeys` in an operation's section: 0 to 19 are the operation's own keys, 20 to 39 its
// tool's.
constexpr unsigned firstToolKeyBit = 20;
constexpr unsigned firstRestKeyBit = 40;

struct Reading {
    std::shared_ptr<Part> part = std::make_shared<Part>();
    Section section = Section::none;
    SeenKeys seen = 0;
    bool hadPart = false;
    bool hadGeometry = false;
};

std::optional<Section> sectionOf(std::string_view line)
{
    static constexpr std::pair<std::string_view, Section> sections[] = {
        {"[part]", Section::part},
        {"[geometry]", Section::geometry},
        {"[plane]", Section::plane},
        {"[group]", Section::group},
        {"[tool]", Section::tool},
        {"[operation]", Section::operation},
        {"[no operation]", Section::noOperation},
    };
    for (const auto& [text, section] : sections)
        if (text == line)
            return section;
    return std::nullopt;
}

void addOperation(Part& part)
{
    part.operations.emplace_back().node.op = defaultOperation();
    part.operationList.push_back(&part.operations.back());
}

// Marks a section that may occur only once; false if it has occurred before.
bool isFirst(bool& had)
{
    const bool first = !had;
    had = true;
    return first;
}

bool openSection(Reading& reading, Section section)
{
    Part& part = *reading.part;
    reading.section = section;
    reading.seen = 0;
    switch (section) {
    case Section::part:
        return isFirst(reading.hadPart);
    case Section::geometry:
        return isFirst(reading.hadGeometry);
    case Section::plane:
        part.planes.emplace_back();
        return true;
    case Section::group:
        part.groups.emplace_back();
        return true;
    case Section::tool:
        part.tools.emplace_back();
        return true;
    case Section::operation:
        addOperation(part);
        return true;
    case Section::noOperation:
        part.operationList.push_back(nullptr);
        return true;
    case Section::none:
        break;
    }
    return false;
}

bool readGeometryKey(Part& part, std::string_view key, std::string_view notation)
{
    Shape shape;
    if (!readShape(key, notation, shape))
        return false;
    part.shapes.push_back(std::move(shape));
    return true;
}

bool readToolKey(Reading& reading, std::string_view key, std::string_view notation)
{
    tp_tool& tool = reading.part->tools.back();
    FieldOutcome outcome = readField(toolLeadFields(), tool.lead, key, notation, reading.seen);
    if (outcome == FieldOutcome::unknownKey)
        outcome = readField(toolRestFields(), tool, key, notation, reading.seen, firstToolKeyBit);
    return outcome == FieldOutcome::read;
}

bool readOperationKey(Reading& reading, std::string_view key, std::string_view notation)
{
    PartOperation& held = reading.part->operations.back();
    if (key == "path")
        return readPath(notation, held.paths.emplace_back());
    FieldOutcome outcome = FieldOutcome::unknownKey;
    if (key.starts_with(operationToolPrefix))
        outcome =
            readField(toolLeadFields(), held.node.op.tool, key.substr(operationToolPrefix.size()),
                      notation, reading.seen, firstToolKeyBit);
    else
        outcome = readField(operationFields(), held.node.op, key, notation, reading.seen);
    if (outcome == FieldOutcome::unknownKey)
        outcome =
            readField(operationRestFields(), held, key, notation, reading.seen, firstRestKeyBit);
    return outcome == FieldOutcome::read;
}

bool readKey(Reading& reading, std::string_view key, std::string_view notation)
{
    Part& part = *reading.part;
    SeenKeys& seen = reading.seen;
    switch (reading.section) {
    case Section::part:
        return readField(partFields(), part, key, notation, seen) == FieldOutcome::read;
    case Section::geometry:
        return readGeometryKey(part, key, notation);
    case Section::plane:
        return readField(planeFields(), part.planes.back(), key, notation, seen) ==
               FieldOutcome::read;
    case Section::group:
        return readField(groupFields(), part.groups.back(), key, notation, seen) ==
               FieldOutcome::read;
    case Section::tool:
        return readToolKey(reading, key, notation);
    case Section::operation:
        return readOperationKey(reading, key, notation);
    case Section::noOperation:
    case Section::none:
        break;
    }
    return false;
}

bool readLine(Reading& reading, std::string_view line)
{
    if (line.empty() || line.front() == '#')
        return true;
    if (line.front() == '[') {
        const std::optional<Section> section = sectionOf(line);
        return section && openSection(reading, *section);
    }
    constexpr std::string_view between = " =";
    const size_t place = line.find(between);
    if (place == std::string_view::npos)
        return false;
    std::string_view notation = line.substr(place + between.size());
    if (notation.starts_with(' '))
        notation.remove_prefix(1);
    return readKey(reading, line.substr(0, place), notation);
}

// Removes the next line from the text and returns it without its line end.
std::string_view takeLine(std::string_view& text)
{
    const size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    return line;
}

// Null if the text breaks a rule of the format.
std::shared_ptr<Part> parsePart(std::string_view text)
{
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(byteOrderMark))
        text.remove_prefix(byteOrderMark.size());
    Reading reading;
    if (text.empty())
        return reading.part;
    if (takeLine(text) != "mastercam part 1")
        return nullptr;
    while (!text.empty())
        if (!readLine(reading, takeLine(text)))
            return nullptr;
    linkPart(*reading.part);
    return reading.part;
}

} // namespace

std::shared_ptr<Part> readPartFile(const std::wstring& path)
{
    const std::optional<std::string> text = readFileBytes(path);
    return text ? parsePart(*text) : nullptr;
}

} // namespace standin
