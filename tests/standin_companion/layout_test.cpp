#include "standin/companion/ui/layout.h"
#include "standin/companion/ui/picture_scale.h"

#include <gtest/gtest.h>

using namespace companion;

namespace {

std::vector<Area> piecesOf(const WindowLayout& layout)
{
    return {layout.header,  layout.libraryTitle,  layout.library,  layout.hostsTitle,
            layout.hosts,   layout.send,          layout.newFile,  layout.checkIn,
            layout.hint,    layout.versionsTitle, layout.versions, layout.pictureTitle,
            layout.picture, layout.eventsTitle,   layout.events,   layout.status};
}

bool overlap(const Area& a, const Area& b)
{
    return a.left < b.left + b.width && b.left < a.left + a.width && a.top < b.top + b.height &&
           b.top < a.top + a.height;
}

bool isInside(const Area& piece, int width, int height)
{
    return piece.left >= 0 && piece.top >= 0 && piece.left + piece.width <= width &&
           piece.top + piece.height <= height;
}

void expectOrdered(int width, int height)
{
    const std::vector<Area> pieces = piecesOf(layOutWindow(width, height));
    for (size_t i = 0; i < pieces.size(); ++i) {
        EXPECT_TRUE(isInside(pieces[i], width, height)) << "piece " << i;
        EXPECT_GT(pieces[i].width * pieces[i].height, 0) << "piece " << i;
        for (size_t k = i + 1; k < pieces.size(); ++k)
            EXPECT_FALSE(overlap(pieces[i], pieces[k])) << "pieces " << i << " and " << k;
    }
}

} // namespace

TEST(WindowLayout, placesPartsWithoutOverlap)
{
    expectOrdered(752, 724);
    expectOrdered(1900, 1000);
    expectOrdered(592, 804);
    expectOrdered(752, 560);
    expectOrdered(592, 640);
}

TEST(WindowLayout, hasTwoColumnsInAWideWindow)
{
    const WindowLayout wide = layOutWindow(760, 560);
    EXPECT_EQ(wide.library.top, wide.hosts.top);
    EXPECT_GT(wide.hosts.left, wide.library.left + wide.library.width);
}

TEST(WindowLayout, hasOneColumnInANarrowWindow)
{
    const WindowLayout narrow = layOutWindow(560, 700);
    EXPECT_EQ(narrow.library.left, narrow.hosts.left);
    EXPECT_GT(narrow.hosts.top, narrow.library.top + narrow.library.height);
}

TEST(WindowLayout, givesEventsTheRemainingHeight)
{
    const WindowLayout low = layOutWindow(760, 800);
    const WindowLayout high = layOutWindow(760, 900);
    EXPECT_EQ(high.events.height, low.events.height + 100);
    EXPECT_EQ(high.library.height, low.library.height);
    EXPECT_EQ(high.picture.height, low.picture.height);
}

TEST(WindowLayout, shrinksThePictureInALowWindow)
{
    const WindowLayout low = layOutWindow(760, 560);
    const WindowLayout lower = layOutWindow(760, 520);
    EXPECT_EQ(lower.events.height, low.events.height);
    EXPECT_EQ(lower.picture.height, low.picture.height - 40);
    EXPECT_EQ(lower.versions.height, lower.picture.height);
}

TEST(WindowLayout, putsThePictureNextToTheVersions)
{
    for (const int width : {592, 752}) {
        const WindowLayout layout = layOutWindow(width, 800);
        EXPECT_EQ(layout.picture.top, layout.versions.top);
        EXPECT_GT(layout.picture.left, layout.versions.left + layout.versions.width);
        EXPECT_EQ(layout.pictureTitle.left, layout.picture.left);
    }
}

TEST(FittedPicture, keepsItsProportions)
{
    const auto expectPlace = [](const Area& place, int left, int top, int width, int height) {
        EXPECT_EQ(place.left, left);
        EXPECT_EQ(place.top, top);
        EXPECT_EQ(place.width, width);
        EXPECT_EQ(place.height, height);
    };
    expectPlace(fitInto({10, 20, 400, 200}, 1600, 1600), 110, 20, 200, 200);
    expectPlace(fitInto({10, 20, 400, 200}, 1600, 400), 10, 70, 400, 100);
    expectPlace(fitInto({10, 20, 400, 200}, 2, 1), 10, 20, 400, 200);
    expectPlace(fitInto({10, 20, 400, 200}, 0, 5), 10, 20, 0, 0);
    expectPlace(fitInto({10, 20, 0, 200}, 5, 5), 10, 120, 0, 0);
    expectPlace(fitInto({0, 0, 30000, 30000}, 2000000, 1000000), 0, 7500, 30000, 15000);
}

TEST(WindowLayout, hasNoNegativeLengths)
{
    for (const int size : {0, 1, 50, 300, 700})
        for (const Area& piece : piecesOf(layOutWindow(size, size / 2))) {
            EXPECT_GE(piece.width, 0) << "client area " << size;
            EXPECT_GE(piece.height, 0) << "client area " << size;
        }
}

TEST(ScaledPicture, averagesPixels)
{
    const peer::Pixels picture{4,
                               2,
                               {0x000000, 0x0000FF, 0x00FF00, 0x00FF00, //
                                0x000000, 0x0000FF, 0xFF0000, 0xFF0002}};
    const peer::Pixels half = scaled(picture, 2, 1);
    EXPECT_EQ(half.width, 2);
    EXPECT_EQ(half.height, 1);
    EXPECT_EQ(half.values, (std::vector<std::uint32_t>{0x00007F, 0x7F7F00}));
}

TEST(ScaledPicture, usesEveryPixelOnceInUnevenSizes)
{
    const peer::Pixels picture{3, 1, {3, 6, 9}};
    EXPECT_EQ(scaled(picture, 2, 1).values, (std::vector<std::uint32_t>{3, 7}));
    EXPECT_EQ(scaled(picture, 3, 1).values, picture.values);
}

TEST(ScaledPicture, repeatsPixelsWhenLarger)
{
    EXPECT_EQ(scaled({2, 1, {5, 7}}, 4, 2).values,
              (std::vector<std::uint32_t>{5, 5, 7, 7, 5, 5, 7, 7}));
}

TEST(ScaledPicture, isEmptyForAnEmptySize)
{
    EXPECT_TRUE(scaled({2, 1, {5, 7}}, 0, 5).values.empty());
    EXPECT_TRUE(scaled({}, 5, 5).values.empty());
}

TEST(WindowPlace, isTheLeftOfTheWorkArea)
{
    const auto expectPlace = [](const Area& workArea, int width, int height) {
        const Area place = placeWindow(workArea);
        EXPECT_EQ(place.left, workArea.left);
        EXPECT_EQ(place.top, workArea.top);
        EXPECT_EQ(place.width, width);
        EXPECT_EQ(place.height, height);
    };
    expectPlace({10, 20, 1920, 1040}, 760, 760);
    expectPlace({0, 0, 1600, 900}, 640, 840);
    expectPlace({0, 0, 1366, 728}, 546, 728);
    expectPlace({0, 0, 1024, 700}, 512, 700);
}
