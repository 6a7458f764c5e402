// Fonts and colours of the windows, and placing and painting by rectangles.
#pragma once

#include "standin/companion/ui/layout.h"

#include <memory>
#include <string_view>
#include <windows.h>

namespace companion {

struct ObjectDeleter {
    using pointer = HGDIOBJ;
    void operator()(HGDIOBJ object) const { DeleteObject(object); }
};
using OwnObject = std::unique_ptr<void, ObjectDeleter>;

inline constexpr COLORREF backgroundColour = RGB(244, 246, 249);
inline constexpr COLORREF headerColour = RGB(22, 50, 79);
inline constexpr COLORREF accentColour = RGB(240, 130, 40);
inline constexpr COLORREF headerTextColour = RGB(255, 255, 255);
inline constexpr COLORREF faintHeaderTextColour = RGB(168, 190, 212);
inline constexpr COLORREF titleColour = RGB(22, 50, 79);
inline constexpr COLORREF selectionColour = RGB(205, 224, 243);

// Exists as long as the window.
struct Look {
    OwnObject text, title, product; // fonts
    OwnObject background;           // brush
};

Look makeLook();

// Moves the window within its parent, without activating it.
void moveTo(HWND window, const Area& place);

// Fills the rectangle with a colour.
void fillArea(HDC context, const Area& area, COLORREF colour);

// Draws one line of text into the rectangle, shortened with an ellipsis if it is too long.
// `format`: DT_ flags for its alignment.
void drawLine(HDC context, const Area& area, std::wstring_view text, HGDIOBJ font, COLORREF colour,
              UINT format);

} // namespace companion
