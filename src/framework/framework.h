// The application framework: Visual C++ brings its own, every other compiler gets the classes of
// this folder, which carry the framework's names and behave alike for what the add-in uses.
// Nothing above this header knows which of the two is in use.
#pragma once

#if __has_include(<afxwin.h>)
#include <afxcoll.h>
#include <afxwin.h>
#else
#include "framework/exceptions.h"
#include "framework/objects.h"
#include "framework/strings.h"
#include "framework/threads.h"
#include "framework/windows.h"
#endif
