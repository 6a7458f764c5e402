// What the windows have in common that show what a host's line announced: a band with two lines of
// text, under it whatever the kind of window holds. They come without taking the keyboard from the
// host, block nobody, and close with their owner or the escape key. There is one of each kind.
#pragma once

#include "standin/companion/ui/look.h"

#include <memory>
#include <string>
#include <windows.h>

namespace companion {

inline constexpr int bandHeight = 58;
inline constexpr int margin = 14;
inline constexpr int titleHeight = 24;

// All its functions are called on the thread of the window.
class NoticeWindow {
public:
    virtual ~NoticeWindow() = default;

    HWND window = nullptr;
    Look look;
    std::wstring heading, details; // in the band

    // Creates the child windows, which get the font of the look.
    virtual void createChildren() = 0;
    // Moves them to their places in a client area of that size.
    virtual void placeChildren(int clientWidth, int clientHeight) = 0;
    // Draws on the background under the band.
    virtual void paintBody(HDC context, int clientWidth, int clientHeight) const = 0;
    // Another row of the list with this control id may be the selected one.
    virtual void choiceChanged(UINT_PTR /*list*/) {}
};

using MakeNoticeWindow = std::unique_ptr<NoticeWindow> (*)();

// The calling thread's window of the class, or a new one, not yet shown, that has what `make`
// gives. Null when it cannot be created.
NoticeWindow* openNoticeWindow(HWND owner, const wchar_t* windowClass, MakeNoticeWindow make);

// Gives the window its title and shows it, with all that has changed in it.
void showNoticeWindow(const NoticeWindow& notice, const std::wstring& title);

// For placeChildren().
void moveTo(HWND window, const Rectangle& place);

// For paintBody(): a title above a list.
void drawTitle(const NoticeWindow& notice, HDC context, const Rectangle& place,
               std::wstring_view text);

} // namespace companion
