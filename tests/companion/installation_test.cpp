#include "companion/installation.h"

#include "support/counts.h"
#include "support/installation.h"
#include "support/system_calls.h"

#include <gtest/gtest.h>
#include <windows.h>

using torvapdm::getInstallationFolder;
using namespace testing_support;
using namespace std::string_literals;

namespace {

constexpr wchar_t keyName[] = L"SOFTWARE\\TORVA AS\\ZEM";
constexpr wchar_t valueName[] = L"installation folder";
constexpr wchar_t defaultFolder[] = L"C:\\TORVA\\ZEM";

class InstallationFolder : public ::testing::Test {
protected:
    InstallationFolder() { testing_support::useEmptyRegistry(); }

    void store(DWORD type, const void* bytes, DWORD size)
    {
        HKEY key = nullptr;
        RegCreateKeyExW(HKEY_CURRENT_USER, keyName, 0, nullptr, 0, KEY_WRITE, nullptr, &key,
                        nullptr);
        RegSetValueExW(key, valueName, 0, type, static_cast<const BYTE*>(bytes), size);
        RegCloseKey(key);
    }
    void storeText(DWORD type, const std::wstring& text)
    {
        store(type, text.c_str(), static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
    }
    bool keyExists()
    {
        HKEY key = nullptr;
        const LSTATUS status = RegOpenKeyExW(HKEY_CURRENT_USER, keyName, 0, KEY_READ, &key);
        RegCloseKey(key);
        return status == ERROR_SUCCESS;
    }
};

} // namespace

TEST_F(InstallationFolder, createsAnEmptyKeyWithoutOne)
{
    EXPECT_FALSE(keyExists());
    EXPECT_EQ(getInstallationFolder(), defaultFolder);
    EXPECT_TRUE(keyExists());
}

TEST_F(InstallationFolder, isReadOnceForTheProcess)
{
    storeText(REG_SZ, L"D:\\first");
    EXPECT_EQ(getInstallationFolder(), L"D:\\first");
    storeText(REG_SZ, L"D:\\second");
    EXPECT_EQ(getInstallationFolder(), L"D:\\first");
}

TEST_F(InstallationFolder, isNotReadAgainAfterAFailure)
{
    EXPECT_EQ(getInstallationFolder(), defaultFolder);
    storeText(REG_SZ, L"D:\\late");
    EXPECT_EQ(getInstallationFolder(), defaultFolder);
}

namespace {

struct StoredValue {
    const char* name; // used as the test's name
    DWORD type;
    std::wstring content; // including any NUL
    std::wstring folder;
};

void PrintTo(const StoredValue& value, std::ostream* stream)
{
    *stream << value.name;
}

const std::wstring longFolder = L"C:\\" + std::wstring(200, L'f');

const StoredValue storedValues[] = {
    {"text", REG_SZ, L"D:\\Zem folder\\x"s + L'\0', L"D:\\Zem folder\\x"},
    {"longText", REG_SZ, longFolder + L'\0', longFolder},
    {"unexpandedText", REG_EXPAND_SZ, L"%TEMP%\\zem\0"s, L"%TEMP%\\zem"},
    {"upToTheFirstNul", REG_SZ, L"D:\\alt\0more\0"s, L"D:\\alt"},
    {"noTextAfterANul", REG_SZ, L"\0more\0"s, defaultFolder},
    {"lessTheLastCharacterWithoutANul", REG_SZ, L"D:\\ab", L"D:\\a"},
    {"noNumber", REG_DWORD, L"\7\0"s, defaultFolder},
    {"noBinaryText", REG_BINARY, L"D:\\binary\0"s, defaultFolder},
    {"noEmptyText", REG_SZ, L"\0"s, defaultFolder},
    {"noValueWithoutBytes", REG_SZ, L"", defaultFolder},
};

class StoredFolder : public InstallationFolder,
                     public ::testing::WithParamInterface<StoredValue> {};

} // namespace

namespace {

// The system's function, but for the value's second read.
LSTATUS WINAPI failingSecondQuery(HKEY key, LPCWSTR value, LPDWORD reserved, LPDWORD type,
                                  LPBYTE bytes, LPDWORD size)
{
    if (bytes)
        return ERROR_ACCESS_DENIED;
    return systems(&failingSecondQuery, "RegQueryValueExW", L"advapi32.dll")(key, value, reserved,
                                                                             type, bytes, size);
}

} // namespace

namespace {

std::vector<DWORD> keyOptions;
std::wstring folderMeanwhile;

LSTATUS WINAPI notedCreateKey(HKEY root, LPCWSTR name, DWORD reserved, LPWSTR type, DWORD options,
                              REGSAM access, const LPSECURITY_ATTRIBUTES security, PHKEY key,
                              LPDWORD disposition)
{
    if (keyOptions.empty()) {
        keyOptions = {options, access};
        folderMeanwhile = getInstallationFolder();
    }
    return systems(&notedCreateKey, "RegCreateKeyExW", L"advapi32.dll")(
        root, name, reserved, type, options, access, security, key, disposition);
}

} // namespace

TEST_F(InstallationFolder, isReadOnceInThe32BitView)
{
    storeText(REG_SZ, L"D:\\a");
    redirectCalls(&notedCreateKey, "RegCreateKeyExW", &notedCreateKey, L"advapi32.dll");
    EXPECT_EQ(getInstallationFolder(), L"D:\\a");
    EXPECT_EQ(keyOptions, (std::vector<DWORD>{0, 0x20219}));
    EXPECT_EQ(folderMeanwhile, defaultFolder); // the look-up counts as done before it begins
}

TEST_F(InstallationFolder, isThePaddedDefaultAfterAFailure)
{
    storeText(REG_SZ, std::wstring(15, L'x'));
    redirectCalls(&RegQueryValueExW, "RegQueryValueExW", &failingSecondQuery, L"advapi32.dll");
    EXPECT_EQ(getInstallationFolder(), defaultFolder + std::wstring(3, L'\0'));
}

TEST_F(InstallationFolder, isTheCutDefaultAfterAFailure)
{
    storeText(REG_SZ, L"D:\\a");
    redirectCalls(&RegQueryValueExW, "RegQueryValueExW", &failingSecondQuery, L"advapi32.dll");
    EXPECT_EQ(getInstallationFolder(), L"C:\\T");
}

TEST_P(StoredFolder, isUsed)
{
    const StoredValue& value = GetParam();
    // The extra text prevents Windows from storing a NUL that follows in memory.
    store(value.type, (value.content + L"more").data(),
          static_cast<DWORD>(value.content.size() * sizeof(wchar_t)));
    const std::wstring folder = getInstallationFolder();
    EXPECT_EQ(folder, value.folder);
    EXPECT_EQ(folder.c_str()[folder.size()], L'\0');
}

INSTANTIATE_TEST_SUITE_P(Registry, StoredFolder, ::testing::ValuesIn(storedValues),
                         [](const auto& value) { return std::string(value.param.name); });

TEST_F(InstallationFolder, roundsAnOddSizeUp)
{
    store(REG_SZ, L"D:\\a", 7); // the last character's low byte only
    EXPECT_EQ(getInstallationFolder(), L"D:\\");
}

TEST_F(InstallationFolder, isDefaultWithoutTheRegistry)
{
    HKEY closed = nullptr;
    RegCreateKeyExW(HKEY_CURRENT_USER, L"closed", 0, nullptr, REG_OPTION_VOLATILE, KEY_READ,
                    nullptr, &closed, nullptr);
    RegDeleteKeyW(HKEY_CURRENT_USER, L"closed");
    ASSERT_EQ(RegOverridePredefKey(HKEY_CURRENT_USER, closed), ERROR_SUCCESS);
    EXPECT_EQ(getInstallationFolder(), defaultFolder);
}

TEST_F(InstallationFolder, leavesItsKeyOpen)
{
    const size_t before = testing_support::countHandles();
    getInstallationFolder();
    EXPECT_EQ(testing_support::countHandles(), before + 1);
}
