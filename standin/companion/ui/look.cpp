#include "standin/companion/ui/look.h"

namespace companion {
namespace {

int CALLBACK noteFound(const LOGFONTW*, const TEXTMETRICW*, DWORD, LPARAM found)
{
    *reinterpret_cast<bool*>(found) = true;
    return 0;
}

bool isInstalled(const wchar_t* face)
{
    bool isFound = false;
    HDC screen = GetDC(nullptr);
    EnumFontFamiliesW(screen, face, noteFound, reinterpret_cast<LPARAM>(&isFound));
    ReleaseDC(nullptr, screen);
    return isFound;
}

const wchar_t* chooseFace()
{
    for (const wchar_t* face : {L"Segoe UI", L"DejaVu Sans", L"Tahoma"})
        if (isInstalled(face))
            return face;
    return L"";
}

OwnObject makeFont(const wchar_t* face, int height, int weight)
{
    return OwnObject(CreateFontW(-height, 0, 0, 0, weight, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                                 OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, CLEARTYPE_QUALITY,
                                 DEFAULT_PITCH | FF_SWISS, face));
}

RECT toRect(const Area& area)
{
    return {area.left, area.top, area.left + area.width, area.top + area.height};
}

} // namespace

Look makeLook()
{
    const wchar_t* face = chooseFace();
    Look look;
    look.text = makeFont(face, 12, FW_NORMAL);
    look.title = makeFont(face, 12, FW_BOLD);
    look.product = makeFont(face, 21, FW_BOLD);
    look.background = OwnObject(CreateSolidBrush(backgroundColour));
    return look;
}

void moveTo(HWND window, const Area& place)
{
    SetWindowPos(window, nullptr, place.left, place.top, place.width, place.height,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

void fillArea(HDC context, const Area& area, COLORREF colour)
{
    const RECT rectangle = toRect(area);
    const OwnObject brush(CreateSolidBrush(colour));
    FillRect(context, &rectangle, static_cast<HBRUSH>(brush.get()));
}

void drawLine(HDC context, const Area& area, std::wstring_view text, HGDIOBJ font, COLORREF colour,
              UINT format)
{
    RECT rectangle = toRect(area);
    const HGDIOBJ earlierFont = SelectObject(context, font);
    SetTextColor(context, colour);
    SetBkMode(context, TRANSPARENT);
    DrawTextW(context, text.data(), static_cast<int>(text.size()), &rectangle,
              format | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
    SelectObject(context, earlierFont);
}

} // namespace companion
