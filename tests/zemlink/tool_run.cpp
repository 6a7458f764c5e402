#include "zemlink/tool_run.h"

#include "peer/handle.h"
#include "support/waiting.h"

namespace testing_support {

static peer::OwnHandle openForChild(const std::wstring& path)
{
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    return peer::ownFile(CreateFileW(path.c_str(), GENERIC_WRITE,
                                     FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                     &inherited, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
}

ToolRun::ToolRun(const Installation& installation, const std::wstring& words,
                 const std::wstring& name, const std::wstring& program)
    : outputPath_(installation.path(name + L".out")),
      errorPath_(installation.path(name + L".err")),
      process_(quoted(program) + L' ' + words, false, openForChild(outputPath_).get(),
               openForChild(errorPath_).get())
{
}

bool ToolRun::waitForOutput(const std::string& text) const
{
    return waitUntil([&] { return output().find(text) != std::string::npos; });
}

ToolResult runTool(const Installation& installation, const std::wstring& words)
{
    const ToolRun run(installation, words);
    return {run.waitForExit().value_or(STILL_ACTIVE), run.output(), run.errors()};
}

} // namespace testing_support
