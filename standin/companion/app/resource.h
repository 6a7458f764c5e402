// Resource numbers and the version, for the resource script and the about window.
#pragma once

#define IDI_COMPANION 1

#define COMPANION_VERSION "1.0.0"
#define COMPANION_VERSION_NUMBERS 1, 0, 0, 0
