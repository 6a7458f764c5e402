// libc++ includes this for FlsAlloc; Wine declares it with the rest of the API.
#pragma once
#include <windows.h>
