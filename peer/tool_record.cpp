#include "peer/tool_record.h"

#include "peer/numbers.h"
#include "peer/lines.h"
#include "peer/wire_constants.h"

#include <algorithm>
#include <limits>
#include <variant>

namespace peer {
namespace {

using R = ToolRecord;

struct Nothing {}; // the value is always empty

struct PlaneOf {
    PlanePlace R::*place;
};

struct InPlane {
    PlanePlace R::*place;
    double PlanePlace::*coordinate;
};

struct Pair {
    std::string_view key; // from its `|` to its `=`
    std::variant<std::int16_t R::*, std::int32_t R::*, std::uint64_t R::*, double R::*,
                 std::wstring R::*, PlaneOf, InPlane, Nothing>
        field;
};

constexpr Pair pairs[] = {
    {"|DATAID=", &R::dataId},
    {"|TPNAME=", &R::toolPlaneName},
    {"|CPNAME=", &R::constructionPlaneName},
    {"|DIA=", &R::diameter},
    {"|TNUM=", &R::number},
    {"|TTYPE=", &R::type},
    {"|GEOFILE=", &R::geometryFile},
    {"|CRAD=", &R::cornerRadius},
    {"|LOFF=", &R::lengthOffset},
    {"|DOFF=", &R::diameterOffset},
    {"|NCNAME=", &R::ncName},
    {"|FLUTES=", &R::flutes},
    {"|OPID=", &R::operationId},
    {"|RADTYPE=", &R::cornerRadiusType},
    {"|TLMATERIAL=", &R::material},
    {"|OPFEED=", &R::operationFeed},
    {"|LENGTHOFFSET=", &R::tableLengthOffset},
    {"|LENGTH OVERALL=", &R::overallLength},
    {"|STATION=", &R::station},
    {"|SLOT=", &R::slot},
    {"|ADSHLDRANGLE=", &R::shoulderAngle},
    {"|ADDIAM=", &R::additionalDiameter},
    {"|GEOFILE=", &R::tableGeometryFile},
    {"|OPERATION NUMBER=", &R::operationPlace},
    {"|TIPANGLE=", &R::tipAngle},
    {"|PILOTDIA=", &R::pilotDiameter},
    {"|FLUTELENGTH=", &R::fluteLength},
    {"|SHLDRLENGTH=", &R::shoulderLength},
    {"|SHLDRDIAM=", &R::shoulderDiameter},
    {"|ARBORDIA=", &R::arborDiameter},
    {"|HOLDERDIA=", &R::holderDiameter},
    {"|HOLDERLENGTH=", &R::holderLength},
    {"|RPM=", &R::spindleSpeed},
    {"|FEED=", &R::feed},
    {"|PLUNGE=", &R::plungeRate},
    {"|RETRACT=", &R::retractRate},
    {"|GROUP=", &R::group},
    {"|MACHINEGROUP=", &R::machineGroup},
    {"|LEVELNUMBER=", &R::level},
    {"|SPINDLEROT=", &R::spindleDirection},
    {"|COMMENT=", &R::comment},
    {"|PLANEWOFF=", &R::workOffset},
    {"|OPERATIONCOMMENT=", Nothing{}},
    {"|OPERATIONTYPE=", &R::operationType},
    {"|HOLDERNO=", &R::holder},
    {"|COMPENSATIONTYPE=", &R::compensation},
    {"|DEPTH=", &R::depth},
    {"|TPTYPE=", PlaneOf{&R::toolPlane}},
    {"|TPX=", InPlane{&R::toolPlane, &PlanePlace::x}},
    {"|TPY=", InPlane{&R::toolPlane, &PlanePlace::y}},
    {"|TPZ=", InPlane{&R::toolPlane, &PlanePlace::z}},
    {"|CPTYPE=", PlaneOf{&R::constructionPlane}},
    {"|CPX=", InPlane{&R::constructionPlane, &PlanePlace::x}},
    {"|CPY=", InPlane{&R::constructionPlane, &PlanePlace::y}},
    {"|CPZ=", InPlane{&R::constructionPlane, &PlanePlace::z}},
    {"|OPTIME=", &R::seconds},
};

template <class Integer>
bool parseInto(Integer& field, std::string_view text)
{
    const auto number = parsePrintedNumber(text, std::numeric_limits<Integer>::min(),
                                           std::numeric_limits<Integer>::max());
    field = static_cast<Integer>(number.value_or(0));
    return number.has_value();
}

bool parseInto(double& field, std::string_view text)
{
    const auto number = parsePrintedDecimal(text);
    field = number.value_or(0);
    return number.has_value();
}

bool parseInto(std::uint64_t& field, std::string_view text)
{
    constexpr size_t addressDigits = 16;
    constexpr std::string_view digits = "0123456789ABCDEF";
    field = 0;
    for (const char c : text) {
        const size_t value = digits.find(c);
        if (value == std::string_view::npos)
            return false;
        field = field << 4 | value;
    }
    return text.size() == addressDigits;
}

// Each byte is a character code: the low byte of the UTF-16 unit in the host's text.
bool parseInto(std::wstring& field, std::string_view text)
{
    field.clear();
    for (const char c : text)
        field += static_cast<wchar_t>(static_cast<unsigned char>(c));
    return true;
}

// Parses the value into the field of the pair.
struct ParsePair {
    ToolRecord& record;
    std::string_view value;

    template <class Value>
    bool operator()(Value R::*field) const
    {
        return parseInto(record.*field, value);
    }
    bool operator()(PlaneOf field) const { return parseInto((record.*field.place).plane, value); }
    bool operator()(InPlane field) const
    {
        return parseInto(record.*field.place.*field.coordinate, value);
    }
    bool operator()(Nothing) const { return value.empty(); }
};

// Where the first value of the rest ends. Only a comment can contain a `|`.
size_t valueEnd(const Pair& pair, std::string_view rest)
{
    const bool isComment = std::holds_alternative<std::wstring R::*>(pair.field);
    return std::min(isComment ? rest.rfind("|PLANEWOFF=") : rest.find('|'), rest.size());
}

} // namespace

std::optional<ToolRecord> parseToolRecord(std::string_view line)
{
    if (!line.starts_with(toolRecordStart))
        return std::nullopt;
    line.remove_prefix(toolRecordStart.size());
    ToolRecord record;
    for (const Pair& pair : pairs) {
        if (!line.starts_with(pair.key))
            return std::nullopt;
        line.remove_prefix(pair.key.size());
        const size_t end = valueEnd(pair, line);
        if (!std::visit(ParsePair{record, line.substr(0, end)}, pair.field))
            return std::nullopt;
        line.remove_prefix(end);
    }
    return line.empty() ? std::optional(record) : std::nullopt;
}

std::vector<std::optional<ToolRecord>> parseToolData(std::string_view bytes)
{
    std::vector<std::optional<ToolRecord>> records;
    for (const std::string_view line : fileLines(bytes))
        records.push_back(parseToolRecord(line));
    return records;
}

} // namespace peer
