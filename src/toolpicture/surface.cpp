#include "toolpicture/surface.h"

#include <utility>

namespace torvapdm {

ScreenContext openScreenContext()
{
    return ScreenContext(GetDC(nullptr));
}

PictureSurface openSurface(const ScreenContext& screen, int width, int height)
{
    PictureSurface surface;
    surface.bitmap.reset(CreateCompatibleBitmap(screen.get(), width, height));
    surface.context.reset(CreateCompatibleDC(screen.get()));
    if (!surface.bitmap || !SelectObject(surface.context.get(), surface.bitmap.get()))
        surface.context.reset();
    return surface;
}

Bitmap takeBitmap(PictureSurface surface)
{
    surface.context.reset();
    return std::move(surface.bitmap);
}

// As the background of an empty text, which needs no brush.
void fillSolidRect(HDC context, const RECT& area, COLORREF colour)
{
    SetBkColor(context, colour);
    ExtTextOutW(context, 0, 0, ETO_OPAQUE, &area, nullptr, 0, nullptr);
}

} // namespace torvapdm
