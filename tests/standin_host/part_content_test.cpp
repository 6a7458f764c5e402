// The host's lists, look-ups and records of an open part match its file.
#include "host/host.h"
#include "standin_host/part_texts.h"
#include "support/host_fixture.h"

using namespace testing_support;

namespace {

const std::string part = std::string(R"(mastercam part 1
[plane]
id = 1
name = Top
[plane]
id = 1
name = Second of its id
[plane]
id = 32767
name = Front %0025
[plane]
id = 3
[group]
id = 7
name = Machine
[group]
id = 8
parent = 7
name = First side
[group]
id = 9
parent = 4711
)") + toolWithEveryKey + R"([tool]
number = 3
comment = second of its number
[tool]
number = 4
)" + operationWithEveryKey +
                         R"([no operation]
[operation]
id = 12
cycle-time = 2
[operation]
id = 12
cycle-time = 3
)";

class PartContent : public HostFixture {
protected:
    PartContent()
    {
        writeBytes(makePart(), part);
        EXPECT_TRUE(standin::putPart(installation.path(L"part.mcam")));
    }

    TpMemLookupList& list = TpMainOpMgr.GetMainOpList();
};

operation_node* chain(long code = 1, const wchar_t* name = L"", short mode = 0)
{
    operation_node untouched{};
    operation_node* node = &untouched;
    list_manager(code, name, mode, &node);
    return node == &untouched ? nullptr : node;
}

// The record as the host fills it; nothing if there is no such tool.
std::optional<tp_tool> filledTool(int number, short code = 5)
{
    tp_tool tool{};
    tool.lead.toolNumber = number;
    bool succeeded = false;
    tool_manager(&tool, code, nullptr, &succeeded);
    return succeeded ? std::optional(tool) : std::nullopt;
}

std::vector<double> numbersOf(const tp_tool& tool)
{
    return {tool.overallLength,       tool.shoulderAngle,
            tool.additionalDiameter,  tool.tipAngle,
            tool.pilotDiameter,       tool.fluteLength,
            tool.shoulderLength,      tool.shoulderDiameter,
            tool.arborDiameter,       tool.holderDiameter,
            tool.holderLength,        tool.plungeRate,
            tool.retractRate,         double(tool.station),
            double(tool.slot),        double(tool.spindleSpeed),
            double(tool.toolGroup),   double(tool.machineGroup),
            double(tool.levelNumber), double(tool.spindleRotation)};
}

std::vector<double> numbersOf(const tp_tool_lead& tool)
{
    return {double(tool.toolNumber),
            double(tool.toolType),
            double(tool.numberOfFlutes),
            double(tool.cornerRadiusType),
            double(tool.toolMaterial),
            double(tool.lengthOffsetNumber),
            double(tool.diameterOffsetNumber),
            tool.diameter,
            tool.cornerRadius,
            tool.feedRate};
}

std::vector<double> numbersOf(const operation& op)
{
    const point3& tool = op.toolPlaneOrigin;
    const point3& construction = op.constructionPlaneOrigin;
    return {double(op.operationId),
            double(op.groupId),
            double(op.holderNumber),
            double(op.operationType),
            double(op.compensationType),
            double(op.workOffsetNumber),
            double(op.toolPlaneId),
            double(op.constructionPlaneId),
            double(op.thirdPlaneId),
            op.depth,
            tool.x,
            tool.y,
            tool.z,
            construction.x,
            construction.y,
            construction.z};
}

using Numbers = std::vector<double>;

} // namespace

TEST_F(PartContent, listsOperationsInFileOrder)
{
    ASSERT_EQ(list.GetSize(), 4);
    EXPECT_EQ(list[0]->operationId, 11);
    EXPECT_EQ(list[1], nullptr);
    EXPECT_EQ(list[2]->operationId, 12);
    EXPECT_NE(list[2], list[3]);
    EXPECT_EQ(list[-1], nullptr);
    EXPECT_EQ(list[4], nullptr);
}

TEST_F(PartContent, chainSkipsNullEntries)
{
    const operation_node* const first = chain();
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(&first->op, list[0]);
    ASSERT_NE(first->next, nullptr);
    EXPECT_EQ(&first->next->op, list[2]);
    ASSERT_NE(first->next->next, nullptr);
    EXPECT_EQ(&first->next->next->op, list[3]);
    EXPECT_EQ(first->next->next->next, nullptr);
}

TEST_F(PartContent, returnsChainForKnownListOnly)
{
    EXPECT_NE(chain(1, nullptr), nullptr);
    EXPECT_EQ(chain(2), nullptr);
    EXPECT_EQ(chain(1, L"name"), nullptr);
    operation_node kept{};
    operation_node* handedBack = &kept;
    list_manager(1, L"", 1, &handedBack);
    EXPECT_EQ(handedBack, &kept);
}

TEST_F(PartContent, fillsOperationRecord)
{
    const operation& op = *list[0];
    EXPECT_EQ(numbersOf(op), (Numbers{11, 8, 12, 41, 42, 43, 1, 44, 45, -12.5, 1, 2, 3, 4, 5, 6}));
    EXPECT_STREQ(op.ncName, L"C:\\NC\\A.NC");
    EXPECT_STREQ(op.nciName, L"C:\\NC\\A.nci");
    EXPECT_EQ(numbersOf(op.tool), (Numbers{3, 14, 12, 11, -12, 15, 16, 18.5, 1.25, 1.125}));
    EXPECT_STREQ(op.tool.geometryFileName, L"C:\\T\\old.step");
    EXPECT_STREQ(op.tool.comment, L"Drill 18.5");
}

TEST_F(PartContent, usesDefaultsForMissingKeys)
{
    const operation& op = *list[2];
    EXPECT_EQ(numbersOf(op), (Numbers{12, 0, 0, 0, 0, 0, -1, -1, -1, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_STREQ(op.ncName, L"");
    EXPECT_EQ(numbersOf(op.tool), Numbers(10, 0));
}

TEST_F(PartContent, fillsToolRecordByNumber)
{
    const auto tool = filledTool(3);
    ASSERT_TRUE(tool.has_value());
    EXPECT_EQ(numbersOf(tool->lead),
              (Numbers{3, 4, 2, 1, -32768, 5, 2147483647, 8.5, 0.25, 0.125}));
    EXPECT_STREQ(tool->lead.geometryFileName, L"C:\\T\\drill.step");
    EXPECT_STREQ(tool->lead.comment, L"Drill 8.5");
    EXPECT_EQ(numbersOf(*tool), (Numbers{79, 1.5, 2.5,  118, 3.5, 47,   50, 12, 16, 40,
                                         80, 350, 3000, 61,  62,  2800, 63, 64, 65, -1}));
}

TEST_F(PartContent, rejectsUnknownToolAndCode)
{
    EXPECT_TRUE(filledTool(4).has_value());
    EXPECT_FALSE(filledTool(5).has_value());
    EXPECT_FALSE(filledTool(3, 4).has_value());
    tp_tool tool{};
    tool.lead.toolNumber = 5;
    tool.tipAngle = 90;
    bool succeeded = true;
    tool_manager(&tool, 5, nullptr, &succeeded);
    EXPECT_FALSE(succeeded);
    EXPECT_EQ(tool.tipAngle, 90);
}

TEST_F(PartContent, linksGroupsToParents)
{
    TpGrpList& groups = TpMainGrpMgr.GetMainGrpList();
    const TpGroup* const group = groups.GroupByID(list[0]->groupId);
    ASSERT_NE(group, nullptr);
    EXPECT_STREQ(group->name, L"First side");
    const TpGroup* const parent = groups.GroupByID(group->parentId);
    ASSERT_NE(parent, nullptr);
    EXPECT_EQ(parent->groupId, 7);
    EXPECT_STREQ(parent->name, L"Machine");
    EXPECT_EQ(groups.GroupByID(parent->parentId), nullptr);
    EXPECT_EQ(groups.GroupByID(groups.GroupByID(9)->parentId), nullptr);
    EXPECT_EQ(OMgetActiveMachineGroup(false), parent);
}

TEST_F(PartContent, firstPlaneWithAnIdWins)
{
    EXPECT_STREQ(Planes.GetPlanePtrByID(1)->GetName(), L"Top");
    EXPECT_STREQ(Planes.GetPlanePtrByID(32767)->GetName(), L"Front %");
    EXPECT_STREQ(Planes.GetPlanePtrByID(3)->GetName(), L"");
    EXPECT_EQ(Planes.GetPlanePtrByID(-1), nullptr);
    EXPECT_EQ(Planes.GetPlanePtrByID(2), nullptr);
}

TEST_F(PartContent, keepsCycleTimePerOperation)
{
    EXPECT_EQ(CalcCycleTime(*list[0], false), 14.5);
    EXPECT_EQ(CalcCycleTime(*list[2], false), 2.0);
    EXPECT_EQ(CalcCycleTime(*list[3], false), 3.0); // same id
    operation copy = *list[3];
    EXPECT_EQ(CalcCycleTime(copy, false), 2.0); // identified by its id only
    operation unknown{};
    EXPECT_EQ(CalcCycleTime(unknown, true), 0.0);
}

TEST_F(PartContent, staysValidAfterNextOpen)
{
    const operation* const op = list[0];
    writeBytes(makePart(L"next.mcam"), "");
    for (int i = 0; i < 3; ++i)
        ASSERT_TRUE(standin::putPart(installation.path(L"next.mcam")));
    EXPECT_EQ(op->operationId, 11);
    EXPECT_STREQ(op->ncName, L"C:\\NC\\A.NC");
    EXPECT_EQ(list.GetSize(), 0);
    EXPECT_EQ(chain(), nullptr);
    EXPECT_EQ(OMgetActiveMachineGroup(true), nullptr);
}
