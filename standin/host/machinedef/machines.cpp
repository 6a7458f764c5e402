// The host operations of MCMachineDef.dll.
#include "host/mcmachinedef.h"

#include "core/document.h"
#include "core/host_call.h"

using namespace standin;

bool SetActiveMachine(const wchar_t* path)
{
    return act(
        "SetActiveMachine", callLine("SetActiveMachine", path), false,
        [&] {
            if (!path || !*path)
                return false;
            setHostSetting(&HostSettings::activeMachine, path);
            return true;
        });
}

TpGroup* OMgetActiveMachineGroup(bool flag)
{
    return act(
        "OMgetActiveMachineGroup", callLine("OMgetActiveMachineGroup", flag),
        static_cast<TpGroup*>(nullptr),
        []() -> TpGroup* {
            const std::shared_ptr<Part> part = openPart();
            return part->groups.empty() ? nullptr : &part->groups.front();
        });
}
