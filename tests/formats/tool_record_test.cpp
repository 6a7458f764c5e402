#include "formats/tool_record.h"

#include <gtest/gtest.h>

using namespace torvapdm;

namespace {

const wchar_t* handle(std::uintptr_t address)
{
    return reinterpret_cast<const wchar_t*>(address);
}

// All values differ.
const ToolRecordValues distinct = {
    .requestId = 101,
    .toolPlaneName = handle(0x102),
    .constructionPlaneName = handle(0x103),
    .ownTool = {.diameter = 104.5,
                .number = 105,
                .type = 106,
                .geometryFile = handle(0x107),
                .cornerRadius = 108.5,
                .lengthOffset = 109,
                .diameterOffset = 110,
                .flutes = 111,
                .cornerRadiusType = 112,
                .material = 113,
                .feedRate = 114.5,
                .comment = L"comment 115"},
    .fullTool = {.lengthOffset = 116,
                 .overallLength = 117.5,
                 .station = 118,
                 .slot = 119,
                 .shoulderAngle = 120.5,
                 .additionalDiameter = 121.5,
                 .geometryFile = handle(0x122),
                 .tipAngle = 123.5,
                 .pilotDiameter = 124.5,
                 .fluteLength = 125.5,
                 .shoulderLength = 126.5,
                 .shoulderDiameter = 127.5,
                 .arborDiameter = 128.5,
                 .holderDiameter = 129.5,
                 .holderLength = 130.5,
                 .spindleSpeed = 131,
                 .feedRate = 132.5,
                 .plungeRate = 133.5,
                 .retractRate = 134.5,
                 .toolGroup = 135,
                 .machineGroup = 136,
                 .levelNumber = 137,
                 .spindleRotation = 138},
    .operation = {.ncName = handle(0x139),
                  .id = 140,
                  .workOffset = 141,
                  .type = 142,
                  .holderNumber = 143,
                  .compensationType = 144,
                  .depth = 145.5,
                  .toolPlaneId = 146,
                  .toolPlaneOrigin = {147.5, 148.5, 149.5},
                  .constructionPlaneId = 150,
                  .constructionPlaneOrigin = {151.5, 152.5, 153.5}},
    .operationNumber = 154,
    .cycleTime = 155.5,
};

} // namespace

TEST(ToolRecord, holdsEveryKeyInOrder)
{
    EXPECT_EQ(formatToolRecord(distinct).value_or("too long"),
              "TOOLDATA|DATAID=101"
              "|TPNAME=0000000000000102|CPNAME=0000000000000103"
              "|DIA=104.5|TNUM=105|TTYPE=106|GEOFILE=0000000000000107|CRAD=108.5"
              "|LOFF=109|DOFF=110|NCNAME=0000000000000139|FLUTES=111|OPID=140"
              "|RADTYPE=112|TLMATERIAL=113|OPFEED=114.5"
              "|LENGTHOFFSET=116|LENGTH OVERALL=117.5|STATION=118|SLOT=119"
              "|ADSHLDRANGLE=120.5|ADDIAM=121.5|GEOFILE=0000000000000122"
              "|OPERATION NUMBER=154|TIPANGLE=123.5|PILOTDIA=124.5|FLUTELENGTH=125.5"
              "|SHLDRLENGTH=126.5|SHLDRDIAM=127.5|ARBORDIA=128.5|HOLDERDIA=129.5"
              "|HOLDERLENGTH=130.5|RPM=131|FEED=132.5|PLUNGE=133.5|RETRACT=134.5"
              "|GROUP=135|MACHINEGROUP=136|LEVELNUMBER=137|SPINDLEROT=138"
              "|COMMENT=comment 115|PLANEWOFF=141|OPERATIONCOMMENT=|OPERATIONTYPE=142"
              "|HOLDERNO=143|COMPENSATIONTYPE=144|DEPTH=145.5"
              "|TPTYPE=146|TPX=147.5|TPY=148.5|TPZ=149.5"
              "|CPTYPE=150|CPX=151.5|CPY=152.5|CPZ=153.5|OPTIME=155.5\n");
}

TEST(ToolRecord, isRefusedAbove2047Characters)
{
    ToolRecordValues values = distinct;
    const size_t others = formatToolRecord(distinct)->size() - 11;
    std::wstring comment(2047 - others, L'c');
    values.ownTool.comment = comment;
    ASSERT_TRUE(formatToolRecord(values).has_value());
    EXPECT_EQ(formatToolRecord(values)->size(), 2047u);
    comment += L'c';
    values.ownTool.comment = comment;
    EXPECT_EQ(formatToolRecord(values), std::nullopt);
}

TEST(ToolRecord, keepsACommentThatLooksLikeKeys)
{
    ToolRecordValues values = distinct;
    values.ownTool.comment = L"a|TNUM=9\nTOOLDATA|DATAID=1";
    EXPECT_NE(formatToolRecord(values)->find("|COMMENT=a|TNUM=9\nTOOLDATA|DATAID=1|PLANEWOFF=141|"),
              std::string::npos);
}
