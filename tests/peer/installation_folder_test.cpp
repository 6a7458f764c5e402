#include "peer/installation_folder.h"

#include <gtest/gtest.h>

using namespace peer;

namespace {

std::wstring folderText(const std::optional<RegistryValue>& value)
{
    return chooseFolder(value).path;
}

} // namespace

TEST(PeerInstallationFolder, isTheStringInTheRegistry)
{
    const RegistryValue text{1, std::wstring(L"D:\\ZEM\0", 7)};
    const RegistryValue expandable{2, std::wstring(L"%X%\\ZEM\0", 8)};
    EXPECT_EQ(folderText(text), L"D:\\ZEM");
    EXPECT_EQ(folderText(expandable), L"%X%\\ZEM");
    EXPECT_EQ(folderText(RegistryValue{4, std::wstring(L"D:\\\0", 4)}), L"C:\\TORVA\\ZEM");
    EXPECT_EQ(folderText(RegistryValue{1, std::wstring(1, L'\0')}), L"C:\\TORVA\\ZEM");
    EXPECT_EQ(folderText(RegistryValue{1, L""}), L"C:\\TORVA\\ZEM");
    EXPECT_EQ(folderText(RegistryValue{1, L"D:\\ZEM"}),
              L"D:\\ZE"); // stored without its null terminator
    EXPECT_EQ(folderText({}), L"C:\\TORVA\\ZEM");
}

TEST(PeerInstallationFolder, hasASource)
{
    EXPECT_EQ(chooseFolder(RegistryValue{1, std::wstring(L"D:\\1\0", 5)}).source,
              FolderSource::registry);
    EXPECT_EQ(chooseFolder({}).source, FolderSource::standard);
}
