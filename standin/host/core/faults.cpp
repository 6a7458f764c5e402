#include "core/faults.h"

#include "control.h"
#include "core/lock.h"

#include <algorithm>
#include <atomic>
#include <iterator>
#include <map>
#include <mutex>

namespace standin {

// Not in an anonymous namespace: the add-in, another module, catches its base class, and types are
// compared by name across modules.
class HostException : public CException {
public:
    HostException() { ++alive; }
    ~HostException() override { --alive; }

    BOOL GetErrorMessage(LPWSTR buffer, UINT bufferLength, PUINT helpContext) const override;

    static std::atomic<int> alive;
};

std::atomic<int> HostException::alive{0};

BOOL HostException::GetErrorMessage(LPWSTR buffer, UINT bufferLength, PUINT helpContext) const
{
    CException::GetErrorMessage(buffer, bufferLength, helpContext);
    if (!buffer || bufferLength == 0)
        return FALSE;
    constexpr std::wstring_view text = L"The host could not carry out the operation.";
    buffer[text.copy(buffer, bufferLength - 1)] = L'\0';
    return TRUE;
}

namespace {

constexpr std::string_view operationNames[] = {
    "BackplotActive",
    "CFile_DoFileSave",
    "CMastercamInterface.position0",
    "CMastercamInterface.position1",
    "CMastercamInterface.position2",
    "CMastercamInterface.position3",
    "CMastercamInterface.position4",
    "CMastercamInterface.position5",
    "CMastercamView.position0",
    "CalcCycleTime",
    "DoFileOpen",
    "GetApp",
    "GetMainGrpList",
    "GetMainOpList",
    "GetMastercamApp",
    "GetName",
    "GetPlanePtrByID",
    "GetSize",
    "GroupByID",
    "NCPrefix",
    "NCSuffix",
    "OMgetActiveMachineGroup",
    "RunSetupSheetOnSelectedOpsWithoutUI",
    "SaveFile",
    "SetActiveMachine",
    "get_MainFrame",
    "has_db_changed",
    "list_manager",
    "m_fclose",
    "operator[]",
    "post_FT_command",
    "screen_to_bitmap_file",
    "set_db_unchanged",
    "tool_manager",
};

// The next calls that fail or raise, and the number of calls so far.
struct Faults {
    int failures = 0;
    int exceptions = 0;
    int raisingCall = 0; // the call that raises, from 1; 0 for none
    int calls = 0;
};

struct Registry {
    Lock lock;
    std::map<std::string, Faults, std::less<>> faults;
};

Registry& theRegistry()
{
    static Registry registry;
    return registry;
}

bool setCount(const std::string& operationName, int Faults::*count, int value)
{
    if (value < 0 || std::ranges::find(operationNames, operationName) == std::end(operationNames))
        return false;
    Registry& registry = theRegistry();
    const std::scoped_lock guard(registry.lock);
    registry.faults[operationName].*count = value;
    return true;
}

// Counts down; true if the count was positive.
bool countDown(int& calls)
{
    return calls > 0 && calls-- > 0;
}

} // namespace

Outcome takeOutcome(std::string_view operationName)
{
    Registry& registry = theRegistry();
    const std::scoped_lock guard(registry.lock);
    auto found = registry.faults.find(operationName);
    if (found == registry.faults.end())
        found = registry.faults.try_emplace(std::string(operationName)).first;
    Faults& faults = found->second;
    ++faults.calls;
    const bool fails = countDown(faults.failures);
    const bool isRaisingCall = faults.raisingCall == 1;
    countDown(faults.raisingCall);
    const bool raises = countDown(faults.exceptions) || isRaisingCall;
    if (raises)
        return Outcome::raises;
    return fails ? Outcome::fails : Outcome::works;
}

void raiseHostException()
{
    throw new HostException;
}

bool failNext(const std::string& operationName, int count)
{
    return setCount(operationName, &Faults::failures, count);
}

bool raiseNext(const std::string& operationName, int count)
{
    return setCount(operationName, &Faults::exceptions, count);
}

bool raiseAt(const std::string& operationName, int nth)
{
    return setCount(operationName, &Faults::raisingCall, nth);
}

int callsOf(const std::string& operationName)
{
    Registry& registry = theRegistry();
    const std::scoped_lock guard(registry.lock);
    const auto found = registry.faults.find(operationName);
    return found == registry.faults.end() ? 0 : found->second.calls;
}

std::vector<std::string> operations()
{
    return {std::begin(operationNames), std::end(operationNames)};
}

int undeletedExceptions()
{
    return HostException::alive;
}

} // namespace standin
