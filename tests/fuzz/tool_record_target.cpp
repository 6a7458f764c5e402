// A whole tool data record: every value of it, the comment last.
#include "fuzz/differences.h"
#include "fuzz/input.h"
#include "fuzz/plain_record.h"
#include "fuzz/targets.h"
#include "formats/tool_record.h"

#include <array>

namespace fuzzing {

namespace {

enum class Width { integer16, integer32, real, handle };

struct Value {
    std::int64_t integer = 0;
    double real = 0;
    std::string text; // as the record shows it
};

// A key of the record, in the record's order.
struct Key {
    const char* text;
    Width width;
};

constexpr Width w16 = Width::integer16;
constexpr Width w32 = Width::integer32;
constexpr Width real = Width::real;
constexpr Width handle = Width::handle;

constexpr Key keysBeforeTheComment[] = {
    {"|DATAID=", w32},       {"|TPNAME=", handle},     {"|CPNAME=", handle},
    {"|DIA=", real},         {"|TNUM=", w32},          {"|TTYPE=", w16},
    {"|GEOFILE=", handle},   {"|CRAD=", real},         {"|LOFF=", w32},
    {"|DOFF=", w32},         {"|NCNAME=", handle},     {"|FLUTES=", w16},
    {"|OPID=", w32},         {"|RADTYPE=", w16},       {"|TLMATERIAL=", w16},
    {"|OPFEED=", real},      {"|LENGTHOFFSET=", w32},  {"|LENGTH OVERALL=", real},
    {"|STATION=", w32},      {"|SLOT=", w32},          {"|ADSHLDRANGLE=", real},
    {"|ADDIAM=", real},      {"|GEOFILE=", handle},    {"|OPERATION NUMBER=", w32},
    {"|TIPANGLE=", real},    {"|PILOTDIA=", real},     {"|FLUTELENGTH=", real},
    {"|SHLDRLENGTH=", real}, {"|SHLDRDIAM=", real},    {"|ARBORDIA=", real},
    {"|HOLDERDIA=", real},   {"|HOLDERLENGTH=", real}, {"|RPM=", w32},
    {"|FEED=", real},        {"|PLUNGE=", real},       {"|RETRACT=", real},
    {"|GROUP=", w32},        {"|MACHINEGROUP=", w32},  {"|LEVELNUMBER=", w32},
    {"|SPINDLEROT=", w16},
};

constexpr Key keysBehindTheComment[] = {
    {"|PLANEWOFF=", w16}, {"|OPERATIONTYPE=", w16},
    {"|HOLDERNO=", w32},  {"|COMPENSATIONTYPE=", w16},
    {"|DEPTH=", real},    {"|TPTYPE=", w16},
    {"|TPX=", real},      {"|TPY=", real},
    {"|TPZ=", real},      {"|CPTYPE=", w16},
    {"|CPX=", real},      {"|CPY=", real},
    {"|CPZ=", real},      {"|OPTIME=", real},
};

Value takeValue(Input& input, Width width)
{
    Value value;
    switch (width) {
    case Width::integer16:
        value.integer = input.number<std::int16_t>();
        value.text = streamed(value.integer);
        break;
    case Width::integer32:
        value.integer = input.number<std::int32_t>();
        value.text = streamed(value.integer);
        break;
    case Width::real:
        value.real = input.number<double>();
        value.text = streamed(value.real);
        break;
    case Width::handle:
        value.integer = input.number<std::int64_t>();
        value.text = streamedHandle(static_cast<std::uint64_t>(value.integer));
        break;
    }
    return value;
}

// Hands the values out one after the other, each as its member's type.
class Values {
public:
    template <size_t count>
    std::string take(Input& input, const Key (&keys)[count])
    {
        values_.clear();
        next_ = 0;
        std::string text;
        for (const Key& key : keys) {
            values_.push_back(takeValue(input, key.width));
            if (std::string_view(key.text) == "|OPERATIONTYPE=")
                text += "|OPERATIONCOMMENT=";
            text += key.text + values_.back().text;
        }
        return text;
    }

    void into(std::int16_t& target) { target = static_cast<std::int16_t>(next().integer); }
    void into(std::int32_t& target) { target = static_cast<std::int32_t>(next().integer); }
    void into(double& target) { target = next().real; }
    void into(const wchar_t*& target)
    {
        target = reinterpret_cast<const wchar_t*>(static_cast<std::uintptr_t>(next().integer));
    }

    template <class... Members>
    void intoEach(Members&... members)
    {
        (into(members), ...);
    }

private:
    const Value& next() { return values_.at(next_++); }

    std::vector<Value> values_;
    size_t next_ = 0;
};

void fillTools(torvapdm::ToolRecordValues& record, Values& values)
{
    torvapdm::OwnToolValues& own = record.ownTool;
    torvapdm::FullToolValues& full = record.fullTool;
    values.intoEach(record.requestId, record.toolPlaneName, record.constructionPlaneName,
                    own.diameter, own.number, own.type, own.geometryFile, own.cornerRadius,
                    own.lengthOffset, own.diameterOffset, record.operation.ncName, own.flutes,
                    record.operation.id, own.cornerRadiusType, own.material, own.feedRate);
    values.intoEach(full.lengthOffset, full.overallLength, full.station, full.slot,
                    full.shoulderAngle, full.additionalDiameter, full.geometryFile,
                    record.operationNumber, full.tipAngle, full.pilotDiameter, full.fluteLength,
                    full.shoulderLength, full.shoulderDiameter, full.arborDiameter,
                    full.holderDiameter, full.holderLength, full.spindleSpeed, full.feedRate,
                    full.plungeRate, full.retractRate, full.toolGroup, full.machineGroup,
                    full.levelNumber, full.spindleRotation);
}

void fillOperation(torvapdm::ToolRecordValues& record, Values& values)
{
    torvapdm::OperationValues& operation = record.operation;
    torvapdm::Point& tool = operation.toolPlaneOrigin;
    torvapdm::Point& construction = operation.constructionPlaneOrigin;
    values.intoEach(operation.workOffset, operation.type, operation.holderNumber,
                    operation.compensationType, operation.depth, operation.toolPlaneId, tool.x,
                    tool.y, tool.z, operation.constructionPlaneId, construction.x, construction.y,
                    construction.z, record.cycleTime);
}

std::string checkToolRecord(std::string_view bytes)
{
    Input input(bytes);
    torvapdm::ToolRecordValues record{};
    Values values;
    std::string expected = "TOOLDATA" + values.take(input, keysBeforeTheComment);
    fillTools(record, values);
    const std::string behind = values.take(input, keysBehindTheComment);
    fillOperation(record, values);
    const std::wstring comment = input.wideRest();
    record.ownTool.comment = comment;
    expected += "|COMMENT=" + lowBytes(comment) + behind + "\n";
    Differences differences;
    differences.compare("record", torvapdm::formatToolRecord(record), withinBound(expected));
    return differences.text();
}

// Every value another one, and this comment.
std::string someRecord(const std::string& comment)
{
    std::string bytes;
    for (int i = 0; i < 40 * 6 + 14 * 5; ++i)
        bytes += static_cast<char>(i * 37 + (i >> 2));
    return bytes + std::string(32, '\0') + comment;
}

} // namespace

Target toolRecordTarget()
{
    return {"tool_record",
            checkToolRecord,
            {someRecord("Drill 8.5 | steel"), std::string(400, '\0'), someRecord(""),
             std::string(400, '\xFF'), someRecord(std::string(900, 'c')),
             someRecord(std::string(1500, 'c')), someRecord("\x01\x01\xC4\n")},
            {raw(1e6), raw(-0.0001), raw(1e-5), "|", "\n", std::string(200, 'c')}};
}

} // namespace fuzzing
