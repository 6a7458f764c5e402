#include "standin/companion/ui/layout.h"

#include <algorithm>
#include <cstdint>

namespace companion {
namespace {

constexpr int headerHeight = 58;
constexpr int margin = 14;
constexpr int gap = 10;
constexpr int titleHeight = 20;
constexpr int buttonHeight = 30;
constexpr int sendWidth = 140;
constexpr int buttonWidth = 104;

constexpr int leastWideWidth = 700;
constexpr int wideListHeight = 132;
constexpr int wideHostsWidth = 268;
constexpr int narrowLibraryHeight = 126;
constexpr int narrowHostsHeight = 66;
constexpr int versionsWidth = 272;
constexpr int mostVersionsHeight = 236;
constexpr int leastEventsHeight = 110;
constexpr int statusHeight = 28;

constexpr int leastWindowWidth = 520;
constexpr int mostWindowWidth = 760;
constexpr int usualHeight = 760;
constexpr int narrowHeight = 840;

Area bounded(int left, int top, int width, int height)
{
    return {left, top, std::max(width, 0), std::max(height, 0)};
}

int bottomOf(const Area& area)
{
    return area.top + area.height;
}

// Returns the rectangle of a list below its title.
Area listUnder(const Area& title, int height)
{
    return {title.left, bottomOf(title), title.width, height};
}

void placeWideLists(WindowLayout& layout, int clientWidth)
{
    const int top = headerHeight + gap;
    const int hostsLeft = clientWidth - margin - wideHostsWidth;
    layout.libraryTitle = bounded(margin, top, hostsLeft - gap - margin, titleHeight);
    layout.library = listUnder(layout.libraryTitle, wideListHeight);
    layout.hostsTitle = bounded(hostsLeft, top, wideHostsWidth, titleHeight);
    layout.hosts = listUnder(layout.hostsTitle, wideListHeight);
}

void placeNarrowLists(WindowLayout& layout, int clientWidth)
{
    const int width = clientWidth - 2 * margin;
    layout.libraryTitle = bounded(margin, headerHeight + gap, width, titleHeight);
    layout.library = listUnder(layout.libraryTitle, narrowLibraryHeight);
    layout.hostsTitle = bounded(margin, bottomOf(layout.library) + gap, width, titleHeight);
    layout.hosts = listUnder(layout.hostsTitle, narrowHostsHeight);
}

void placeButtons(WindowLayout& layout, int top)
{
    const int newFileLeft = margin + sendWidth + gap;
    layout.send = bounded(margin, top, sendWidth, buttonHeight);
    layout.newFile = bounded(newFileLeft, top, buttonWidth, buttonHeight);
    layout.checkIn = bounded(newFileLeft + buttonWidth + gap, top, buttonWidth, buttonHeight);
}

// Next to the buttons if there is space, else below them.
void placeHint(WindowLayout& layout, int clientWidth, bool isWide)
{
    const int right = layout.checkIn.left + layout.checkIn.width + gap;
    layout.hint = isWide
                      ? bounded(right, layout.send.top, clientWidth - margin - right, buttonHeight)
                      : bounded(margin, bottomOf(layout.send) + gap / 2, clientWidth - 2 * margin,
                                titleHeight);
}

// `bottom`: where the event list ends.
void placeVersions(WindowLayout& layout, int clientWidth, int bottom)
{
    const int top = bottomOf(layout.hint) + gap;
    const int left = bottom - top - 2 * titleHeight - gap; // for the two lists
    const int height = std::clamp(left - leastEventsHeight, 0, mostVersionsHeight);
    const int pictureLeft = margin + versionsWidth + gap;
    layout.versionsTitle = bounded(margin, top, versionsWidth, titleHeight);
    layout.versions = listUnder(layout.versionsTitle, height);
    layout.pictureTitle =
        bounded(pictureLeft, top, clientWidth - margin - pictureLeft, titleHeight);
    layout.picture = listUnder(layout.pictureTitle, height);
}

void placeEvents(WindowLayout& layout, int clientWidth, int bottom)
{
    layout.eventsTitle =
        bounded(margin, bottomOf(layout.versions) + gap, clientWidth - 2 * margin, titleHeight);
    const int height = bottom - bottomOf(layout.eventsTitle);
    layout.events = listUnder(layout.eventsTitle, std::max(height, 0));
}

} // namespace

WindowLayout layOutWindow(int clientWidth, int clientHeight)
{
    const bool isWide = clientWidth >= leastWideWidth;
    WindowLayout layout;
    layout.header = bounded(0, 0, clientWidth, headerHeight);
    if (isWide)
        placeWideLists(layout, clientWidth);
    else
        placeNarrowLists(layout, clientWidth);
    placeButtons(layout, bottomOf(layout.hosts) + gap);
    placeHint(layout, clientWidth, isWide);
    const int statusTop = std::max(clientHeight - statusHeight, 0);
    layout.status =
        bounded(margin, statusTop, clientWidth - 2 * margin, std::min(statusHeight, clientHeight));
    placeVersions(layout, clientWidth, statusTop);
    placeEvents(layout, clientWidth, statusTop);
    return layout;
}

Area fitInto(const Area& area, int pictureWidth, int pictureHeight)
{
    if (pictureWidth <= 0 || pictureHeight <= 0)
        return {area.left, area.top, 0, 0};
    const std::int64_t byWidth = std::int64_t{area.width} * pictureHeight;
    const std::int64_t byHeight = std::int64_t{area.height} * pictureWidth;
    const int width = byWidth <= byHeight ? area.width : static_cast<int>(byHeight / pictureHeight);
    const int height = byWidth <= byHeight ? static_cast<int>(byWidth / pictureWidth) : area.height;
    return {area.left + (area.width - width) / 2, area.top + (area.height - height) / 2, width,
            height};
}

Area placeWindow(const Area& workArea)
{
    const int width = std::clamp(workArea.width * 2 / 5,
                                 std::min(leastWindowWidth, workArea.width / 2), mostWindowWidth);
    const int height = width < leastWideWidth ? narrowHeight : usualHeight;
    return {workArea.left, workArea.top, width, std::min(height, workArea.height)};
}

} // namespace companion
