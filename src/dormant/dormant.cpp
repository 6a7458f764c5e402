#include "dormant/dormant.h"

#include "companion/installation.h"
#include "companion/settings.h"
#include "formats/settings_file.h"
#include "host/barriers.h"
#include "host/document.h"
#include "host/host.h"
#include "platform/files.h"

#include <cwchar>
#include <sys/stat.h>
#include <vector>
#include <winsock2.h>

namespace torvapdm {

std::string isNcImportEnabled(const char* key)
{
    std::string answer = "y";
    if (key != ncImportKey) // Quirk Q45: the object is compared, not its text.
        return answer;
    forEachSettingsLine(openStream(settingsFilePath(), L"r"),
                        [&](const char* line) { applyNcImportLine(line, answer); });
    return answer;
}

std::wstring readWholeText(const std::wstring& path)
{
    std::wstring text;
    const OwnFile file(_wfopen(path.c_str(), L"rtS, ccs=UTF-8"));
    if (!file) {
        std::fputs("File Open Error\n", stdout);
        return text;
    }
    std::fputs("File Open Success\n", stdout);
    for (;;) {
        const std::wint_t unit = std::fgetwc(file.get());
        // U+FFFF is WEOF as well.
        if (unit == WEOF && (std::feof(file.get()) || std::ferror(file.get())))
            return text;
        text += static_cast<wchar_t>(unit);
    }
}

std::wstring saveUnderCurrentName()
{
    const std::wstring name = hostFileName();
    const int saved = askHost(0, [&] { return SaveFile(name.c_str(), nullptr, false); });
    return saved == 1 ? name : std::wstring();
}

int startSockets()
{
    WSADATA data{};
    return WSAStartup(MAKEWORD(2, 0), &data);
}

bool pathExists(const std::wstring& path)
{
    WIN32_FILE_ATTRIBUTE_DATA data;
    return GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data);
}

int getFileSize(const std::wstring& path)
{
    struct _stat64i32 status {};
    _wstat64i32(path.c_str(), &status);
    return status.st_size;
}

std::wstring toWide(const std::string& text, UINT codePage)
{
    const int size = MultiByteToWideChar(codePage, 0, text.c_str(), -1, nullptr, 0);
    if (size <= 0)
        return {};
    std::vector<wchar_t> wide(static_cast<size_t>(size));
    MultiByteToWideChar(codePage, 0, text.c_str(), -1, wide.data(), size);
    return wide.data();
}

std::wstring toWideAnsi(const std::string& text)
{
    return toWide(text, GetACP());
}

} // namespace torvapdm
