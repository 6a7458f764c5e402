#include "bench/graphics_calls.h"

#include "support/system_calls.h"

namespace bench {

namespace {

using Kind = GraphicsCall::Kind;

GraphicsCalls* recording = nullptr;
COLORREF background = 0;

void note(Kind kind, const RECT& area, COLORREF colour = 0)
{
    recording->calls.push_back({kind, colour, area});
}

void noteArc(Kind kind, const RECT& box, const RECT& ends)
{
    note(kind, box);
    recording->arcEnds.push_back(ends);
}

template <class Function>
Function* systems(Function* function, const char* name)
{
    return testing_support::systems(function, name, L"gdi32.dll");
}

COLORREF WINAPI recordSetBkColor(HDC context, COLORREF colour)
{
    static const auto real = systems(&recordSetBkColor, "SetBkColor");
    background = colour;
    return real(context, colour);
}

BOOL WINAPI recordExtTextOut(HDC context, int x, int y, UINT options, const RECT* area,
                             LPCWSTR text, UINT length, const INT* distances)
{
    static const auto real = systems(&recordExtTextOut, "ExtTextOutW");
    note(Kind::fill, *area, background);
    return real(context, x, y, options, area, text, length, distances);
}

COLORREF WINAPI recordGetPixel(HDC context, int x, int y)
{
    static const auto real = systems(&recordGetPixel, "GetPixel");
    note(Kind::getPixel, {x, y, 0, 0});
    return real(context, x, y);
}

BOOL WINAPI recordMoveTo(HDC context, int x, int y, LPPOINT former)
{
    static const auto real = systems(&recordMoveTo, "MoveToEx");
    note(Kind::moveTo, {x, y, 0, 0});
    return real(context, x, y, former);
}

BOOL WINAPI recordLineTo(HDC context, int x, int y)
{
    static const auto real = systems(&recordLineTo, "LineTo");
    note(Kind::lineTo, {x, y, 0, 0});
    return real(context, x, y);
}

BOOL WINAPI recordArcTo(HDC context, int left, int top, int right, int bottom, int startX,
                        int startY, int endX, int endY)
{
    static const auto real = systems(&recordArcTo, "ArcTo");
    noteArc(Kind::arcTo, {left, top, right, bottom}, {startX, startY, endX, endY});
    return real(context, left, top, right, bottom, startX, startY, endX, endY);
}

BOOL WINAPI recordArc(HDC context, int left, int top, int right, int bottom, int startX, int startY,
                      int endX, int endY)
{
    static const auto real = systems(&recordArc, "Arc");
    noteArc(Kind::arc, {left, top, right, bottom}, {startX, startY, endX, endY});
    return real(context, left, top, right, bottom, startX, startY, endX, endY);
}

// Redirects the program's calls of the system function to the recorder, or back.
template <class Function>
void lead(Function* recorder, const char* name, bool toRecorder)
{
    Function* const real = systems(recorder, name);
    standin::redirectImports(GetModuleHandleW(nullptr), toRecorder ? real : recorder,
                             toRecorder ? recorder : real);
}

void leadAll(bool toRecorders)
{
    lead(recordSetBkColor, "SetBkColor", toRecorders);
    lead(recordExtTextOut, "ExtTextOutW", toRecorders);
    lead(recordGetPixel, "GetPixel", toRecorders);
    lead(recordMoveTo, "MoveToEx", toRecorders);
    lead(recordLineTo, "LineTo", toRecorders);
    lead(recordArcTo, "ArcTo", toRecorders);
    lead(recordArc, "Arc", toRecorders);
}

void repeat(HDC context, const GraphicsCall& call, const RECT*& ends)
{
    const RECT& area = call.area;
    switch (call.kind) {
    case Kind::fill:
        SetBkColor(context, call.colour);
        ExtTextOutW(context, 0, 0, ETO_OPAQUE, &area, nullptr, 0, nullptr);
        break;
    case Kind::getPixel:
        GetPixel(context, area.left, area.top);
        break;
    case Kind::moveTo:
        MoveToEx(context, area.left, area.top, nullptr);
        break;
    case Kind::lineTo:
        LineTo(context, area.left, area.top);
        break;
    case Kind::arcTo:
        ArcTo(context, area.left, area.top, area.right, area.bottom, ends->left, ends->top,
              ends->right, ends->bottom);
        ++ends;
        break;
    case Kind::arc:
        Arc(context, area.left, area.top, area.right, area.bottom, ends->left, ends->top,
            ends->right, ends->bottom);
        ++ends;
        break;
    }
}

} // namespace

GraphicsCalls recordGraphics(const Work& work)
{
    GraphicsCalls recorded;
    recording = &recorded;
    leadAll(true);
    work();
    leadAll(false);
    recording = nullptr;
    return recorded;
}

void repeatGraphics(HDC context, const GraphicsCalls& recorded)
{
    const RECT* ends = recorded.arcEnds.data();
    for (const GraphicsCall& call : recorded.calls)
        repeat(context, call, ends);
}

} // namespace bench
