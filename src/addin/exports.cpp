// Exception barriers: each entry point calls one inner function and returns its default result if
// an exception ends it; m_main and m_load let one type of exception propagate. m_version, importNC
// and renameNC call what cannot throw, and m_save what has a barrier of its own. All that reach the
// framework or the host first select the framework's state of this library.
#include "addin/exports.h"

#include "addin/command_menu.h"
#include "addin/host_events.h"
#include "addin/lifecycle.h"
#include "framework/framework.h"
#include "host/barriers.h"
#include "host/host.h"
#include "incoming/checkout_command.h"
#include "outgoing/nc_queue.h"
#include "outgoing/save.h"
#include "outgoing/setup_sheet.h"
#include "toolpicture/picture.h"

#include <stdexcept>

using namespace torvapdm;

int m_version(int hostVersion)
{
    return declaredVersion(hostVersion);
}

int m_open(int)
{
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    return barrier(0, openAddIn);
}

int m_close(int)
{
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    return barrier(0, closeAddIn);
}

int m_notify(int eventCode)
{
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    return barrier(0, [&] { return reactToHostEvent(eventCode); });
}

// Quirk Q15: the framework's exceptions from the setup sheet propagate to the host.
int m_main(int)
{
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    return barrierExceptFor<CException*>(0, runCommandMenu);
}

int m_about(int)
{
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    return barrier(0, [] {
        showAbout();
        return 0;
    });
}

int m_tools(int)
{
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    return barrier(0, [] {
        sendSetupSheet();
        return 0;
    });
}

// Quirk Q18: the exception for an answer with a first word of fewer than three characters
// propagates.
int m_load(int)
{
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    return barrierExceptFor<const std::out_of_range&>(0, runCheckoutCommand);
}

int m_save(int)
{
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    return saveToCompanion();
}

int importNC()
{
    return importNcFiles();
}

int renameNC()
{
    return renameNcFiles();
}

int TestFunction()
{
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    return barrier(1, [] {
        callHost([] { OMgetActiveMachineGroup(true); });
        return 1;
    });
}

int importNCqueue()
{
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    return barrier(0, importNcQueue);
}

int DrawTool(std::uint32_t width, std::uint32_t height, std::uint32_t toolType, double diameter,
             double cornerRadius, double tipAngle, double fluteLength, double shoulderLength,
             double overallLength, double shankDiameter, std::int32_t imageId)
{
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    return barrier(0, [&] {
        drawTool({width, height, toolType, diameter, cornerRadius, tipAngle, fluteLength,
                  shoulderLength, overallLength, shankDiameter},
                 imageId);
        return 0;
    });
}
