// Appends a UTF-8 line to "starts.txt" in its own folder for each start: the show command of the
// window and the command line after the program's name, which starts with a space.
#include "peer/files.h"
#include "support/bytes.h"
#include "support/installation.h"

#include <windows.h>

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int show)
{
    std::wstring line = GetCommandLineW();
    const size_t nameEnd = line.front() == L'"' ? line.find(L'"', 1) + 1 : line.find(L' ');
    line.replace(0, nameEnd, std::to_wstring(show));
    const std::wstring record = testing_support::programFolder() + L"starts.txt";
    return peer::appendToFile(record, testing_support::toUtf8(line + L'\n')) ? 0 : 1;
}
