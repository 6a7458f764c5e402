// Writes part files: records become sections with the values that differ from the default.
#include "core/part_file.h"

#include "core/file_bytes.h"
#include "core/part_fields.h"
#include "core/part_shapes.h"

namespace standin {

namespace {

void openSection(std::string& out, std::string_view section)
{
    out.append("\n[").append(section).append("]\n");
}

bool writeHead(std::string& out, const Part& part)
{
    std::string lines;
    const bool allWritten = writeFields(lines, partFields(), part, Part());
    if (lines.empty())
        return allWritten;
    openSection(out, "part");
    out += lines;
    return allWritten;
}

bool writeGeometry(std::string& out, const Part& part)
{
    if (part.shapes.empty())
        return true;
    openSection(out, "geometry");
    bool allWritten = true;
    for (const Shape& shape : part.shapes) {
        out.append(shapeKey(shape.kind)).append(" = ");
        allWritten = writeDecimals(out, shape.values) && allWritten;
        out += '\n';
    }
    return allWritten;
}

bool writeTool(std::string& out, const tp_tool& tool)
{
    static const tp_tool defaults{};
    openSection(out, "tool");
    const bool leadWritten = writeFields(out, toolLeadFields(), tool.lead, defaults.lead);
    return writeFields(out, toolRestFields(), tool, defaults) && leadWritten;
}

bool writePaths(std::string& out, const PartOperation& held)
{
    bool allWritten = true;
    for (const std::vector<ViewPoint>& path : held.paths) {
        out += "path = ";
        allWritten = writePath(out, path) && allWritten;
        out += '\n';
    }
    return allWritten;
}

bool writeOperation(std::string& out, const PartOperation& held)
{
    static const operation defaults = defaultOperation();
    static const PartOperation defaultRest;
    openSection(out, "operation");
    const operation& op = held.node.op;
    bool allWritten = writeFields(out, operationFields(), op, defaults);
    allWritten = writeFields(out, toolLeadFields(), op.tool, defaults.tool, "tool.") && allWritten;
    allWritten = writeFields(out, operationRestFields(), held, defaultRest) && allWritten;
    return writePaths(out, held) && allWritten;
}

bool writeOperations(std::string& out, const Part& part)
{
    bool allWritten = true;
    for (const PartOperation* held : part.operationList)
        if (held)
            allWritten = writeOperation(out, *held) && allWritten;
        else
            openSection(out, "no operation");
    return allWritten;
}

// False if the part holds a number that has no notation.
bool formatPart(const Part& part, std::string& text)
{
    text.clear();
    if (isEmpty(part))
        return true;
    text = "mastercam part 1\n";
    bool allWritten = writeHead(text, part);
    allWritten = writeGeometry(text, part) && allWritten;
    for (const Plane& plane : part.planes) {
        openSection(text, "plane");
        allWritten = writeFields(text, planeFields(), plane, Plane()) && allWritten;
    }
    for (const TpGroup& group : part.groups) {
        openSection(text, "group");
        allWritten = writeFields(text, groupFields(), group, TpGroup()) && allWritten;
    }
    for (const tp_tool& tool : part.tools)
        allWritten = writeTool(text, tool) && allWritten;
    return writeOperations(text, part) && allWritten;
}

} // namespace

bool writePartFile(const Part& part, const std::wstring& path)
{
    std::string text;
    return formatPart(part, text) && writeFileBytes(path, text);
}

} // namespace standin
