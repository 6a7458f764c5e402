// Tool pictures. The bare calls are the add-in's own drawing calls, recorded earlier, on surfaces
// of the same sizes, and the same bytes saved. The difference is the add-in's computation.
#include "bench/graphics_calls.h"
#include "bench/rows.h"
#include "bench/surroundings.h"
#include "support/bytes.h"
#include "toolpicture/picture.h"
#include "companion/installation.h"

#include <cstring>

namespace bench {

namespace {

constexpr double limit = 1.15;
constexpr int imageId = 17;

struct Picture {
    int width;
    int height;
    size_t rounds;
    size_t calls;
};

constexpr Picture pictures[] = {{100, 200, 41, 4}, {400, 800, 21, 1}, {1000, 2000, 7, 1}};

// An end mill with rounded corners: cap, shank, shoulder, flutes, lines and arcs.
void drawOurs(const Picture& picture)
{
    torvapdm::drawTool({.width = static_cast<std::uint32_t>(picture.width),
                        .height = static_cast<std::uint32_t>(picture.height),
                        .toolType = 2,
                        .diameter = 20,
                        .cornerRadius = 4,
                        .tipAngle = 0,
                        .fluteLength = 26,
                        .shoulderLength = 42,
                        .overallLength = 80,
                        .shankDiameter = 16},
                       imageId);
}

struct Surface {
    HBITMAP bitmap;
    HDC context;
};

Surface openBare(HDC screen, int width, int height)
{
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, width, height);
    const HDC context = CreateCompatibleDC(screen);
    SelectObject(context, bitmap);
    return {bitmap, context};
}

void outlineAndFill(HDC context, const GraphicsCalls& recorded)
{
    const HPEN pen = CreatePen(PS_SOLID, 1, RGB(255, 0, 255));
    const HGDIOBJ former = SelectObject(context, pen);
    repeatGraphics(context, recorded);
    GdiFlush();
    SelectObject(context, former);
    DeleteObject(pen);
}

// Copies the bitmap's pixels after the headers.
void readPixelsBare(HBITMAP bitmap, std::string& file)
{
    constexpr size_t offsetOfInformation = sizeof(BITMAPFILEHEADER);
    constexpr size_t offsetOfPixels = offsetOfInformation + sizeof(BITMAPINFOHEADER);
    BITMAP description{};
    GetObjectW(bitmap, sizeof description, &description);
    BITMAPINFO information{};
    std::memcpy(&information, file.data() + offsetOfInformation, sizeof(BITMAPINFOHEADER));
    const HDC screen = GetDC(nullptr);
    GetDIBits(screen, bitmap, 0, static_cast<UINT>(description.bmHeight),
              file.data() + offsetOfPixels, &information, DIB_RGB_COLORS);
    ReleaseDC(nullptr, screen);
}

void saveBare(const std::string& bytes)
{
    const std::wstring path = torvapdm::toolPicturePath(imageId);
    const std::wstring neighbour = path + L".new";
    const HANDLE file =
        CreateFileW(neighbour.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    DWORD written = 0;
    WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    CloseHandle(file);
    MoveFileExW(neighbour.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING);
}

void drawBare(const Picture& picture, const GraphicsCalls& recorded, std::string& file)
{
    const HDC screen = GetDC(nullptr);
    const Surface work = openBare(screen, 2 * picture.width, 2 * picture.height);
    const Surface cut = openBare(screen, picture.width, picture.height);
    outlineAndFill(work.context, recorded);
    BitBlt(cut.context, 0, 0, picture.width, picture.height, work.context, 0, 0, SRCCOPY);
    DeleteDC(cut.context);
    DeleteDC(work.context);
    DeleteObject(work.bitmap);
    ReleaseDC(nullptr, screen);
    readPixelsBare(cut.bitmap, file);
    saveBare(file);
    DeleteObject(cut.bitmap);
}

std::string savedPicture()
{
    return testing_support::readBytes(torvapdm::toolPicturePath(imageId)).value_or("");
}

Row measure(const Picture& picture)
{
    const GraphicsCalls recorded = recordGraphics([&] { drawOurs(picture); });
    const std::string file = savedPicture();
    require(!file.empty(), "the picture is drawn");
    // Without pixels, which the repeated calls must produce.
    std::string bareFile = file.substr(0, 54) + std::string(file.size() - 54, '\0');
    drawBare(picture, recorded, bareFile);
    require(savedPicture() == file, "the repeated calls give the same picture");
    const Pair pair = timeInPairs(
        picture.rounds, picture.calls, [&] { drawOurs(picture); },
        [&] { drawBare(picture, recorded, bareFile); });
    return ratioRow("tool picture, " + std::to_string(picture.width) + " x " +
                        std::to_string(picture.height),
                    pair, limit);
}

} // namespace

Rows toolPictureRows()
{
    Rows rows;
    for (const Picture& picture : pictures)
        rows.push_back(measure(picture));
    return rows;
}

} // namespace bench
