// Every host operation, with one call and its result.
#pragma once

#include "control.h"
#include "host/host.h"
#include "support/installation.h"
#include "support/waiting.h"

#include <functional>
#include <string>
#include <vector>

namespace testing_support {

struct HostOperation {
    enum class Kind {
        question, // not traced
        result,   // traced with its result
        action    // traced without a result
    };

    std::string name;
    Kind kind;
    std::wstring line; // the traced call; empty for a question
    // Makes the call and returns its result as the caller sees it, in the trace's format.
    std::function<std::wstring()> call;
    std::wstring works; // the result of a successful call
    std::wstring fails; // the result of a failing call
};

// The setting of the calls: a host in which `part` is open.
struct OperationSetting {
    std::wstring part;                          // path of a file with `tablePart`
    std::wstring output;                        // path of a file to write
    CMastercamInterface* application = nullptr; // null: omit its operations
    PlaneBase* plane = nullptr;                 // plane 1 of the part; null: omit its operation
};

// Two operations in a list of three entries, a group, a tool, a plane.
inline constexpr char tablePart[] = "mastercam part 1\n"
                                    "[plane]\nid = 1\nname = Top\n"
                                    "[group]\nid = 7\nname = Machine\n"
                                    "[tool]\nnumber = 3\n"
                                    "[operation]\nid = 10\ncycle-time = 14.5\n"
                                    "[no operation]\n"
                                    "[operation]\nid = 20\n";

inline std::wstring text(bool flag)
{
    return flag ? L"true" : L"false";
}

inline std::wstring text(const void* address)
{
    return address ? L"*" : L"null";
}

inline std::wstring text(const CString& string)
{
    return L'"' + std::wstring(string.GetString()) + L'"';
}

inline std::wstring text(const std::wstring& string)
{
    return L'"' + string + L'"';
}

inline std::wstring listSize()
{
    return std::to_wstring(TpMainOpMgr.GetMainOpList().GetSize());
}

inline std::wstring group()
{
    return text(TpMainGrpMgr.GetMainGrpList().GroupByID(7));
}

inline std::wstring firstNode()
{
    operation_node unrelated{};
    operation_node* node = &unrelated;
    list_manager(1, L"", 0, &node);
    return text(node);
}

inline std::wstring toolIsFilled()
{
    tp_tool tool{};
    tool.lead.toolNumber = 3;
    DB_LIST_ENT* entity = nullptr;
    bool succeeded = true;
    tool_manager(&tool, 5, &entity, &succeeded);
    return text(succeeded);
}

inline std::wstring cycleTime()
{
    operation op{};
    op.operationId = 10;
    return CalcCycleTime(op, false) == 14.5 ? L"14.5" : L"0";
}

using Table = std::vector<HostOperation>;

inline Table questions()
{
    const auto isChanged = [] {
        standin::setState("db_changed", L"true");
        return text(has_db_changed());
    };
    const auto isBackplotActive = [] {
        standin::setState("backplot", L"true");
        return text(BackplotActive());
    };
    const auto lastNode = [] { return text(TpMainOpMgr.GetMainOpList()[2]); };
    const auto plane = [] { return text(Planes.GetPlanePtrByID(1)); };
    using enum HostOperation::Kind;
    return {
        {"BackplotActive", question, L"", isBackplotActive, L"true", L"false"},
        {"has_db_changed", question, L"", isChanged, L"true", L"false"},
        {"get_MainFrame", question, L"", [] { return text(get_MainFrame()); }, L"*", L"null"},
        {"GetMastercamApp", question, L"", [] { return text(GetMastercamApp()); }, L"*", L"null"},
        {"GetApp", question, L"", [] { return text(GetApp()); }, L"*", L"null"},
        {"GetMainOpList", question, L"", listSize, L"3", L"0"},
        {"GetSize", question, L"", listSize, L"3", L"0"},
        {"operator[]", question, L"", lastNode, L"*", L"null"},
        {"GetMainGrpList", question, L"", group, L"*", L"null"},
        {"GroupByID", question, L"", group, L"*", L"null"},
        {"GetPlanePtrByID", question, L"", plane, L"*", L"null"}};
}

inline Table documentOperations(const std::wstring& part, const std::wstring& output)
{
    const auto open = [part] {
        bool escaped = true;
        return text(DoFileOpen(part.c_str(), false, true, 3, false, &escaped, nullptr));
    };
    const auto save = [output] {
        return text(CFile_DoFileSave(output.c_str(), nullptr, false, true));
    };
    const auto saveFile = [output] {
        return std::to_wstring(SaveFile(output.c_str(), nullptr, false));
    };
    const auto picture = [output] { return text(screen_to_bitmap_file(output.c_str(), true)); };
    const auto changedAfterMarking = [] {
        standin::setState("db_changed", L"true");
        set_db_unchanged();
        return standin::state("db_changed");
    };
    const auto sizeAfterClosing = [] {
        m_fclose(nullptr, 0, nullptr);
        return listSize();
    };
    const auto nameAfterNewFile = [] {
        post_FT_command(CString(L"Mastercam"), CString(L"OnFileNew"));
        pumpMessages();
        return text(standin::state("geo_filename"));
    };
    const auto setupSheet = [] {
        CStringArray files;
        return text(RunSetupSheetOnSelectedOpsWithoutUI(files));
    };
    using enum HostOperation::Kind;
    const std::wstring opening = L"(" + text(part) + L", false, true, 3, false, *, null)";
    const std::wstring saving = L"(" + text(output) + L", null, false";
    return {
        {"DoFileOpen", result, L"DoFileOpen" + opening, open, L"true", L"false"},
        {"CFile_DoFileSave", result, L"CFile_DoFileSave" + saving + L", true)", save, L"true",
         L"false"},
        {"SaveFile", result, L"SaveFile" + saving + L")", saveFile, L"1", L"0"},
        {"screen_to_bitmap_file", result, L"screen_to_bitmap_file(" + text(output) + L", true)",
         picture, L"true", L"false"},
        {"set_db_unchanged", action, L"set_db_unchanged()", changedAfterMarking, L"false", L"true"},
        {"m_fclose", action, L"m_fclose(null, 0, null)", sizeAfterClosing, L"0", L"3"},
        {"post_FT_command", action, LR"(post_FT_command("Mastercam", "OnFileNew"))",
         nameAfterNewFile, LR"("")", text(part)},
        {"RunSetupSheetOnSelectedOpsWithoutUI", result, L"RunSetupSheetOnSelectedOpsWithoutUI(*)",
         setupSheet, L"true", L"false"}};
}

inline Table machiningOperations()
{
    const auto activate = [] { return text(SetActiveMachine(L"C:\\M\\Mill 3.mcam-mmd")); };
    const auto machineGroup = [] { return text(OMgetActiveMachineGroup(true)); };
    const auto prefix = [] { return text(NCPrefix(nullptr)); };
    const auto suffix = [] {
        TpGroup group{};
        return text(NCSuffix(&group));
    };
    using enum HostOperation::Kind;
    return {{"list_manager", action, LR"(list_manager(1, "", 0, *))", firstNode, L"*", L"null"},
            {"tool_manager", action, L"tool_manager(*, 5, *, *)", toolIsFilled, L"true", L"false"},
            {"CalcCycleTime", result, L"CalcCycleTime(*, false)", cycleTime, L"14.5", L"0"},
            {"NCPrefix", result, L"NCPrefix(null)", prefix, LR"("C:\NC\")", LR"("")"},
            {"NCSuffix", result, L"NCSuffix(*)", suffix, LR"(".NC")", LR"("")"},
            {"SetActiveMachine", result, LR"(SetActiveMachine("C:\M\Mill 3.mcam-mmd"))", activate,
             L"true", L"false"},
            {"OMgetActiveMachineGroup", result, L"OMgetActiveMachineGroup(true)", machineGroup,
             L"*", L"null"}};
}

inline Table applicationOperations(CMastercamInterface& application)
{
    CMastercamView& view = *application.position2();
    const auto folder = [&application] {
        const int programs = 1;
        return text(application.position0(&programs));
    };
    // These three only leave a trace line, so failure and success look the same.
    const auto takePath = [&application] {
        application.position1(CString(L"C:\\a b.mcam"));
        return std::wstring();
    };
    const auto refresh = [&application] {
        application.position3();
        return std::wstring();
    };
    const auto refreshView = [&view] {
        view.position0();
        return std::wstring();
    };
    const auto viewOf = [&application] { return text(application.position2()); };
    const auto parent = [&application] { return text(application.position4()); };
    const auto processing = [&application] { return text(application.position5()); };
    using enum HostOperation::Kind;
    return {
        {"CMastercamInterface.position0", question, L"", folder, text(programFolder()), LR"("")"},
        {"CMastercamInterface.position2", question, L"", viewOf, L"*", L"null"},
        {"CMastercamInterface.position4", question, L"", parent, L"*", L"null"},
        {"CMastercamInterface.position5", question, L"", processing, L"true", L"false"},
        {"CMastercamInterface.position1", action,
         LR"(CMastercamInterface.position1("C:\a b.mcam"))", takePath, L"", L""},
        {"CMastercamInterface.position3", action, L"CMastercamInterface.position3()", refresh, L"",
         L""},
        {"CMastercamView.position0", action, L"CMastercamView.position0()", refreshView, L"", L""}};
}

inline std::vector<HostOperation> hostOperations(const OperationSetting& setting)
{
    Table table;
    // First, while the part with the plane is open.
    if (PlaneBase* const plane = setting.plane)
        table.push_back({"GetName", HostOperation::Kind::question, L"",
                         [plane] { return text(plane->GetName()); }, LR"("Top")", LR"("")"});
    for (const Table& part :
         {questions(), documentOperations(setting.part, setting.output), machiningOperations(),
          setting.application ? applicationOperations(*setting.application) : Table()})
        table.insert(table.end(), part.begin(), part.end());
    return table;
}

} // namespace testing_support
