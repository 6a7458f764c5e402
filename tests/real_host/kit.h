// In place of the development kit's umbrella header: the project's own declarations.
#pragma once
#include "host/mastercam.h"
#include "host/mccore.h"
#include "host/mcmachinedef.h"
#include "host/mcmill.h"
