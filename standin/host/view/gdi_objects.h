// Owners of pens, brushes and fonts.
#pragma once

#include <windows.h>

namespace standin {

// Selects a new object into a device context; the destructor restores the previous one and deletes
// the new one.
class SelectedObject {
public:
    SelectedObject(HDC context, HGDIOBJ object)
        : context_(context), object_(object), former_(SelectObject(context, object))
    {
    }
    ~SelectedObject()
    {
        SelectObject(context_, former_);
        DeleteObject(object_);
    }
    SelectedObject(const SelectedObject&) = delete;
    SelectedObject& operator=(const SelectedObject&) = delete;

private:
    HDC context_;
    HGDIOBJ object_;
    HGDIOBJ former_;
};

inline void fillArea(HDC context, const RECT& area, COLORREF colour)
{
    const HBRUSH brush = CreateSolidBrush(colour);
    FillRect(context, &area, brush);
    DeleteObject(brush);
}

} // namespace standin
