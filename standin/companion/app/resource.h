// Resource numbers.
#pragma once

#define IDI_COMPANION 1
