#include "application/add_in.h"

#include "control.h"
#include "core/call_text.h"
#include "framework/framework.h"

#include <bit>
#include <iterator>

namespace standin {

const AddInExport addInExports[] = {
    {"m_main", true},    {"m_load", true},         {"m_save", true},    {"m_about", true},
    {"m_tools", true},   {"importNCqueue", false}, {"importNC", false}, {"renameNC", false},
    {"DrawTool", false}, {"TestFunction", false},  {"m_version", true}, {"m_open", true},
    {"m_notify", true},  {"m_close", true},
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

// Calls the add-in and traces the call with its result. Exceptions end here. `call` returns the
// text to trace after the call.
template <class Call>
void callAndTrace(const std::wstring& line, Call call)
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
}

void callNumberEntry(const std::wstring& line, NumberEntry entry, int argument)
{
    callAndTrace(
        line, [&] { return L" -> " + callText(entry(argument)); });
}

void drawExampleTool(DrawToolEntry entry)
{
    constexpr unsigned drill = 4;
    const std::wstring line =
        callLine(drawToolName, 300, 400, drill, 10.0, 0.0, 59.0, 47.0, 50.0, 89.0, 12.0, 1);
    callAndTrace(line, [&] {
        entry(300, 400, drill, 10, 0, 59, 47, 50, 89, 12, 1);
        return std::wstring();
    });
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
    const auto entry = entryOf<NumberEntry>(name);
    if (!entry)
        return false;
    const int number = argument.value_or(0);
    const std::wstring line = argument ? callLine(name, number) : callLine(name);
    if (name != drawToolName) {
        callNumberEntry(line, entry, number);
        return true;
    }
    callAndTrace(line, [&] {
        entryOf<DrawToolEntry>(name)(static_cast<unsigned>(number), 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
        return std::wstring();
    });
    return true;
}

void callExportWithExample(const AddInExport& called)
{
    if (called.name == drawToolName) {
        if (const auto entry = entryOf<DrawToolEntry>(called.name))
            drawExampleTool(entry);
        return;
    }
    const bool isVersion = called.name == std::string_view("m_version");
    callExport(called.name,
               called.takesNumber ? std::optional(isVersion ? hostVersion : 0) : std::nullopt);
}

void sendEvent(int code)
{
    if (eventSink)
        callNumberEntry(callLine("m_notify", code), eventSink, code);
}

} // namespace standin
