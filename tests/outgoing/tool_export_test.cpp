#include "outgoing/tool_export.h"

#include "host/record_adapter.h"
#include "support/add_in_state.h"
#include "support/host_fixture.h"
#include "support/sockets.h"
#include "support/system_calls.h"

#include <algorithm>
#include <cstring>
#include <malloc.h>
#include <map>
#include <winsock2.h>

using namespace torvapdm;
using namespace testing_support;

namespace {

const std::string planes = "[plane]\nid = 1\nname = Top\n\n[plane]\nid = 2\nname = Front\n\n";

std::string operationWith(int id, int tool, const std::string& more = "")
{
    return "[operation]\nid = " + std::to_string(id) +
           "\ntool-plane = 1\nconstruction-plane = 2\ntool.number = " + std::to_string(tool) +
           "\n" + more + "\n";
}

// A record's values by key. A repeated key gets a "'" suffix.
std::map<std::string, std::string> valuesOf(const std::string& record)
{
    std::map<std::string, std::string> values;
    for (size_t bar = record.find('|'); bar != record.npos;) {
        const size_t next = record.find('|', bar + 1);
        const std::string pair = record.substr(bar + 1, next - bar - 1);
        std::string key = pair.substr(0, pair.find('='));
        if (values.count(key) != 0)
            key += '\'';
        values[key] = pair.substr(pair.find('=') + 1);
        bar = next;
    }
    return values;
}

std::string hexadecimal(const void* address)
{
    char digits[17];
    std::snprintf(digits, sizeof digits, "%016llX",
                  static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(address)));
    return digits;
}

// All fields of the operation, its own tool and the full tool have different values.
const std::string everyField = R"([plane]
id = 41
name = Top

[plane]
id = 42
name = Front

[tool]
number = 21
type = 43
flutes = 44
corner-radius-type = 45
material = 46
length-offset = 47
diameter-offset = 48
diameter = 49.5
corner-radius = 50.5
feed-rate = 51.5
geometry-file = full.stl
comment = of the list
overall-length = 52.5
shoulder-angle = 53.5
additional-diameter = 54.5
tip-angle = 55.5
pilot-diameter = 56.5
flute-length = 57.5
shoulder-length = 58.5
shoulder-diameter = 59.5
arbor-diameter = 60.5
holder-diameter = 61.5
holder-length = 62.5
plunge-rate = 63.5
retract-rate = 64.5
station = 65
slot = 66
spindle-speed = 67
tool-group = 68
machine-group = 69
level = 70
spindle-rotation = 71

[operation]
id = 72
group = 73
holder = 74
type = 75
compensation = 76
work-offset = 77
tool-plane = 41
construction-plane = 42
third-plane = 78
depth = 79.5
tool-plane-origin = 80.5 81.5 82.5
construction-plane-origin = 83.5 84.5 85.5
nc-name = P.NC
nci-name = P.nci
cycle-time = 86.5
tool.number = 21
tool.type = 87
tool.flutes = 88
tool.corner-radius-type = 89
tool.material = 90
tool.length-offset = 91
tool.diameter-offset = 92
tool.diameter = 93.5
tool.corner-radius = 94.5
tool.feed-rate = 95.5
tool.geometry-file = own.stl
tool.comment = of the operation
)";

// The expected values, without the addresses of strings.
const std::map<std::string, std::string> valuesOfEveryField = {
    {"DATAID", "17"},
    // the operation's own tool
    {"DIA", "93.5"},
    {"TNUM", "21"},
    {"TTYPE", "87"},
    {"CRAD", "94.5"},
    {"LOFF", "91"},
    {"DOFF", "92"},
    {"FLUTES", "88"},
    {"RADTYPE", "89"},
    {"TLMATERIAL", "90"},
    {"OPFEED", "95.5"},
    {"COMMENT", "of the operation"},
    // the full tool
    {"LENGTHOFFSET", "47"},
    {"LENGTH OVERALL", "52.5"},
    {"STATION", "65"},
    {"SLOT", "66"},
    {"ADSHLDRANGLE", "53.5"},
    {"ADDIAM", "54.5"},
    {"TIPANGLE", "55.5"},
    {"PILOTDIA", "56.5"},
    {"FLUTELENGTH", "57.5"},
    {"SHLDRLENGTH", "58.5"},
    {"SHLDRDIAM", "59.5"},
    {"ARBORDIA", "60.5"},
    {"HOLDERDIA", "61.5"},
    {"HOLDERLENGTH", "62.5"},
    {"RPM", "67"},
    {"FEED", "51.5"},
    {"PLUNGE", "63.5"},
    {"RETRACT", "64.5"},
    {"GROUP", "68"},
    {"MACHINEGROUP", "69"},
    {"LEVELNUMBER", "70"},
    {"SPINDLEROT", "71"},
    // the operation
    {"OPID", "72"},
    {"OPERATION NUMBER", "1"},
    {"PLANEWOFF", "77"},
    {"OPERATIONCOMMENT", ""},
    {"OPERATIONTYPE", "75"},
    {"HOLDERNO", "74"},
    {"COMPENSATIONTYPE", "76"},
    {"DEPTH", "79.5"},
    {"TPTYPE", "41"},
    {"TPX", "80.5"},
    {"TPY", "81.5"},
    {"TPZ", "82.5"},
    {"CPTYPE", "42"},
    {"CPX", "83.5"},
    {"CPY", "84.5"},
    {"CPZ", "85.5"},
    {"OPTIME", "86.5"},
};

// Recorded when the host fills the full tool, because the record does not outlive the export.
const wchar_t* filledGeometryFile = nullptr;
decltype(&tool_manager) hostsToolManager = nullptr;

void notedToolManager(tp_tool* tool, short code, DB_LIST_ENT** entity, bool* succeeded)
{
    filledGeometryFile = tool->lead.geometryFileName;
    hostsToolManager(tool, code, entity, succeeded);
}

// Simulates a request that arrives while the host fills a tool.
void interruptedToolManager(tp_tool* tool, short code, DB_LIST_ENT** entity, bool* succeeded)
{
    AddInState::setRequestId(AddInState::requestId() + 1);
    hostsToolManager(tool, code, entity, succeeded);
}

// A member function receives its object as the first argument.
using PlaneLookUp = PlaneBase*(MastercamPlanes*, int);
PlaneLookUp* hostsPlaneLookUp = nullptr;
std::vector<int> askedPlanes;

PlaneBase* notedPlaneLookUp(MastercamPlanes* allPlanes, int id)
{
    askedPlanes.push_back(id);
    return hostsPlaneLookUp(allPlanes, id);
}

void notedFilling(tp_tool* tool, short code, DB_LIST_ENT** entity, bool* succeeded)
{
    askedPlanes.push_back(0);
    hostsToolManager(tool, code, entity, succeeded);
}

decltype(&list_manager) chainsList = nullptr;
operation_node* listedChain = nullptr;

void keptChainList(long code, const wchar_t* name, short mode, operation_node** list)
{
    chainsList(code, name, mode, list);
    if (mode == 0)
        listedChain = *list;
}

bool isRecordChanged = false;

// Simulates a host that changes its record while it fills the full tool.
void changingToolManager(tp_tool* tool, short code, DB_LIST_ENT** entity, bool* succeeded)
{
    host::operationOf(*listedChain).tool.numberOfFlutes = 77;
    isRecordChanged = true;
    hostsToolManager(tool, code, entity, succeeded);
}

constexpr wchar_t toolPlaneName[] = L"Tool plane's name";
constexpr wchar_t constructionPlaneName[] = L"Construction plane's name";

// The last blocks with these names that were freed. The names of a record do not outlive it.
const void* freedToolPlaneName = nullptr;
const void* freedConstructionPlaneName = nullptr;

template <size_t size>
bool isText(void* block, const wchar_t (&text)[size])
{
    return block && _msize(block) >= sizeof text && std::memcmp(block, text, sizeof text) == 0;
}

void notedFree(void* block)
{
    if (isText(block, toolPlaneName))
        freedToolPlaneName = block;
    if (isText(block, constructionPlaneName))
        freedConstructionPlaneName = block;
    systems(&notedFree, "free", cLibrary)(block);
}

class ToolExport : public HostFixture {
protected:
    ToolExport() { AddInState::setRequestId(17); }
    void putPart(const std::string& sections)
    {
        const std::wstring path = installation.path(L"tools.mcam");
        writeBytes(path, "mastercam part 1\n\n" + sections);
        ASSERT_TRUE(standin::putPart(path));
        newTrace();
    }
    std::string exported() const { return readBytes(toolFile).value_or("none"); }
    // The records without their CR LF.
    std::vector<std::string> records() const
    {
        std::vector<std::string> all;
        const std::string bytes = exported();
        for (size_t start = 0; start < bytes.size();) {
            const size_t end = bytes.find("\r\n", start);
            if (end == bytes.npos)
                break;
            all.push_back(bytes.substr(start, end - start));
            start = end + 2;
        }
        return all;
    }
    const operation& firstInHost() const { return *firstMainOperation(); }

    const std::wstring toolFile = installation.path(L"temp\\tool-17.txt");
    LineReceiver listener;
};

} // namespace

TEST_F(ToolExport, writesTheOperationsAndTheFullTool)
{
    putPart(planes +
            "[tool]\nnumber = 3\nfeed-rate = 0.12\nlength-offset = 33\noverall-length = 79\n"
            "geometry-file = full.stl\ncomment = of the list\nstation = 4\n\n" +
            operationWith(9, 3,
                          "tool.feed-rate = 0.11\ntool.length-offset = 3\n"
                          "tool.comment = of the operation \xC3\x84\ndepth = -12\n"
                          "cycle-time = 14.5\ntool-plane-origin = 1 2 3\n"));
    exportToolData();
    ASSERT_EQ(records().size(), 1u);
    auto values = valuesOf(records()[0]);
    EXPECT_EQ(records()[0].substr(0, 19), "TOOLDATA|DATAID=17|");
    EXPECT_EQ(values["OPFEED"], "0.11");
    EXPECT_EQ(values["FEED"], "0.12");
    EXPECT_EQ(values["LOFF"], "3");
    EXPECT_EQ(values["LENGTHOFFSET"], "33");
    EXPECT_EQ(values["LENGTH OVERALL"], "79");
    EXPECT_EQ(values["STATION"], "4");
    EXPECT_EQ(values["COMMENT"], "of the operation \xC4");
    EXPECT_EQ(values["OPERATION NUMBER"], "1");
    EXPECT_EQ(values["OPID"], "9");
    EXPECT_EQ(values["TPTYPE"], "1");
    EXPECT_EQ(values["CPTYPE"], "2");
    EXPECT_EQ(values["TPX"] + values["TPY"] + values["TPZ"], "123");
    EXPECT_EQ(values["DEPTH"], "-12");
    EXPECT_EQ(values["OPTIME"], "14.5");
    EXPECT_EQ(values["GEOFILE"], hexadecimal(host::ownToolOf(firstInHost()).geometryFile));
    EXPECT_EQ(values["NCNAME"], hexadecimal(host::valuesOf(firstInHost()).ncName));
    EXPECT_NE(values["GEOFILE'"], values["GEOFILE"]);
    EXPECT_NE(values["TPNAME"], values["CPNAME"]);
    EXPECT_EQ(listener.nextConnection(), "TOOL-17\n");
    EXPECT_EQ(newTrace(),
              (Lines{LR"(ui list_manager(1, "", 0, *))", L"ui tool_manager(*, 5, *, *)",
                     L"ui CalcCycleTime(*, true) -> 14.5", LR"(ui list_manager(1, "", 1, *))"}));
}

TEST_F(ToolExport, writesEveryFieldUnderItsOwnKey)
{
    putPart(everyField);
    exportToolData();
    ASSERT_EQ(records().size(), 1u);
    auto values = valuesOf(records()[0]);
    const operation& op = firstInHost();
    EXPECT_EQ(values["GEOFILE"], hexadecimal(op.tool.geometryFileName));
    EXPECT_EQ(values["NCNAME"], hexadecimal(op.ncName));
    for (const char* address : {"TPNAME", "CPNAME", "GEOFILE", "GEOFILE'", "NCNAME"})
        EXPECT_EQ(values.erase(address), 1u) << address;
    EXPECT_EQ(values, valuesOfEveryField);
}

TEST_F(ToolExport, writesTheFilledToolsGeometryFile)
{
    putPart(everyField);
    hostsToolManager = &tool_manager;
    standin::redirectImports(GetModuleHandleW(nullptr), hostsToolManager, &notedToolManager);
    exportToolData();
    ASSERT_EQ(records().size(), 1u);
    EXPECT_EQ(valuesOf(records()[0])["GEOFILE'"], hexadecimal(filledGeometryFile));
}

TEST_F(ToolExport, keepsTheOperationsCopyOfAnUnknownTool)
{
    putPart(planes + operationWith(1, 8, "tool.feed-rate = 0.11\ntool.length-offset = 3\n"));
    exportToolData();
    ASSERT_EQ(records().size(), 1u);
    auto values = valuesOf(records()[0]);
    EXPECT_EQ(values["FEED"], "0.11");
    EXPECT_EQ(values["LENGTHOFFSET"], "3");
    EXPECT_EQ(values["LENGTH OVERALL"], "0");
}

TEST_F(ToolExport, countsOperationsAndSortsRecords)
{
    putPart(planes + operationWith(1, 3, "tool.diameter = 9\n") +
            operationWith(2, 3, "tool.diameter = 10\n") +
            operationWith(3, 3, "tool.diameter = 5\n"));
    exportToolData();
    const std::vector<std::string> all = records();
    ASSERT_EQ(all.size(), 3u);
    EXPECT_TRUE(std::is_sorted(all.begin(), all.end()));
    std::map<std::string, std::string> numberOf;
    for (const std::string& record : all)
        numberOf[valuesOf(record)["DIA"]] = valuesOf(record)["OPERATION NUMBER"];
    EXPECT_EQ(numberOf, (std::map<std::string, std::string>{{"9", "1"}, {"10", "2"}, {"5", "3"}}));
}

TEST_F(ToolExport, takesPlaneNamesFromTheFirstOperation)
{
    putPart("[no operation]\n\n" + planes + operationWith(1, 3, "") +
            "[operation]\nid = 2\ntool-plane = 7\nconstruction-plane = 8\ntool.number = 4\n");
    exportToolData(); // planes 7 and 8 do not exist
    EXPECT_EQ(records().size(), 2u);
}

TEST_F(ToolExport, announcesAnEmptyFile)
{
    putPart(planes);
    writeBytes(toolFile, "earlier");
    exportToolData();
    EXPECT_EQ(exported(), "");
    EXPECT_EQ(listener.nextConnection(), "TOOL-17\n");
    EXPECT_EQ(newTrace(), Lines{LR"(ui list_manager(1, "", 0, *))"}); // no list to release
}

TEST_F(ToolExport, namesFileAndNoticeAfterTheRequest)
{
    putPart(planes + operationWith(1, 3));
    AddInState::setRequestId(0);
    exportToolData();
    const auto bytes = readBytes(installation.path(L"temp\\tool-0.txt"));
    ASSERT_TRUE(bytes.has_value());
    EXPECT_EQ(bytes->substr(0, 18), "TOOLDATA|DATAID=0|");
    EXPECT_EQ(listener.nextConnection(), "TOOL-0\n");
    AddInState::setRequestId(-5);
    exportToolData();
    EXPECT_TRUE(readBytes(installation.path(L"temp\\tool--5.txt")).has_value());
    EXPECT_EQ(listener.nextConnection(), "TOOL--5\n");
}

TEST_F(ToolExport, readsTheRequestIdForEachUse)
{
    putPart(planes + operationWith(1, 3) + operationWith(2, 4));
    hostsToolManager = &tool_manager;
    standin::redirectImports(GetModuleHandleW(nullptr), hostsToolManager, &interruptedToolManager);
    exportToolData();
    ASSERT_EQ(records().size(), 2u);
    EXPECT_EQ(valuesOf(records()[0])["DATAID"], "17");
    EXPECT_EQ(valuesOf(records()[1])["DATAID"], "18");
    EXPECT_EQ(listener.nextConnection(), "TOOL-19\n");
}

TEST_F(ToolExport, keepsTheFileWithoutADescription)
{
    struct Case {
        const char* what;
        std::string part;
    };
    const Case cases[] = {
        {"an unknown plane", planes + "[operation]\nid = 1\ntool-plane = 9\n"},
        {"another unknown plane",
         planes + "[operation]\nid = 1\ntool-plane = 1\nconstruction-plane = 9\n"},
    };
    for (const Case& c : cases) {
        putPart(c.part);
        writeBytes(toolFile, "earlier");
        exportToolData();
        EXPECT_EQ(exported(), "earlier") << c.what;
        EXPECT_TRUE(listener.isIdle()) << c.what;
        EXPECT_EQ(newTrace().back(), LR"(ui list_manager(1, "", 1, *))") << c.what;
    }
}

namespace {

// The exporter's requests for the chain, and its connection, with what had happened before.
std::vector<std::string> exportSteps;
decltype(&list_manager) hostsList = nullptr;
operation_node* givenChain = nullptr;
std::wstring watchedToolFile;

void notedList(long code, const wchar_t* name, short mode, operation_node** list)
{
    exportSteps.push_back(
        std::to_string(mode) +
        (standin::callsOf("GetMainOpList") > 0 ? " after the first operation" : "") +
        (mode == 1 && *list == givenChain ? " same chain" : ""));
    hostsList(code, name, mode, list);
    if (mode == 0)
        givenChain = *list;
}

int WINAPI notedToolConnect(SOCKET, const sockaddr*, int)
{
    exportSteps.push_back(DeleteFileW(watchedToolFile.c_str()) ? "connect, file closed"
                                                               : "connect");
    return SOCKET_ERROR;
}

} // namespace

TEST_F(ToolExport, releasesTheChainItWasGiven)
{
    putPart(planes + operationWith(1, 3));
    watchedToolFile = toolFile;
    hostsList = &list_manager;
    standin::redirectImports(GetModuleHandleW(nullptr), hostsList, &notedList);
    redirectCalls(&connect, "connect", &notedToolConnect, L"ws2_32.dll");
    exportToolData();
    EXPECT_EQ(exportSteps, (std::vector<std::string>{"0 after the first operation",
                                                     "1 after the first operation same chain",
                                                     "connect, file closed"}));
}

TEST_F(ToolExport, sendsNothingWithoutItsFile)
{
    putPart(planes + operationWith(1, 3));
    CreateDirectoryW(toolFile.c_str(), nullptr);
    exportToolData();
    EXPECT_TRUE(listener.isIdle());
    RemoveDirectoryW(toolFile.c_str());
}

TEST_F(ToolExport, keepsTheFileOnAListException)
{
    putPart(planes + operationWith(1, 3) + operationWith(2, 4));
    writeBytes(toolFile, "earlier");
    for (const char* operation : {"list_manager", "GetMainOpList", "GetSize", "operator[]"}) {
        ASSERT_TRUE(standin::raiseNext(operation)) << operation;
        exportToolData();
        EXPECT_EQ(exported(), "earlier") << operation;
        EXPECT_TRUE(listener.isIdle()) << operation;
    }
    EXPECT_EQ(standin::undeletedExceptions(), 0);
}

TEST_F(ToolExport, continuesAfterAnExceptionOfTheHost)
{
    putPart(planes + operationWith(1, 3, "tool.feed-rate = 0.11\ncycle-time = 5\n"));
    for (const char* operation : {"tool_manager", "CalcCycleTime", "GetPlanePtrByID", "GetName"}) {
        ASSERT_TRUE(standin::raiseNext(operation)) << operation;
        exportToolData();
        ASSERT_EQ(records().size(), 1u) << operation;
        EXPECT_EQ(valuesOf(records()[0])["FEED"], "0.11") << operation;
        EXPECT_EQ(listener.nextConnection(), "TOOL-17\n") << operation;
        const Lines trace = newTrace();
        EXPECT_EQ(trace.back(), LR"(ui list_manager(1, "", 1, *))") << operation;
    }
    EXPECT_EQ(standin::undeletedExceptions(), 0);
}

TEST_F(ToolExport, survivesAFailedListRelease)
{
    putPart(planes + operationWith(1, 3));
    ASSERT_TRUE(standin::raiseAt("list_manager", 2));
    exportToolData();
    EXPECT_EQ(records().size(), 1u);
    EXPECT_EQ(listener.nextConnection(), "TOOL-17\n");
    EXPECT_EQ(newTrace().back(), LR"(ui list_manager(1, "", 1, *) raised)");
    EXPECT_EQ(standin::undeletedExceptions(), 0);
}

TEST_F(ToolExport, skipsValuesOfTheSecondRecord)
{
    const std::string more = "tool.feed-rate = 0.11\ncycle-time = 5\n";
    putPart(planes + "[tool]\nnumber = 3\nfeed-rate = 9\n\n[tool]\nnumber = 4\nfeed-rate = 9\n\n" +
            operationWith(1, 3, more) + operationWith(2, 4, more));
    const auto feedsAndTimes = [&](const char* operation, int nth) {
        EXPECT_TRUE(standin::raiseAt(operation, nth)) << operation;
        exportToolData();
        std::map<std::string, std::string> seen;
        for (const std::string& record : records()) {
            auto values = valuesOf(record);
            seen[values["OPERATION NUMBER"]] = values["FEED"] + " in " + values["OPTIME"];
        }
        EXPECT_EQ(listener.nextConnection(), "TOOL-17\n") << operation;
        return seen;
    };
    using Seen = std::map<std::string, std::string>;
    EXPECT_EQ(feedsAndTimes("tool_manager", 2), (Seen{{"1", "9 in 5"}, {"2", "0.11 in 5"}}));
    EXPECT_EQ(feedsAndTimes("CalcCycleTime", 2), (Seen{{"1", "9 in 5"}, {"2", "9 in 0"}}));
    EXPECT_EQ(feedsAndTimes("CalcCycleTime", 1), (Seen{{"1", "9 in 0"}, {"2", "9 in 5"}}));
    EXPECT_EQ(feedsAndTimes("GetName", 3), (Seen{{"1", "9 in 5"}, {"2", "9 in 5"}}));
    EXPECT_EQ(standin::undeletedExceptions(), 0);
}

TEST_F(ToolExport, losesOnlyTheRaisingPlanesName)
{
    putPart(planes + operationWith(1, 3));
    ASSERT_TRUE(standin::raiseAt("GetName", 2));
    EXPECT_EQ(getPlaneName(firstInHost(), 1), L"Top");
    EXPECT_EQ(getPlaneName(firstInHost(), 0), L"");
    EXPECT_EQ(getPlaneName(firstInHost(), 0), L"Front");
}

TEST_F(ToolExport, asksForTheToolPlaneFirst)
{
    putPart(planes + operationWith(1, 3) + operationWith(2, 3));
    PlaneBase* (MastercamPlanes::*const lookUp)(int) = &MastercamPlanes::GetPlanePtrByID;
    std::memcpy(&hostsPlaneLookUp, &lookUp, sizeof hostsPlaneLookUp);
    standin::redirectImports(GetModuleHandleW(nullptr), hostsPlaneLookUp, &notedPlaneLookUp);
    hostsToolManager = &tool_manager;
    standin::redirectImports(GetModuleHandleW(nullptr), hostsToolManager, &notedFilling);
    exportToolData();
    EXPECT_EQ(records().size(), 2u);
    EXPECT_EQ(askedPlanes, (std::vector<int>{1, 2, 0, 1, 2, 0})); // 0: the tool is filled
}

TEST_F(ToolExport, readsTheOwnToolBeforeTheFull)
{
    putPart(planes + operationWith(1, 3));
    chainsList = &list_manager;
    standin::redirectImports(GetModuleHandleW(nullptr), chainsList, &keptChainList);
    hostsToolManager = &tool_manager;
    standin::redirectImports(GetModuleHandleW(nullptr), hostsToolManager, &changingToolManager);
    exportToolData();
    ASSERT_EQ(records().size(), 1u);
    EXPECT_TRUE(isRecordChanged);
    EXPECT_NE(valuesOf(records()[0])["FLUTES"], "77");
}

TEST_F(ToolExport, writesEachPlanesNameUnderItsKey)
{
    putPart("[plane]\nid = 1\nname = Tool plane's name\n\n"
            "[plane]\nid = 2\nname = Construction plane's name\n\n" +
            operationWith(1, 3));
    redirectCalls(&notedFree, "free", &notedFree, cLibrary);
    exportToolData();
    ASSERT_EQ(records().size(), 1u);
    auto values = valuesOf(records()[0]);
    EXPECT_EQ(values["TPNAME"], hexadecimal(freedToolPlaneName));
    EXPECT_EQ(values["CPNAME"], hexadecimal(freedConstructionPlaneName));
}

TEST_F(ToolExport, namesPlanesBySelector)
{
    putPart(planes + "[plane]\nid = 5\nname = Third\n\n[operation]\nid = 1\ntool-plane = 1\n"
                     "construction-plane = 2\nthird-plane = 5\n\n");
    EXPECT_EQ(getPlaneName(firstInHost(), 0), L"Front");
    EXPECT_EQ(getPlaneName(firstInHost(), 1), L"Top");
    EXPECT_EQ(getPlaneName(firstInHost(), 2), L"");
    EXPECT_EQ(getPlaneName(firstInHost(), 3), L"Third");
    EXPECT_EQ(getPlaneName(firstInHost(), 4), L"");
    putPart(planes + "[operation]\nid = 1\nthird-plane = 9\n\n");
    EXPECT_EQ(getPlaneName(firstInHost(), 0), L""); // no plane
    EXPECT_EQ(getPlaneName(firstInHost(), 3), std::nullopt);
    putPart("[plane]\nid = 0\nname = Zero\n\n[plane]\nid = -2\nname = Below\n\n"
            "[operation]\nid = 1\ntool-plane = 0\nconstruction-plane = -2\n\n");
    EXPECT_EQ(getPlaneName(firstInHost(), 1), L"Zero"); // only -1 is no plane
    EXPECT_EQ(getPlaneName(firstInHost(), 0), L"Below");
}

TEST_F(ToolExport, readsFullFieldsWithoutATerminator)
{
    static operation full;
    std::fill(std::begin(full.nciName), std::end(full.nciName), L'n');
    std::fill(std::begin(full.tool.comment), std::end(full.tool.comment), L'c');
    static TpGroup group;
    std::fill(std::begin(group.name), std::end(group.name), L'g');
    EXPECT_EQ(host::nciNameOf(full), std::wstring(260, L'n'));
    EXPECT_EQ(host::ownToolOf(full).comment, std::wstring(200, L'c'));
    EXPECT_EQ(host::nameOf(group), std::wstring(260, L'g'));
}

TEST_F(ToolExport, findsTheFirstOperationOfTheList)
{
    putPart(planes);
    EXPECT_EQ(firstMainOperation(), nullptr);
    putPart("[no operation]\n\n[no operation]\n\n");
    EXPECT_EQ(firstMainOperation(), nullptr);
    putPart("[no operation]\n\n[operation]\nid = 4\n\n[operation]\nid = 5\n\n");
    ASSERT_NE(firstMainOperation(), nullptr);
    EXPECT_EQ(host::valuesOf(*firstMainOperation()).id, 4);
}
