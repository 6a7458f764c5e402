// The host's programming interface, all of it. A build against the host's own development kit
// defines HOST_DEVELOPMENT_KIT as the kit's umbrella header; elsewhere the declarations of this
// folder take its place.
#pragma once

#ifdef HOST_DEVELOPMENT_KIT
#include HOST_DEVELOPMENT_KIT
#else
#include "host/mastercam.h"
#include "host/mccore.h"
#include "host/mcmachinedef.h"
#include "host/mcmill.h"
#endif
