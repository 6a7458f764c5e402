// The add-in with two more exports, which scripts of the stand-in host can call: for what no
// command of the shipped add-in makes.
#include "addin/exports.h"
#include "framework/framework.h"
#include "outgoing/tool_export.h"

extern "C" __declspec(dllexport) int sendToolData()
{
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    torvapdm::exportToolData();
    return 0;
}

extern "C" __declspec(dllexport) int drawDrill()
{
    constexpr std::uint32_t drill = 4;
    return DrawTool(300, 400, drill, 10, 0, 59, 47, 50, 89, 12, 1);
}
