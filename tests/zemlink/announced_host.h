// Makes the test process look like a host with the add-in: a window with the host property and a
// command file that is not read.
#pragma once

#include "support/bytes.h"
#include "support/installation.h"
#include "support/waiting.h"

#include <string>
#include <windows.h>

namespace testing_support {

class AnnouncedHost {
public:
    AnnouncedHost()
        : window_(CreateWindowExW(0, L"STATIC", L"silent host", WS_OVERLAPPEDWINDOW, 0, 0, 200, 100,
                                  nullptr, nullptr, nullptr, nullptr))
    {
        SetPropW(window_, L"https://torva.example/namespace/torvapdm/mastercam-instance",
                 reinterpret_cast<HANDLE>(INT_PTR{1}));
        pumpMessages();
    }
    ~AnnouncedHost() { DestroyWindow(window_); }
    AnnouncedHost(const AnnouncedHost&) = delete;
    AnnouncedHost& operator=(const AnnouncedHost&) = delete;

    static std::wstring makeCommandFile(const Installation& installation)
    {
        writeBytes(installation.commandFile(GetCurrentProcessId()), "");
        return installation.commandFile(GetCurrentProcessId());
    }

private:
    HWND window_;
};

} // namespace testing_support
