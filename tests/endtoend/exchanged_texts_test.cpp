// What the add-in's code writes, read by the Companion's: both ends of the tool data and of the NC
// queue, which share no code.
#include "peer/nc_queue_file.h"
#include "peer/tool_record.h"
#include "formats/nc_queue_file.h"
#include "formats/tool_record.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

using Double = std::numeric_limits<double>;
using Int = std::numeric_limits<std::int32_t>;
using Short = std::numeric_limits<std::int16_t>;

const wchar_t* handle(std::uintptr_t address)
{
    return reinterpret_cast<const wchar_t*>(address);
}

// Every number of a kind is this one.
struct Numbers {
    double decimal;
    std::int32_t number;
    std::int16_t small;
    std::uintptr_t address;
};

torvapdm::ToolRecordValues valuesOf(const Numbers& n)
{
    const wchar_t* const text = handle(n.address);
    const torvapdm::Point point = {n.decimal, n.decimal, n.decimal};
    const double d = n.decimal;
    return {
        n.number,
        text,
        text,
        {d, n.number, n.small, text, d, n.number, n.number, n.small, n.small, n.small, d, L"a|b="},
        {n.number, d, n.number, n.number, d, d, text, d,        d,        d,        d,      d,
         d,        d, d,        n.number, d, d, d,    n.number, n.number, n.number, n.small},
        {text, n.number, n.small, n.small, n.number, n.small, d, n.small, point, n.small, point},
        n.number,
        d};
}

// As the record gives a number: six digits of it.
void expectSame(double read, double written, const char* what)
{
    if (std::isnan(written)) {
        EXPECT_TRUE(std::isnan(read)) << what;
        return;
    }
    EXPECT_EQ(std::signbit(read), std::signbit(written)) << what;
    if (std::isinf(written) || written == 0)
        EXPECT_EQ(read, written) << what;
    else
        EXPECT_NEAR(read / written, 1, 1e-5) << what;
}

void expectAll(const peer::ToolRecord& r, const Numbers& n)
{
    for (const std::int32_t read :
         {r.dataId, r.number, r.lengthOffset, r.diameterOffset, r.operationId, r.tableLengthOffset,
          r.station, r.slot, r.operationPlace, r.spindleSpeed, r.group, r.machineGroup, r.level,
          r.holder})
        EXPECT_EQ(read, n.number);
    for (const std::int16_t read :
         {r.type, r.flutes, r.cornerRadiusType, r.material, r.spindleDirection, r.workOffset,
          r.operationType, r.compensation, r.toolPlane.plane, r.constructionPlane.plane})
        EXPECT_EQ(read, n.small);
    for (const std::uint64_t read :
         {r.toolPlaneName, r.constructionPlaneName, r.geometryFile, r.ncName, r.tableGeometryFile})
        EXPECT_EQ(read, n.address);
    for (const double read : {r.diameter,
                              r.cornerRadius,
                              r.operationFeed,
                              r.overallLength,
                              r.shoulderAngle,
                              r.additionalDiameter,
                              r.tipAngle,
                              r.pilotDiameter,
                              r.fluteLength,
                              r.shoulderLength,
                              r.shoulderDiameter,
                              r.arborDiameter,
                              r.holderDiameter,
                              r.holderLength,
                              r.feed,
                              r.plungeRate,
                              r.retractRate,
                              r.depth,
                              r.toolPlane.x,
                              r.toolPlane.y,
                              r.toolPlane.z,
                              r.constructionPlane.x,
                              r.constructionPlane.y,
                              r.constructionPlane.z,
                              r.seconds})
        expectSame(read, n.decimal, "a number with a fraction");
    EXPECT_EQ(r.comment, L"a|b=");
}

std::optional<peer::ToolRecord> exchanged(const torvapdm::ToolRecordValues& values)
{
    const auto record = torvapdm::formatToolRecord(values);
    if (!record || !record->ends_with('\n'))
        return std::nullopt;
    return peer::parseToolRecord(std::string_view(*record).substr(0, record->size() - 1));
}

} // namespace

TEST(ExchangedTool, arrivesAtTheLimitsOfItsNumbers)
{
    const Numbers all[] = {
        {Double::max(), Int::max(), Short::max(), UINTPTR_MAX},
        {Double::lowest(), Int::min(), Short::min(), 0},
        {Double::min(), 0, 0, 1},
        {Double::denorm_min(), -1, -1, 0xABCDEF},
        {Double::infinity(), 1, 1, 0x102},
        {-Double::infinity(), 1, 1, 0x102},
        {Double::quiet_NaN(), 1, 1, 0x102},
        {0.0, 1, 1, 0x102},
        {-0.0, 1, 1, 0x102},
        {999999.5, 1, 1, 0x102},
        {0.00001234567, 1, 1, 0x102},
    };
    for (const Numbers& numbers : all) {
        SCOPED_TRACE(numbers.decimal);
        const auto record = exchanged(valuesOf(numbers));
        ASSERT_TRUE(record.has_value());
        expectAll(*record, numbers);
    }
}

TEST(ExchangedTool, arrivesUnderItsNames)
{
    torvapdm::ToolRecordValues values = valuesOf({0, 0, 0, 0});
    values.requestId = 17;
    values.ownTool.diameter = 12.5;
    values.ownTool.number = 4;
    values.ownTool.type = 10;
    values.ownTool.lengthOffset = 5;
    values.fullTool.lengthOffset = 6;
    values.ownTool.feedRate = 0.25;
    values.fullTool.feedRate = 900;
    values.ownTool.geometryFile = handle(7);
    values.fullTool.geometryFile = handle(8);
    values.operation.toolPlaneOrigin = {1, 2, 3};
    values.operation.constructionPlaneOrigin = {4, 5, 6};
    values.operation.id = 101;
    values.operationNumber = 9;
    values.cycleTime = 61.5;
    const auto record = exchanged(values);
    ASSERT_TRUE(record.has_value());
    EXPECT_EQ(record->dataId, 17);
    EXPECT_EQ(record->diameter, 12.5);
    EXPECT_EQ(record->number, 4);
    EXPECT_EQ(record->type, 10);
    EXPECT_EQ(record->lengthOffset, 5);
    EXPECT_EQ(record->tableLengthOffset, 6);
    EXPECT_EQ(record->operationFeed, 0.25);
    EXPECT_EQ(record->feed, 900);
    EXPECT_EQ(record->geometryFile, 7u);
    EXPECT_EQ(record->tableGeometryFile, 8u);
    EXPECT_EQ(record->toolPlane.y, 2);
    EXPECT_EQ(record->constructionPlane.z, 6);
    EXPECT_EQ(record->operationId, 101);
    EXPECT_EQ(record->operationPlace, 9);
    EXPECT_EQ(record->seconds, 61.5);
}

TEST(ExchangedQueue, arrivesWithNumberProgramAndGroup)
{
    const std::int32_t numbers[] = {-1, 0, Int::max(), Int::min()};
    for (const std::int32_t number : numbers)
        for (const char* group : {"", "Setup 1", "left|right", "|", "Fr\xE4se"}) {
            const auto lines = peer::parseNcQueue(torvapdm::formatQueueLine(
                number, torvapdm::formatQueueEntry("C:\\NC\\", "A B\xC4.NC", group)));
            ASSERT_EQ(lines.size(), 1u);
            ASSERT_TRUE(lines[0].has_value());
            EXPECT_EQ(lines[0]->pathNumber, number);
            EXPECT_EQ(lines[0]->program, "C:\\NC\\A B\xC4.NC");
            EXPECT_EQ(lines[0]->group, group);
        }
}
