// Positions of the main window and its parts. All lengths are pixels.
#pragma once

namespace companion {

struct Area {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
};

struct WindowLayout {
    Area header; // the coloured bar at the top
    Area libraryTitle, library;
    Area hostsTitle, hosts;
    Area send, newFile, checkIn; // buttons
    Area hint;                   // what the buttons will do
    Area versionsTitle, versions, pictureTitle, picture;
    Area eventsTitle, events;
    Area status; // the line at the bottom
};

// The parts of a client area of that size. In a wide one, library and hosts are side by side; in a
// narrow one, below each other. Below them are the versions and a picture, side by side. The event
// list gets the remaining height, down to the status line; in a low area versions and picture
// become smaller for it. If the client area is too small, parts get width or height 0, never
// negative values.
WindowLayout layOutWindow(int clientWidth, int clientHeight);

// The largest centred rectangle in the area with the proportions of a picture of that size. Width
// and height are 0 when the picture or the area is empty.
Area fitInto(const Area& area, int pictureWidth, int pictureHeight);

// The window at the left of the work area: two fifths of its width, but 520 to 760 pixels and at
// most half of it. The host's window opens next to it. It is never larger than the work area.
Area placeWindow(const Area& workArea);

} // namespace companion
