// The graphics objects that a tool picture is drawn with, and their owners.
#pragma once

#include "framework/framework.h"

#include <memory>
#include <type_traits>

namespace torvapdm {

struct ScreenContextCloser {
    void operator()(HDC context) const { ReleaseDC(nullptr, context); }
};

struct MemoryContextCloser {
    void operator()(HDC context) const { DeleteDC(context); }
};

struct GraphicsObjectCloser {
    void operator()(HGDIOBJ object) const { DeleteObject(object); }
};

template <class Handle, class Closer>
using GraphicsHandle = std::unique_ptr<std::remove_pointer_t<Handle>, Closer>;

using ScreenContext = GraphicsHandle<HDC, ScreenContextCloser>;
using MemoryContext = GraphicsHandle<HDC, MemoryContextCloser>;
using Bitmap = GraphicsHandle<HBITMAP, GraphicsObjectCloser>;
using Pen = GraphicsHandle<HPEN, GraphicsObjectCloser>;

// A bitmap and the memory context that draws on it. The context is declared last so that it is
// destroyed first: a bitmap that is still selected cannot be deleted.
struct PictureSurface {
    Bitmap bitmap;
    MemoryContext context;
};

// The screen's context; null on failure.
ScreenContext openScreenContext();

// A surface of this size, compatible with the screen; without a context on failure.
PictureSurface openSurface(const ScreenContext& screen, int width, int height);

// Returns the surface's bitmap after destroying its context.
Bitmap takeBitmap(PictureSurface surface);

// Fills the rectangle, without its right column and bottom row, with exactly this colour.
void fillSolidRect(HDC context, const RECT& area, COLORREF colour);

} // namespace torvapdm
