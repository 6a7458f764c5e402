// The application framework. Visual C++ has its own; for other compilers this directory declares
// the classes that the add-in uses, with the framework's names and behaviour. Code that includes
// this header does not depend on which of the two is used.
#pragma once

#if __has_include(<afxwin.h>)
#include <afxcoll.h>
#include <afxwin.h>

// The image class's headers need OLE, which WIN32_LEAN_AND_MEAN removes from windows.h, and min and
// max, which NOMINMAX removes.
#include <algorithm>
#include <objbase.h>
#include <objidl.h>
namespace Gdiplus {
using std::max;
using std::min;
} // namespace Gdiplus
#include <atlimage.h>
#else
#include "framework/image.h"
#include "framework/objects.h"
#include "framework/strings.h"
#include "framework/threads.h"
#endif
