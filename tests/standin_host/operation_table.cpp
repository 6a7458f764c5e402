#include "standin_host/operation_table.h"

#include "control.h"
#include "support/waiting.h"

namespace testing_support {

const char tablePart[] = "mastercam part 1\n"
                         "[plane]\nid = 1\nname = Top\n"
                         "[group]\nid = 7\nname = Machine\n"
                         "[tool]\nnumber = 3\n"
                         "[operation]\nid = 10\ncycle-time = 14.5\n"
                         "[no operation]\n"
                         "[operation]\nid = 20\n";

namespace {

using Kind = HostOperation::Kind;

std::wstring text(bool flag)
{
    return flag ? L"true" : L"false";
}

std::wstring text(const void* address)
{
    return address ? L"*" : L"null";
}

std::wstring text(const CString& string)
{
    return L'"' + std::wstring(string.GetString()) + L'"';
}

std::wstring quoted(const std::wstring& string)
{
    return L'"' + string + L'"';
}

std::wstring changedAfterMarking()
{
    standin::setState("db_changed", L"true");
    set_db_unchanged();
    return standin::state("db_changed");
}

std::wstring sizeAfterClosing()
{
    m_fclose(nullptr, 0, nullptr);
    return std::to_wstring(TpMainOpMgr.GetMainOpList().GetSize());
}

std::wstring nameAfterNewFileCommand()
{
    post_FT_command(CString(L"Mastercam"), CString(L"OnFileNew"));
    pumpMessages();
    return quoted(standin::state("geo_filename"));
}

std::wstring firstNode()
{
    operation_node unrelated{};
    operation_node* node = &unrelated;
    list_manager(1, L"", 0, &node);
    return text(node);
}

std::wstring toolIsFilled()
{
    tp_tool tool{};
    tool.lead.toolNumber = 3;
    DB_LIST_ENT* entity = nullptr;
    bool succeeded = true;
    tool_manager(&tool, 5, &entity, &succeeded);
    return text(succeeded);
}

std::wstring cycleTime()
{
    operation op{};
    op.operationId = 10;
    return CalcCycleTime(op, false) == 14.5 ? L"14.5" : L"0";
}

std::wstring suffixOfAGroup()
{
    TpGroup group{};
    return text(NCSuffix(&group));
}

std::wstring setupSheetRun()
{
    CStringArray files;
    return text(RunSetupSheetOnSelectedOpsWithoutUI(files));
}

std::wstring databaseHasChanged()
{
    standin::setState("db_changed", L"true");
    return text(has_db_changed());
}

std::wstring backplotRuns()
{
    standin::setState("backplot", L"true");
    return text(BackplotActive());
}

using Table = std::vector<HostOperation>;

void addQuestion(Table& table, const std::string& name, std::function<std::wstring()> call,
                 const std::wstring& works, const std::wstring& fails)
{
    table.push_back({name, Kind::question, L"", std::move(call), works, fails});
}

void addQuestions(Table& table)
{
    addQuestion(table, "BackplotActive", backplotRuns, L"true", L"false");
    addQuestion(table, "has_db_changed", databaseHasChanged, L"true", L"false");
    addQuestion(
        table, "get_MainFrame", [] { return text(get_MainFrame()); }, L"*", L"null");
    addQuestion(
        table, "GetMastercamApp", [] { return text(GetMastercamApp()); }, L"*", L"null");
    addQuestion(
        table, "GetApp", [] { return text(GetApp()); }, L"*", L"null");
    const auto listSize = [] { return std::to_wstring(TpMainOpMgr.GetMainOpList().GetSize()); };
    addQuestion(table, "GetMainOpList", listSize, L"3", L"0");
    addQuestion(table, "GetSize", listSize, L"3", L"0");
    addQuestion(
        table, "operator[]", [] { return text(TpMainOpMgr.GetMainOpList()[2]); }, L"*", L"null");
    const auto group = [] { return text(TpMainGrpMgr.GetMainGrpList().GroupByID(7)); };
    addQuestion(table, "GetMainGrpList", group, L"*", L"null");
    addQuestion(table, "GroupByID", group, L"*", L"null");
    addQuestion(
        table, "GetPlanePtrByID", [] { return text(Planes.GetPlanePtrByID(1)); }, L"*", L"null");
}

void addDocumentOperations(Table& table, const OperationSetting& setting)
{
    const auto [part, output] = std::pair(setting.part, setting.output);
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
    table.insert(
        table.end(),
        {{"DoFileOpen", Kind::result,
          L"DoFileOpen(" + quoted(part) + L", false, true, 3, false, *, null)", open, L"true",
          L"false"},
         {"CFile_DoFileSave", Kind::result,
          L"CFile_DoFileSave(" + quoted(output) + L", null, false, true)", save, L"true", L"false"},
         {"SaveFile", Kind::result, L"SaveFile(" + quoted(output) + L", null, false)", saveFile,
          L"1", L"0"},
         {"screen_to_bitmap_file", Kind::result,
          L"screen_to_bitmap_file(" + quoted(output) + L", true)", picture, L"true", L"false"},
         {"set_db_unchanged", Kind::action, L"set_db_unchanged()", changedAfterMarking, L"false",
          L"true"},
         {"m_fclose", Kind::action, L"m_fclose(null, 0, null)", sizeAfterClosing, L"0", L"3"},
         {"post_FT_command", Kind::action, LR"(post_FT_command("Mastercam", "OnFileNew"))",
          nameAfterNewFileCommand, LR"("")", quoted(part)},
         {"RunSetupSheetOnSelectedOpsWithoutUI", Kind::result,
          L"RunSetupSheetOnSelectedOpsWithoutUI(*)", setupSheetRun, L"true", L"false"}});
}

void addMachiningOperations(Table& table)
{
    const auto activate = [] { return text(SetActiveMachine(L"C:\\M\\Mill 3.mcam-mmd")); };
    const auto machineGroup = [] { return text(OMgetActiveMachineGroup(true)); };
    const auto prefix = [] { return text(NCPrefix(nullptr)); };
    table.insert(
        table.end(),
        {{"list_manager", Kind::action, LR"(list_manager(1, "", 0, *))", firstNode, L"*", L"null"},
         {"tool_manager", Kind::action, L"tool_manager(*, 5, *, *)", toolIsFilled, L"true",
          L"false"},
         {"CalcCycleTime", Kind::result, L"CalcCycleTime(*, false)", cycleTime, L"14.5", L"0"},
         {"NCPrefix", Kind::result, L"NCPrefix(null)", prefix, LR"("C:\NC\")", LR"("")"},
         {"NCSuffix", Kind::result, L"NCSuffix(*)", suffixOfAGroup, LR"(".NC")", LR"("")"},
         {"SetActiveMachine", Kind::result, LR"(SetActiveMachine("C:\M\Mill 3.mcam-mmd"))",
          activate, L"true", L"false"},
         {"OMgetActiveMachineGroup", Kind::result, L"OMgetActiveMachineGroup(true)", machineGroup,
          L"*", L"null"}});
}

// These only leave a trace line, so failure and success look the same.
void addRefreshes(Table& table, CMastercamInterface& application, CMastercamView& view)
{
    const auto takePath = [&] {
        application.position1(CString(L"C:\\a b.mcam"));
        return std::wstring();
    };
    const auto refresh = [&] {
        application.position3();
        return std::wstring();
    };
    const auto refreshView = [&] {
        view.position0();
        return std::wstring();
    };
    table.insert(table.end(),
                 {{"CMastercamInterface.position1", Kind::action,
                   LR"(CMastercamInterface.position1("C:\a b.mcam"))", takePath, L"", L""},
                  {"CMastercamInterface.position3", Kind::action,
                   L"CMastercamInterface.position3()", refresh, L"", L""},
                  {"CMastercamView.position0", Kind::action, L"CMastercamView.position0()",
                   refreshView, L"", L""}});
}

void addApplicationQuestions(Table& table, CMastercamInterface& application)
{
    const auto folder = [&] {
        const int programs = 1;
        return text(application.position0(&programs));
    };
    const auto view = [&] { return text(application.position2()); };
    const auto parent = [&] { return text(application.position4()); };
    const auto processing = [&] { return text(application.position5()); };
    addQuestion(table, "CMastercamInterface.position0", folder, quoted(programFolder()), LR"("")");
    addQuestion(table, "CMastercamInterface.position2", view, L"*", L"null");
    addQuestion(table, "CMastercamInterface.position4", parent, L"*", L"null");
    addQuestion(table, "CMastercamInterface.position5", processing, L"true", L"false");
}

} // namespace

std::vector<HostOperation> hostOperations(const OperationSetting& setting)
{
    Table table;
    // First, while the part with the plane is open.
    if (PlaneBase* const plane = setting.plane)
        addQuestion(
            table, "GetName", [plane] { return text(plane->GetName()); }, LR"("Top")", LR"("")");
    addQuestions(table);
    addDocumentOperations(table, setting);
    addMachiningOperations(table);
    if (setting.application) {
        addApplicationQuestions(table, *setting.application);
        addRefreshes(table, *setting.application, *setting.application->position2());
    }
    return table;
}

} // namespace testing_support
