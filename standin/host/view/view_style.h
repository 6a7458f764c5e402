// The view's colours, fonts and text output.
#pragma once

#include <string>
#include <windows.h>

namespace standin {

namespace colours {
constexpr COLORREF panel = RGB(0xFF, 0xFF, 0xFF);
constexpr COLORREF paper = RGB(0xF6, 0xF8, 0xFA);
constexpr COLORREF rule = RGB(0xD9, 0xDF, 0xE5);
constexpr COLORREF grid = RGB(0xE6, 0xEA, 0xEF);
constexpr COLORREF axis = RGB(0xB4, 0xBE, 0xC8);
constexpr COLORREF stock = RGB(0xEA, 0xEE, 0xE4);
constexpr COLORREF stockEdge = RGB(0x9A, 0xA8, 0x8C);
constexpr COLORREF geometry = RGB(0x22, 0x2D, 0x3A);
constexpr COLORREF text = RGB(0x1B, 0x25, 0x30);
constexpr COLORREF quietText = RGB(0x66, 0x72, 0x7F);
constexpr COLORREF accent = RGB(0x1A, 0x5F, 0x9E);
constexpr COLORREF heading = RGB(0xEE, 0xF2, 0xF6);
constexpr COLORREF warning = RGB(0xB4, 0x4A, 0x12);
} // namespace colours

// The colour of a tool's paths and of its row in the list.
COLORREF toolColour(int toolNumber);

enum class TextFont { plain, bold, title, small };

// Draws one line of text, vertically centred, with an ellipsis if it is too long. `alignment` is
// DT_LEFT, DT_RIGHT or DT_CENTER.
void drawLine(HDC context, const std::wstring& text, RECT area, TextFont font, COLORREF colour,
              UINT alignment = DT_LEFT);

} // namespace standin
