// Base of the windows that show what a notice announced: a bar with two lines of text, and below it
// the content of each kind of window. They open without taking the keyboard focus from the host,
// are not modal, and close with their owner or the Escape key. There is one window of each kind.
#pragma once

#include "standin/companion/ui/look.h"

#include <memory>
#include <string>
#include <windows.h>

namespace companion {

inline constexpr int bandHeight = 58;
inline constexpr int margin = 14;
inline constexpr int titleHeight = 24;

// All functions are called on the thread of the window.
class NoticeWindow {
public:
    virtual ~NoticeWindow() = default;

    HWND window = nullptr;
    Look look;
    std::wstring heading, details; // in the bar

    // Creates the child windows, which get the font of the look.
    virtual void createChildren() = 0;
    // Moves them to their positions in a client area of that size.
    virtual void placeChildren(int clientWidth, int clientHeight) = 0;
    // Draws on the background below the bar.
    virtual void paintBody(HDC context, int clientWidth, int clientHeight) const = 0;
    // The selected row of the list with this control id may have changed.
    virtual void choiceChanged(UINT_PTR /*list*/) {}
};

using MakeNoticeWindow = std::unique_ptr<NoticeWindow> (*)();

// The window of that class on the calling thread, or a new one, not yet shown, from `make`. Null
// when it cannot be created.
NoticeWindow* openNoticeWindow(HWND owner, const wchar_t* windowClass, MakeNoticeWindow make);

// Sets the title and shows the window with its current content.
void showNoticeWindow(const NoticeWindow& notice, const std::wstring& title);

// For paintBody(): a title above a list.
void drawTitle(const NoticeWindow& notice, HDC context, const Area& place, std::wstring_view text);

} // namespace companion
