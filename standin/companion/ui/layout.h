// Where the main window and its pieces stand. All lengths are pixels.
#pragma once

namespace companion {

struct Rectangle {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
};

struct WindowLayout {
    Rectangle header; // the coloured band across the top
    Rectangle libraryTitle, library;
    Rectangle hostsTitle, hosts;
    Rectangle send, newFile, checkIn; // buttons
    Rectangle hint;                   // what the buttons would do
    Rectangle versionsTitle, versions, pictureTitle, picture;
    Rectangle eventsTitle, events;
};

// The pieces of a client area of that size: in a wide one library and hosts stand side by side, in
// a narrow one above each other. Beneath stand the versions and the picture of one, side by side.
// The list of events takes the height that is left; in a low area versions and picture make room
// for it. A client area too small for everything gives pieces of width or height 0, never a
// negative one.
WindowLayout layOutWindow(int clientWidth, int clientHeight);

// The largest place in the middle of the area that has the proportions of a picture of that size.
// Of width and height 0 when the picture or the area is.
Rectangle fitInto(const Rectangle& area, int pictureWidth, int pictureHeight);

// The window at the right and bottom of the work area. Where a screen has room for it, it leaves
// 1000 pixels at the left free for a host's window, if need be by being narrow and higher. It is
// never larger than the work area.
Rectangle placeWindow(const Rectangle& workArea);

} // namespace companion
