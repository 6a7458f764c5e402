// MCMachineDef.dll: machine definitions and machine groups.
//
// Both may raise the framework's exception and run on the host's user-interface thread.
#pragma once

#include "framework/framework.h"
#include "host/import.h"
#include "host/records.h"

// Makes the machine definition in this file the active machine; false when the host rejects it.
MCMACHINEDEF_API bool SetActiveMachine(const wchar_t* path);

// The active machine group, owned by the host, or null.
MCMACHINEDEF_API TpGroup* OMgetActiveMachineGroup(bool flag);
