// The framework's window classes: thin owners of a window handle.
#pragma once

#include "framework/objects.h"

class CWnd : public CCmdTarget {
public:
    // The window's handle, or null; may be called on a null pointer's behalf only through a check.
    HWND GetSafeHwnd() const { return m_hWnd; }

    HWND m_hWnd = nullptr;
};

class CFrameWnd : public CWnd {};
