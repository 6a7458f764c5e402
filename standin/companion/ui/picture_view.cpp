#include "standin/companion/ui/picture_view.h"

#include "peer/bitmap_file.h"
#include "peer/files.h"
#include "standin/companion/ui/picture_scale.h"

#include <memory>

namespace companion {
namespace {

constexpr wchar_t pictureClass[] = L"ZemPictureView";
constexpr COLORREF frameColour = RGB(172, 182, 194);
constexpr COLORREF paperColour = RGB(255, 255, 255);
constexpr COLORREF faintColour = RGB(112, 124, 138);

struct PictureView {
    const Look* look = nullptr;
    peer::Pixels picture; // empty: the text is shown
    std::wstring otherwise;
};

PictureView* viewOf(HWND window)
{
    return reinterpret_cast<PictureView*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

// A negative height means rows from the top down.
BITMAPINFO descriptionOf(const peer::Pixels& picture)
{
    BITMAPINFO description{};
    description.bmiHeader.biSize = sizeof description.bmiHeader;
    description.bmiHeader.biWidth = picture.width;
    description.bmiHeader.biHeight = -picture.height;
    description.bmiHeader.biPlanes = 1;
    description.bmiHeader.biBitCount = 32;
    description.bmiHeader.biCompression = BI_RGB;
    return description;
}

// Empty when the file is missing or not a bitmap. We do not use the system's reader because it
// trusts the sizes in the file, which another program may have written.
peer::Pixels readPicture(const std::wstring& path)
{
    return peer::parseBitmap(peer::readFile(path, peer::largestBitmapFile).value_or(""));
}

// "toolimage-4.bmp, 100 x 200"
std::wstring describe(const std::wstring& path, const peer::Pixels& picture)
{
    return path.substr(path.find_last_of(L'\\') + 1) + L", " + std::to_wstring(picture.width) +
           L" x " + std::to_wstring(picture.height);
}

void drawPicture(HDC context, const Area& inside, const peer::Pixels& picture)
{
    const Area place = fitInto(inside, picture.width, picture.height);
    const peer::Pixels shown = scaled(picture, place.width, place.height);
    const BITMAPINFO description = descriptionOf(shown);
    SetDIBitsToDevice(context, place.left, place.top, static_cast<DWORD>(shown.width),
                      static_cast<DWORD>(shown.height), 0, 0, 0, static_cast<UINT>(shown.height),
                      shown.values.data(), &description, DIB_RGB_COLORS);
}

void paint(HWND window, const PictureView& view)
{
    PAINTSTRUCT record{};
    RECT client{};
    HDC context = BeginPaint(window, &record);
    GetClientRect(window, &client);
    const Area inside{1, 1, client.right - 2, client.bottom - 2};
    fillArea(context, {0, 0, client.right, client.bottom}, frameColour);
    fillArea(context, inside, paperColour);
    if (!view.picture.values.empty()) {
        drawPicture(context, inside, view.picture);
    } else {
        drawLine(context, inside, view.otherwise, view.look->text.get(), faintColour,
                 DT_CENTER | DT_VCENTER);
    }
    EndPaint(window, &record);
}

LRESULT CALLBACK pictureProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    const PictureView* view = viewOf(window);
    switch (message) {
    case WM_NCCREATE:
        SetWindowLongPtrW(window, GWLP_USERDATA,
                          reinterpret_cast<LONG_PTR>(
                              reinterpret_cast<const CREATESTRUCTW*>(lParam)->lpCreateParams));
        break;
    case WM_SIZE:
        InvalidateRect(window, nullptr, FALSE);
        return 0;
    case WM_PAINT:
        try {
            paint(window, *view);
        } catch (...) {
            ValidateRect(window, nullptr); // out of memory: it stays empty
        }
        return 0;
    case WM_NCDESTROY:
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        delete view;
        break;
    default:
        break;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

void registerPictureClass()
{
    WNDCLASSW record{};
    record.lpfnWndProc = pictureProcedure;
    record.hInstance = GetModuleHandleW(nullptr);
    record.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    record.lpszClassName = pictureClass;
    RegisterClassW(&record);
}

} // namespace

HWND createPictureView(HWND parent, const Look& look)
{
    registerPictureClass();
    auto view = std::make_unique<PictureView>();
    view->look = &look;
    // The window owns the record from WM_NCCREATE to WM_NCDESTROY.
    return CreateWindowExW(0, pictureClass, L"", WS_CHILD | WS_VISIBLE, 0, 0, 0, 0, parent, nullptr,
                           GetModuleHandleW(nullptr), view.release());
}

void showPicture(HWND window, const std::wstring& path, const std::wstring& otherwise)
{
    PictureView* view = viewOf(window);
    if (view == nullptr)
        return;
    view->picture = path.empty() ? peer::Pixels{} : readPicture(path);
    view->otherwise = otherwise;
    const bool shown = !view->picture.values.empty();
    SetWindowTextW(window, (shown ? describe(path, view->picture) : otherwise).c_str());
    InvalidateRect(window, nullptr, FALSE);
}

} // namespace companion
