#include "peer/numbers.h"
#include "peer/tool_record.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace peer;

namespace {

constexpr char fullRecord[] =
    "TOOLDATA|DATAID=17|TPNAME=000002A1F3C05E40|CPNAME=000002A1F3C05E80|DIA=12.5|TNUM=4|TTYPE=10"
    "|GEOFILE=FFFFFFFFFFFFFFFF|CRAD=0.5|LOFF=5|DOFF=6|NCNAME=0000000000000000|FLUTES=3|OPID=101"
    "|RADTYPE=2|TLMATERIAL=1|OPFEED=900.25|LENGTHOFFSET=7|LENGTH OVERALL=80|STATION=8|SLOT=9"
    "|ADSHLDRANGLE=45|ADDIAM=11.5|GEOFILE=0000000000000ABC|OPERATION NUMBER=12|TIPANGLE=118"
    "|PILOTDIA=1.25|FLUTELENGTH=26|SHLDRLENGTH=30|SHLDRDIAM=13|ARBORDIA=14|HOLDERDIA=50"
    "|HOLDERLENGTH=60|RPM=8000|FEED=901|PLUNGE=300|RETRACT=1e+06|GROUP=15|MACHINEGROUP=16"
    "|LEVELNUMBER=18|SPINDLEROT=-1|COMMENT=End mill \xC4|PLANEWOFF=54|OPERATIONCOMMENT="
    "|OPERATIONTYPE=19|HOLDERNO=20|COMPENSATIONTYPE=21|DEPTH=-12.5|TPTYPE=22|TPX=0.1|TPY=0.2"
    "|TPZ=0.3|CPTYPE=23|CPX=-0.1|CPY=-2.5e-07|CPZ=0|OPTIME=61.5";

// The full record with `text` replaced by `other`.
std::string with(const std::string& text, const std::string& other)
{
    std::string record = fullRecord;
    const size_t place = record.find(text);
    EXPECT_NE(place, std::string::npos) << text;
    return record.replace(place, text.size(), other);
}

bool isRecord(const std::string& line)
{
    return parseToolRecord(line).has_value();
}

std::wstring commentOf(const std::string& written)
{
    const auto record = parseToolRecord(with("End mill \xC4", written));
    return record ? record->comment : L"no record";
}

} // namespace

TEST(PeerToolRecord, containsTheOperationsTool)
{
    const auto record = parseToolRecord(fullRecord);
    ASSERT_TRUE(record.has_value());
    EXPECT_EQ(record->dataId, 17);
    EXPECT_EQ(record->toolPlaneName, 0x2A1F3C05E40u);
    EXPECT_EQ(record->constructionPlaneName, 0x2A1F3C05E80u);
    EXPECT_EQ(record->diameter, 12.5);
    EXPECT_EQ(record->number, 4);
    EXPECT_EQ(record->type, 10);
    EXPECT_EQ(record->geometryFile, 0xFFFFFFFFFFFFFFFFu);
    EXPECT_EQ(record->cornerRadius, 0.5);
    EXPECT_EQ(record->lengthOffset, 5);
    EXPECT_EQ(record->diameterOffset, 6);
    EXPECT_EQ(record->ncName, 0u);
    EXPECT_EQ(record->flutes, 3);
    EXPECT_EQ(record->operationId, 101);
    EXPECT_EQ(record->cornerRadiusType, 2);
    EXPECT_EQ(record->material, 1);
    EXPECT_EQ(record->operationFeed, 900.25);
}

TEST(PeerToolRecord, containsTheTablesTool)
{
    const auto record = parseToolRecord(fullRecord);
    ASSERT_TRUE(record.has_value());
    EXPECT_EQ(record->tableLengthOffset, 7);
    EXPECT_EQ(record->overallLength, 80);
    EXPECT_EQ(record->station, 8);
    EXPECT_EQ(record->slot, 9);
    EXPECT_EQ(record->shoulderAngle, 45);
    EXPECT_EQ(record->additionalDiameter, 11.5);
    EXPECT_EQ(record->tableGeometryFile, 0xABCu);
    EXPECT_EQ(record->operationPlace, 12);
    EXPECT_EQ(record->tipAngle, 118);
    EXPECT_EQ(record->pilotDiameter, 1.25);
    EXPECT_EQ(record->fluteLength, 26);
    EXPECT_EQ(record->shoulderLength, 30);
    EXPECT_EQ(record->shoulderDiameter, 13);
    EXPECT_EQ(record->arborDiameter, 14);
    EXPECT_EQ(record->holderDiameter, 50);
    EXPECT_EQ(record->holderLength, 60);
    EXPECT_EQ(record->spindleSpeed, 8000);
    EXPECT_EQ(record->feed, 901);
    EXPECT_EQ(record->plungeRate, 300);
    EXPECT_EQ(record->retractRate, 1000000);
    EXPECT_EQ(record->group, 15);
    EXPECT_EQ(record->machineGroup, 16);
    EXPECT_EQ(record->level, 18);
    EXPECT_EQ(record->spindleDirection, -1);
    EXPECT_EQ(record->comment, L"End mill \u00C4");
}

TEST(PeerToolRecord, containsTheOperation)
{
    const auto record = parseToolRecord(fullRecord);
    ASSERT_TRUE(record.has_value());
    EXPECT_EQ(record->workOffset, 54);
    EXPECT_EQ(record->operationType, 19);
    EXPECT_EQ(record->holder, 20);
    EXPECT_EQ(record->compensation, 21);
    EXPECT_EQ(record->depth, -12.5);
    EXPECT_EQ(record->toolPlane.plane, 22);
    EXPECT_EQ(record->toolPlane.x, 0.1);
    EXPECT_EQ(record->toolPlane.y, 0.2);
    EXPECT_EQ(record->toolPlane.z, 0.3);
    EXPECT_EQ(record->constructionPlane.plane, 23);
    EXPECT_EQ(record->constructionPlane.x, -0.1);
    EXPECT_EQ(record->constructionPlane.y, -2.5e-07);
    EXPECT_EQ(record->constructionPlane.z, 0);
    EXPECT_EQ(record->seconds, 61.5);
}

TEST(PeerToolRecord, allowsSeparatorsInTheComment)
{
    EXPECT_EQ(commentOf("a|b=c"), L"a|b=c");
    EXPECT_EQ(commentOf("|PLANEWOFF=3|OPERATIONCOMMENT="), L"|PLANEWOFF=3|OPERATIONCOMMENT=");
    EXPECT_EQ(commentOf("|"), L"|");
    EXPECT_EQ(commentOf(""), L"");
    EXPECT_EQ(commentOf("\x80\xFF"), L"\x80\xFF");
}

TEST(PeerToolRecord, rejectsOtherKeys)
{
    for (const std::string& line : {
             with("|SLOT=9", ""),               // missing
             with("|DATAID=17", ""),            // the first one
             with("|OPTIME=61.5", ""),          // the last one
             with("|PLANEWOFF=54", ""),         // the one after the comment
             with("|OPERATIONCOMMENT=", ""),    // the empty one
             with("|SLOT=9", "|SLOT=9|SLOT=9"), // twice
             with("|LOFF=5|DOFF=6", "|DOFF=6|LOFF=5"),
             with("|SLOT=", "|slot="),
             with("|SLOT=", "SLOT="),
             with("|OPTIME=61.5", "|OPTIME=61.5|MORE=1"),
             with("|OPTIME=61.5", "|OPTIME=61.5|"),
             with("TOOLDATA", "TOOLS"),
             with("TOOLDATA", " TOOLDATA"),
             std::string("TOOLDATA"),
             std::string(),
         })
        EXPECT_FALSE(isRecord(line)) << line;
}

TEST(PeerToolRecord, rejectsOtherNumberFormats)
{
    for (const char* number : {"", "+4", "04", "-0", "4.0", " 4", "4 ", "2147483648", "x"})
        EXPECT_FALSE(isRecord(with("|TNUM=4", std::string("|TNUM=") + number))) << number;
    for (const char* number : {"32768", "-32769", "10.5"})
        EXPECT_FALSE(isRecord(with("|TTYPE=10", std::string("|TTYPE=") + number))) << number;
    for (const char* number :
         {"", "12.50", "+1", "1,5", "1000000", "1e6", "0x1p3", "1.2345678", "."})
        EXPECT_FALSE(isRecord(with("|DIA=12.5", std::string("|DIA=") + number))) << number;
    for (const char* handle : {"", "0", "000002a1f3c05e40", "0x0002A1F3C05E40", "000002A1F3C05E4",
                               "000002A1F3C05E400", "000002A1F3C05E4G"})
        EXPECT_FALSE(isRecord(with("000002A1F3C05E40", handle))) << handle;
    EXPECT_FALSE(isRecord(with("|OPERATIONCOMMENT=", "|OPERATIONCOMMENT=x")));
}

TEST(PeerToolRecord, acceptsTheLimitsOfNumbers)
{
    EXPECT_EQ(parseToolRecord(with("|TNUM=4", "|TNUM=-2147483648"))->number,
              std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(parseToolRecord(with("|TTYPE=10", "|TTYPE=32767"))->type, 32767);
    EXPECT_EQ(parseToolRecord(with("|DIA=12.5", "|DIA=-inf"))->diameter,
              -std::numeric_limits<double>::infinity());
    for (const char* number : {"nan", "-nan", "-nan(ind)"}) {
        const auto record = parseToolRecord(with("|DIA=12.5", std::string("|DIA=") + number));
        ASSERT_TRUE(record.has_value()) << number;
        EXPECT_TRUE(std::isnan(record->diameter)) << number;
    }
    EXPECT_EQ(parseToolRecord(with("|DIA=12.5", "|DIA=-0"))->diameter, 0);
}

TEST(PeerToolData, keepsThePositionOfBadLines)
{
    const auto records = parseToolData("\r\n" + std::string(fullRecord) + "\r\nTOOLDATA|\r\n");
    ASSERT_EQ(records.size(), 3u);
    EXPECT_FALSE(records[0].has_value());
    EXPECT_TRUE(records[1].has_value());
    EXPECT_FALSE(records[2].has_value());
    EXPECT_TRUE(parseToolData("").empty());
}
