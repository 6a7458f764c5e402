#include "application/add_in.h"

#include "control.h"
#include "core/call_text.h"
#include "framework/framework.h"

#include <bit>
#include <iterator>

namespace standin {

const AddInExport addInExports[] = {
    {"m_main", true, L"Add-in menu"},
    {"m_load", true, L"Check out from TORVA ZEM"},
    {"m_save", true, L"Save to TORVA ZEM"},
    {"m_about", true, L"About TORVA ZEM"},
    {"m_tools", true, L"Send the setup sheet to TORVA ZEM"},
    {"importNCqueue", false, L"Queue the NC programs for TORVA ZEM"},
    {"importNC", false, L"No effect"},
    {"renameNC", false, L"No effect"},
    {"DrawTool", false, L"Draw the picture of a drill"},
    {"TestFunction", false, L"Make the machine group active"},
    {"m_version", true, L"Pass the host's version"},
    {"m_open", true, L"Start the add-in"},
    {"m_notify", true, L"Event 0: no effect"},
    {"m_close", true, L"Stop the add-in"},
};
const size_t addInExportCount = std::size(addInExports);

namespace {

using NumberEntry = int (*)(int);
using DrawToolEntry = void (*)(unsigned width, unsigned height, unsigned toolType, double diameter,
                               double cornerRadius, double tipAngle, double fluteLength,
                               double shoulderLength, double overallLength, double shankDiameter,
                               int imageId);

constexpr std::string_view drawToolName = "DrawTool";
constexpr int hostVersion = 2100;

HMODULE addIn = nullptr;
NumberEntry eventSink = nullptr;

template <class Entry>
Entry entryOf(const std::string& name)
{
    return addIn ? std::bit_cast<Entry>(GetProcAddress(addIn, name.c_str())) : nullptr;
}

// Calls the add-in and traces the call with its result, which it returns. Exceptions end here.
// `call` returns the text to trace after the call.
template <class Call>
std::wstring callAndTrace(const std::wstring& line, Call call)
{
    std::wstring result = L" raised";
    try {
        result = call();
    } catch (CException* exception) {
        exception->Delete();
    } catch (...) {
        result = L" raised";
    }
    trace(line + result);
    return result;
}

std::wstring callNumberEntry(const std::wstring& line, NumberEntry entry, int argument)
{
    return callAndTrace(
        line, [&] { return L" -> " + callText(entry(argument)); });
}

std::wstring drawExampleTool(DrawToolEntry entry)
{
    constexpr unsigned drill = 4;
    const std::wstring line =
        callLine(drawToolName, 300, 400, drill, 10.0, 0.0, 59.0, 47.0, 50.0, 89.0, 12.0, 1);
    return callAndTrace(line, [&] {
        entry(300, 400, drill, 10, 0, 59, 47, 50, 89, 12, 1);
        return std::wstring();
    });
}

// " -> 0" after "m_save" is "m_save returned 0".
std::wstring outcomeText(const std::wstring& name, const std::optional<std::wstring>& result)
{
    constexpr std::wstring_view arrow = L" -> ";
    if (!result)
        return addIn ? L"The add-in has no export " + name + L"." : L"No add-in is loaded.";
    if (result->starts_with(arrow))
        return name + L" returned " + result->substr(arrow.size());
    return name + (result->empty() ? L" returned" : L" ended with an exception");
}

// Nothing if there is no such export.
std::optional<std::wstring> callAndReturnResult(const std::string& name,
                                                std::optional<int> argument)
{
    const auto entry = entryOf<NumberEntry>(name);
    if (!entry)
        return std::nullopt;
    const int number = argument.value_or(0);
    const std::wstring line = argument ? callLine(name, number) : callLine(name);
    if (name != drawToolName)
        return callNumberEntry(line, entry, number);
    return callAndTrace(line, [&] {
        entryOf<DrawToolEntry>(name)(static_cast<unsigned>(number), 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
        return std::wstring();
    });
}

std::optional<std::wstring> callWithExample(const AddInExport& called)
{
    if (called.name == drawToolName) {
        const auto entry = entryOf<DrawToolEntry>(called.name);
        return entry ? std::optional(drawExampleTool(entry)) : std::nullopt;
    }
    const bool isVersion = called.name == std::string_view("m_version");
    return callAndReturnResult(called.name, called.takesNumber
                                                ? std::optional(isVersion ? hostVersion : 0)
                                                : std::nullopt);
}

} // namespace

void setEventSink(int (*notify)(int code))
{
    eventSink = notify;
}

bool loadAddIn(const std::wstring& path)
{
    addIn = LoadLibraryW(path.c_str());
    if (!addIn)
        return false;
    observeModule(addIn);
    setEventSink(entryOf<NumberEntry>("m_notify"));
    return true;
}

bool callExport(const std::string& name, std::optional<int> argument)
{
    return callAndReturnResult(name, argument).has_value();
}

std::wstring callExportWithExample(const AddInExport& called)
{
    const std::string_view name = called.name;
    return outcomeText({name.begin(), name.end()}, callWithExample(called));
}

std::wstring sendEvent(int code)
{
    const std::wstring event = L"Event " + std::to_wstring(code);
    if (!eventSink)
        return event + L" was not sent: no add-in is loaded.";
    const std::wstring result = callNumberEntry(callLine("m_notify", code), eventSink, code);
    return event + L" was sent: " + outcomeText(L"m_notify", result);
}

} // namespace standin
