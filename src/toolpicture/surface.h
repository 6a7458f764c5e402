// What the tool picture is drawn on: the graphics objects of one picture, each closed with its
// owner.
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

// A bitmap with the memory context that draws on it. The context is declared last and so goes
// first: a bitmap that is still selected somewhere is not deleted.
struct PictureSurface {
    Bitmap bitmap;
    MemoryContext context;
};

// The whole screen's context; null when there is none to be had.
ScreenContext openScreenContext();

// A surface of this size, alike the screen's. Without a context when the system has no room for it
// or knows no bitmap of this size.
PictureSurface openSurface(const ScreenContext& screen, int width, int height);

// The surface's bitmap for itself.
Bitmap takeBitmap(PictureSurface surface);

// Fills the rectangle, its right column and bottom row left out, with the colour itself.
void fillSolidRect(HDC context, const RECT& area, COLORREF colour);

} // namespace torvapdm
