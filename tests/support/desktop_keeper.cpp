// Keeps Wine's desktop and services running between programs: holds a hidden window until the
// process is ended from outside. Without it, each program would start them again and its caller
// would wait for them to exit. Writes a line to standard output once the window exists.
#include <windows.h>

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int)
{
    CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    DWORD written = 0;
    WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), "ready\n", 6, &written, nullptr);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0)
        DispatchMessageW(&message);
    return 0;
}
