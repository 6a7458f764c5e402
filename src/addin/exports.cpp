// Exception barriers: each entry point calls one inner function and returns its default result if
// an exception ends it; m_main and m_load let one type of exception propagate. m_version, importNC
// and renameNC call what cannot throw, and m_save what has a barrier of its own.
#include "addin/exports.h"

#include "addin/command_menu.h"
#include "addin/host_events.h"
#include "addin/lifecycle.h"
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
    return barrier(0, openAddIn);
}

int m_close(int)
{
    return barrier(0, closeAddIn);
}

int m_notify(int eventCode)
{
    return barrier(
        0, [&] { return reactToHostEvent(eventCode); });
}

// Quirk Q15: the framework's exceptions from the setup sheet propagate to the host.
int m_main(int)
{
    return barrierExceptFor<CException*>(0, runCommandMenu);
}

int m_about(int)
{
    return barrier(
        0,
        [] {
            showAbout();
            return 0;
        });
}

int m_tools(int)
{
    return barrier(
        0,
        [] {
            sendSetupSheet();
            return 0;
        });
}

// Quirk Q18: the exception for an answer with a first word of fewer than three characters
// propagates.
int m_load(int)
{
    return barrierExceptFor<const std::out_of_range&>(0, runCheckoutCommand);
}

int m_save(int)
{
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
    return barrier(
        1,
        [] {
            callHost([] { OMgetActiveMachineGroup(true); });
            return 1;
        });
}

int importNCqueue()
{
    return barrier(0, importNcQueue);
}

int DrawTool(std::uint32_t width, std::uint32_t height, std::uint32_t toolType, double diameter,
             double cornerRadius, double tipAngle, double fluteLength, double shoulderLength,
             double overallLength, double shankDiameter, std::int32_t imageId)
{
    return barrier(
        0,
        [&] {
            drawTool({width, height, toolType, diameter, cornerRadius, tipAngle, fluteLength,
                      shoulderLength, overallLength, shankDiameter},
                     imageId);
            return 0;
        });
}
