// The host operations of MCCore.dll.
#include "host/mccore.h"

#include "core/document.h"
#include "core/host_call.h"
#include "core/setup_sheet.h"

using namespace standin;

wchar_t geo_filename[260];
MastercamPlanes Planes;

void set_db_unchanged()
{
    act(
        "set_db_unchanged", callLine("set_db_unchanged"),
        [] { setHostSetting(&HostSettings::databaseChanged, false); });
}

bool has_db_changed()
{
    return question(
        "has_db_changed", false, [] { return hostSettings().databaseChanged; });
}

void m_fclose(const wchar_t* name, int mode, FILE* stream)
{
    act(
        "m_fclose", callLine("m_fclose", name, mode, static_cast<const void*>(stream)),
        [&] {
            if (!name && mode == 0 && !stream)
                closeDocument();
        });
}

int SaveFile(const wchar_t* path, CWnd* parent, bool prompt)
{
    return act(
        "SaveFile", callLine("SaveFile", path, parent, prompt), 0,
        [&] { return path && saveDocument(path) ? 1 : 0; });
}

bool RunSetupSheetOnSelectedOpsWithoutUI(CStringArray& files)
{
    constexpr std::string_view name = "RunSetupSheetOnSelectedOpsWithoutUI";
    const auto report = [&](const std::vector<std::wstring>& produced, bool succeeded) {
        for (const std::wstring& file : produced)
            files.Add(file.c_str());
        return succeeded;
    };
    return act(
        name, callLine(name, static_cast<const void*>(&files)), false,
        [&] { return report(runSetupSheet(), true); },
        [&] { return report(failSetupSheet(), false); });
}

PlaneBase* MastercamPlanes::GetPlanePtrByID(int id)
{
    return question(
        "GetPlanePtrByID", static_cast<PlaneBase*>(nullptr),
        [&]() -> PlaneBase* {
            const std::shared_ptr<Part> part = openPart();
            const auto plane = part->planeById.find(id);
            return plane == part->planeById.end() ? nullptr : plane->second;
        });
}

CString standin::Plane::GetName() const
{
    return question(
        "GetName", CString(), [this] { return CString(name.c_str()); });
}
