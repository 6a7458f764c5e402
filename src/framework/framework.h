// The application framework: Visual C++ brings its own, every other compiler gets the classes of
// this folder, which carry the framework's names and behave alike for what the add-in uses.
// Nothing above this header knows which of the two is in use.
#pragma once

#if __has_include(<afxwin.h>)
#include <afxcoll.h>
#include <afxwin.h>

// The image class's headers count on names that NOMINMAX takes from them.
#include <algorithm>
namespace Gdiplus {
using std::max;
using std::min;
} // namespace Gdiplus
#include <atlimage.h>
#else
#include "framework/exceptions.h"
#include "framework/image.h"
#include "framework/objects.h"
#include "framework/strings.h"
#include "framework/threads.h"
#include "framework/windows.h"
#endif
