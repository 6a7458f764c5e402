#include "standin/companion/app/announced_files.h"

#include <gtest/gtest.h>

using namespace companion;

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

} // namespace

TEST(ToolRows, showAToolWithItsData)
{
    const peer::ToolRecord record = peer::parseToolRecord(fullRecord).value();
    EXPECT_EQ(toolCells(record),
              (std::vector<std::wstring>{L"4", L"10", L"12.5", L"101", L"End mill \u00C4"}));
    using Rows = std::vector<std::vector<std::wstring>>;
    EXPECT_EQ(toolDetails(record), (Rows{{L"Corner radius", L"0.5"},
                                         {L"Tip angle", L"118"},
                                         {L"Flutes", L"3"},
                                         {L"Flute length", L"26"},
                                         {L"Shoulder length", L"30"},
                                         {L"Shoulder diameter", L"13"},
                                         {L"Overall length", L"80"},
                                         {L"Arbor diameter", L"14"},
                                         {L"Holder diameter", L"50"},
                                         {L"Holder length", L"60"},
                                         {L"Spindle speed", L"8000"},
                                         {L"Feed", L"901"},
                                         {L"Plunge rate", L"300"},
                                         {L"Retract rate", L"1e+06"},
                                         {L"Length offset", L"5"},
                                         {L"Diameter offset", L"6"},
                                         {L"Depth", L"-12.5"},
                                         {L"Cycle time, seconds", L"61.5"}}));
}
