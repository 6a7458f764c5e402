// The program's version, for its resources and its about window.
#pragma once

#define COMPANION_VERSION "1.0.0"
#define COMPANION_VERSION_NUMBERS 1, 0, 0, 0
