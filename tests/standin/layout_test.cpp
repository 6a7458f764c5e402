#include "decisions/layout.h"

#include <gtest/gtest.h>

using namespace companion;

namespace {

std::vector<Rectangle> piecesOf(const WindowLayout& layout)
{
    return {layout.header, layout.libraryTitle, layout.library, layout.hostsTitle,
            layout.hosts,  layout.send,         layout.newFile, layout.checkIn,
            layout.hint,   layout.eventsTitle,  layout.events};
}

bool overlap(const Rectangle& a, const Rectangle& b)
{
    return a.left < b.left + b.width && b.left < a.left + a.width && a.top < b.top + b.height &&
           b.top < a.top + a.height;
}

bool isInside(const Rectangle& piece, int width, int height)
{
    return piece.left >= 0 && piece.top >= 0 && piece.left + piece.width <= width &&
           piece.top + piece.height <= height;
}

void expectOrdered(int width, int height)
{
    const std::vector<Rectangle> pieces = piecesOf(layOutWindow(width, height));
    for (size_t i = 0; i < pieces.size(); ++i) {
        EXPECT_TRUE(isInside(pieces[i], width, height)) << "piece " << i;
        EXPECT_GT(pieces[i].width * pieces[i].height, 0) << "piece " << i;
        for (size_t k = i + 1; k < pieces.size(); ++k)
            EXPECT_FALSE(overlap(pieces[i], pieces[k])) << "pieces " << i << " and " << k;
    }
}

} // namespace

TEST(WindowLayout, placesEveryPieceInsideAndApart)
{
    expectOrdered(760, 560);
    expectOrdered(1900, 1000);
    expectOrdered(560, 700);
}

TEST(WindowLayout, putsLibraryAndHostsSideBySideInAWideWindow)
{
    const WindowLayout wide = layOutWindow(760, 560);
    EXPECT_EQ(wide.library.top, wide.hosts.top);
    EXPECT_GT(wide.hosts.left, wide.library.left + wide.library.width);
}

TEST(WindowLayout, putsHostsUnderTheLibraryInANarrowWindow)
{
    const WindowLayout narrow = layOutWindow(560, 700);
    EXPECT_EQ(narrow.library.left, narrow.hosts.left);
    EXPECT_GT(narrow.hosts.top, narrow.library.top + narrow.library.height);
}

TEST(WindowLayout, givesTheEventsTheHeightThatIsLeft)
{
    const WindowLayout low = layOutWindow(760, 560);
    const WindowLayout high = layOutWindow(760, 660);
    EXPECT_EQ(high.events.height, low.events.height + 100);
    EXPECT_EQ(high.library.height, low.library.height);
}

TEST(WindowLayout, hasNoNegativeLengths)
{
    for (const int size : {0, 1, 50, 300, 700})
        for (const Rectangle& piece : piecesOf(layOutWindow(size, size / 2))) {
            EXPECT_GE(piece.width, 0) << "client area " << size;
            EXPECT_GE(piece.height, 0) << "client area " << size;
        }
}

TEST(WindowPlace, isTheRightLowerCornerOfTheWorkArea)
{
    const Rectangle place = placeWindow({10, 20, 1920, 1040});
    EXPECT_EQ(place.left + place.width, 10 + 1920);
    EXPECT_EQ(place.top + place.height, 20 + 1040);
    EXPECT_EQ(place.width, 760);
    EXPECT_EQ(place.height, 560);
}

TEST(WindowPlace, leavesAHostItsRoomByBeingNarrowAndHigher)
{
    const Rectangle place = placeWindow({0, 0, 1600, 900});
    EXPECT_EQ(place.left, 1000);
    EXPECT_EQ(place.width, 600);
    EXPECT_GT(place.height, 560);
}

TEST(WindowPlace, isNeverLargerThanTheWorkArea)
{
    for (const Rectangle& area : {Rectangle{0, 0, 640, 480}, Rectangle{5, 5, 1550, 300}}) {
        const Rectangle place = placeWindow(area);
        EXPECT_LE(place.width, area.width);
        EXPECT_LE(place.height, area.height);
        EXPECT_GE(place.left, area.left);
        EXPECT_GE(place.top, area.top);
    }
}
