#include "companion/installation.h"

#include "support/counts.h"
#include "support/installation.h"

#include <gtest/gtest.h>
#include <windows.h>

using torvapdm::getInstallationFolder;

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

TEST_F(InstallationFolder, comesFromTheRegistry)
{
    storeText(REG_SZ, L"D:\\Zem folder\\x");
    EXPECT_EQ(getInstallationFolder(), L"D:\\Zem folder\\x");
}

TEST_F(InstallationFolder, mayHaveAnyLength)
{
    const std::wstring longFolder = L"C:\\" + std::wstring(200, L'f');
    storeText(REG_SZ, longFolder);
    EXPECT_EQ(getInstallationFolder(), longFolder);
}

TEST_F(InstallationFolder, isUsedUnexpanded)
{
    storeText(REG_EXPAND_SZ, L"%TEMP%\\zem");
    EXPECT_EQ(getInstallationFolder(), L"%TEMP%\\zem");
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

TEST_F(InstallationFolder, ignoresAnotherType)
{
    const DWORD number = 7;
    store(REG_DWORD, &number, sizeof number);
    EXPECT_EQ(getInstallationFolder(), defaultFolder);
}

TEST_F(InstallationFolder, ignoresBinaryText)
{
    const wchar_t text[] = L"D:\\binary";
    store(REG_BINARY, text, sizeof text);
    EXPECT_EQ(getInstallationFolder(), defaultFolder);
}

TEST_F(InstallationFolder, ignoresAnEmptyText)
{
    storeText(REG_SZ, L"");
    EXPECT_EQ(getInstallationFolder(), defaultFolder);
}

TEST_F(InstallationFolder, ignoresAValueWithoutBytes)
{
    store(REG_SZ, L"", 0);
    EXPECT_EQ(getInstallationFolder(), defaultFolder);
}

TEST_F(InstallationFolder, losesAByteWithoutATerminator)
{
    store(REG_SZ, L"D:\\ab more", 5 * sizeof(wchar_t));
    const std::wstring folder = getInstallationFolder();
    EXPECT_EQ(folder, L"D:\\a");
    EXPECT_EQ(folder.c_str()[folder.size()], L'\0');
}

TEST_F(InstallationFolder, endsAtItsFirstNul)
{
    store(REG_SZ, L"D:\\alt\0more\0", 12 * sizeof(wchar_t));
    EXPECT_EQ(getInstallationFolder(), L"D:\\alt");
}

TEST_F(InstallationFolder, needsTheRegistry)
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
