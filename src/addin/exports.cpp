// Thin shells: each calls one inner function and gives the neutral answer when an exception ends
// it. m_main and m_load let out the one exception that is meant to pass; m_version, importNC and
// renameNC call what cannot throw and have no edge.
#include "addin/exports.h"

#include "addin/command_menu.h"
#include "addin/declared_version.h"
#include "addin/host_events.h"
#include "addin/lifecycle.h"
#include "incoming/checkout_command.h"
#include "outgoing/save.h"
#include "host/host.h"
#include "host/barriers.h"
#include "outgoing/nc_commands.h"
#include "outgoing/nc_queue.h"
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
    return atEdge(0, openAddIn);
}

int m_close(int)
{
    return atEdge(0, closeAddIn);
}

int m_notify(int eventCode)
{
    return atEdge(
        0, [&] { return reactToHostEvent(eventCode); });
}

// Deliberate: the framework's exceptions that the host raises in the setup sheet pass on to the
// host. One would expect them to be caught as in m_tools; nothing else gets out.
int m_main(int)
{
    return atEdgeLetting<CException*>(0, runCommandMenu);
}

int m_about(int)
{
    return atEdge(
        0,
        [] {
            showAbout();
            return 0;
        });
}

int m_tools(int)
{
    return atEdge(
        0,
        [] {
            sendSetupSheet();
            return 0;
        });
}

// Deliberate: an answer whose first word has fewer than three characters throws, and nobody catches
// it. One would expect "Failed to load file."; nothing else gets out.
int m_load(int)
{
    return atEdgeLetting<const std::out_of_range&>(0, requestCheckout);
}

int m_save(int)
{
    return saveFlow();
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
    return atEdge(
        1,
        [] {
            callHost([] { OMgetActiveMachineGroup(true); });
            return 1;
        });
}

int importNCqueue()
{
    return atEdge(0, importNcQueue);
}

int DrawTool(std::uint32_t width, std::uint32_t height, std::uint32_t toolType, double diameter,
             double cornerRadius, double tipAngle, double fluteLength, double shoulderLength,
             double overallLength, double shankDiameter, std::int32_t imageId)
{
    return atEdge(
        0,
        [&] {
            drawTool({width, height, toolType, diameter, cornerRadius, tipAngle, fluteLength,
                      shoulderLength, overallLength, shankDiameter},
                     imageId);
            return 0;
        });
}
