// The Companion's requests, written to a command file that no add-in reads, and the files it writes
// with them.
#include "documents/exchange_run.h"
#include "support/companion_program.h"
#include "zemlink/announced_host.h"

#include <gtest/gtest.h>

using namespace testing_support;

namespace documents {

namespace {

constexpr wchar_t companionKey[] = L"SOFTWARE\\TORVA AS\\ZEM";

// The value's bytes in the 32-bit registry view; empty if it is not a string.
std::string registeredFolder()
{
    std::string bytes(1024, '\0');
    auto size = static_cast<DWORD>(bytes.size());
    HKEY key = nullptr;
    RegOpenKeyExW(HKEY_CURRENT_USER, companionKey, 0, KEY_QUERY_VALUE | KEY_WOW64_32KEY, &key);
    const LSTATUS status = RegGetValueW(key, nullptr, L"installation folder", RRF_RT_REG_SZ,
                                        nullptr, bytes.data(), &size);
    RegCloseKey(key);
    bytes.resize(status == ERROR_SUCCESS ? size : 0);
    return bytes;
}

std::string registerAnew(const Installation& installation)
{
    RegDeleteKeyW(HKEY_CURRENT_USER, companionKey);
    EXPECT_EQ(startCompanion(installation, L"--register"), carriedOut);
    return registeredFolder();
}

// Acts as the host that receives the request.
std::string takeRequest(const std::wstring& commandFile)
{
    EXPECT_TRUE(waitUntil([&] { return readBytes(commandFile).value_or("") != ""; }));
    const std::string request = readBytes(commandFile).value_or("");
    writeBytes(commandFile, "");
    return request;
}

} // namespace

Made requestsOfTheCompanion()
{
    const Installation installation(Registry::ofTheUser, installationOfThePages);
    installCompanionWithLibrary(installation);
    Made made{{"registry-value", registerAnew(installation)}};
    const AnnouncedHost host;
    const std::wstring commandFile = AnnouncedHost::makeCommandFile(installation);
    const CompanionProgram companion(installation);
    const auto requestAfter = [&](const std::wstring& words, const std::wstring& taken) {
        EXPECT_EQ(companion.tell(words), carriedOut);
        std::string request = takeRequest(commandFile);
        EXPECT_TRUE(companion.waitForLog(taken));
        return request;
    };
    made["open-request"] = requestAfter(L"--send bracket", L"taken id=17");
    made["machine-settings"] =
        readBytes(installation.path(L"temp\\mcsettings-17.txt")).value_or("");
    made["check-in-request"] = requestAfter(L"--check-in", L"taken id=0");
    made["new-file-request"] = requestAfter(L"--new-file --id 7", L"taken id=7");
    return made;
}

} // namespace documents
