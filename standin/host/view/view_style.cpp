#include "view/view_style.h"

#include <cstdlib>
#include <iterator>

namespace standin {

namespace {

HFONT createFont(int height, int weight, const wchar_t* face)
{
    return CreateFontW(-height, 0, 0, 0, weight, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                       OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, ANTIALIASED_QUALITY,
                       VARIABLE_PITCH | FF_SWISS, face);
}

bool isInstalled(const wchar_t* face)
{
    const HDC screen = GetDC(nullptr);
    const HFONT font = createFont(12, FW_NORMAL, face);
    const HGDIOBJ former = SelectObject(screen, font);
    wchar_t found[LF_FACESIZE] = L"";
    GetTextFaceW(screen, LF_FACESIZE, found);
    SelectObject(screen, former);
    DeleteObject(font);
    ReleaseDC(nullptr, screen);
    return std::wstring(found) == face;
}

// The first installed one. Windows' own substitute can be hard to read.
const wchar_t* readableFace()
{
    for (const wchar_t* face : {L"Segoe UI", L"DejaVu Sans", L"Liberation Sans", L"Tahoma"})
        if (isInstalled(face))
            return face;
    return L"Arial";
}

// Created once per process.
HFONT fontOf(TextFont font)
{
    static const wchar_t* const face = readableFace();
    static const HFONT fonts[] = {
        createFont(13, FW_NORMAL, face),
        createFont(13, FW_BOLD, face),
        createFont(19, FW_BOLD, face),
        createFont(11, FW_NORMAL, face),
    };
    return fonts[static_cast<size_t>(font)];
}

} // namespace

COLORREF toolColour(int toolNumber)
{
    static constexpr COLORREF palette[] = {
        RGB(0x2F, 0x7E, 0xC4), RGB(0xD9, 0x6B, 0x1E), RGB(0x2B, 0x9A, 0x62), RGB(0xC2, 0x3B, 0x57),
        RGB(0x7A, 0x56, 0xC2), RGB(0x0F, 0x96, 0xA3), RGB(0xB0, 0x86, 0x0B), RGB(0x8A, 0x4B, 0x2D),
    };
    const unsigned place = static_cast<unsigned>(toolNumber) - 1;
    return palette[place % std::size(palette)];
}

void drawLine(HDC context, const std::wstring& text, RECT area, TextFont font, COLORREF colour,
              UINT alignment)
{
    const HGDIOBJ former = SelectObject(context, fontOf(font));
    SetBkMode(context, TRANSPARENT);
    SetTextColor(context, colour);
    DrawTextW(context, text.c_str(), static_cast<int>(text.size()), &area,
              alignment | DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
    SelectObject(context, former);
}

} // namespace standin
