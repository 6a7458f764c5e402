// The option to hand the tools over: the settings file.
#include "formats/settings_file.h"
#include "fuzz/differences.h"
#include "fuzz/plain_text.h"
#include "fuzz/targets.h"

namespace fuzzing {

namespace {

std::string checkToolsOption(std::string_view bytes)
{
    Differences differences;
    for (const std::string& line : linesAsRead(bytes))
        differences.compare("asks for tools", torvapdm::hasAlwaysSaveTools(line),
                            hasAnywhere(line, "AlwaysSaveTools=y"));
    return differences.text();
}

} // namespace

Target toolsOptionTarget()
{
    return {"tools_option",
            checkToolsOption,
            {"AlwaysSaveTools=y\n", "AlwaysSaveTools=Y\n",
             "xAlwaysSaveTools=yes\nalwaysSaveTools=y",
             "AlwaysSaveTools = y\r\nAlwaysSaveTools=n\r\n"},
            {"AlwaysSaveTools", "=", "y", "Y", "\n", "AlwaysSaveTools=y"}};
}

} // namespace fuzzing
