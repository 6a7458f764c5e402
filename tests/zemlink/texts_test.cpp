// zemlink's own reading of the texts that are exchanged, on literal bytes.
#include "peer/command_text.h"
#include "peer/installation_folder.h"
#include "peer/machine_settings.h"
#include "peer/settings_file.h"

#include <gtest/gtest.h>

using namespace zemlink;
using namespace std::string_literals;

namespace {

constexpr auto mark = "\xEF\xBB\xBF";

void expectOpening(const std::string& bytes, RequestKind kind, int id, const std::string& path,
                   size_t remarks)
{
    const CommandText text = readCommandText(bytes);
    EXPECT_EQ(requestName(text.kind), requestName(kind)) << bytes;
    EXPECT_EQ(text.id, id) << bytes;
    EXPECT_EQ(text.path, path) << bytes;
    EXPECT_EQ(text.remarks.size(), remarks) << bytes;
}

std::wstring folderText(const std::optional<RegistryValue>& view32,
                        const std::optional<RegistryValue>& view64 = {})
{
    return folderOf(view32, view64).path;
}

} // namespace

TEST(RequestText, isAnOpenRequest)
{
    expectOpening(mark + "12 C:\\parts\\a b.mcam\n"s, RequestKind::open, 12, "C:\\parts\\a b.mcam",
                  0);
    expectOpening(mark + "-7 C:\\a\n"s, RequestKind::open, -7, "C:\\a", 0);
    expectOpening(mark + "7 \n"s, RequestKind::newFile, 7, "", 0);
}

TEST(RequestText, isReadAsItStandsWhenItIsOdd)
{
    expectOpening(mark + "12 C:\\a\r\n"s, RequestKind::open, 12, "C:\\a\r", 1);
    expectOpening(mark + "12 C:\\a"s, RequestKind::open, 12, "C:\\", 1);
    expectOpening("xyz12 C:\\a\n", RequestKind::open, 12, "C:\\a", 1);
    expectOpening(mark + "12 C:\\\xC4\n"s, RequestKind::open, 12, "C:\\\xC4", 1);
    expectOpening(mark + "-1 C:\\a\n"s, RequestKind::open, -1, "C:\\a", 1);
    expectOpening(mark + "1 C:\\a\nmore"s, RequestKind::open, 1, "C:\\a\n", 2);
}

TEST(RequestText, isACheckInOnlyWithTheWordInFrontOfTheFirstBlank)
{
    expectOpening("CHECKIN a.mcam", RequestKind::checkIn, 0, "a.mcam", 0);
    expectOpening("CHECKIN", RequestKind::checkIn, 0, "", 0);
    expectOpening("CHECKIN\n", RequestKind::malformed, 0, "", 1);
    expectOpening("checkin a", RequestKind::malformed, 0, "", 1);
    expectOpening(mark + "CHECKIN a"s, RequestKind::malformed, 0, "", 1);
}

TEST(RequestText, isMalformedWithoutABlankOrANumber)
{
    expectOpening("", RequestKind::none, 0, "", 0);
    expectOpening("x", RequestKind::malformed, 0, "", 1);
    expectOpening(mark + "12"s, RequestKind::malformed, 0, "", 1);
    expectOpening(mark + "2147483648 C:\\a\n"s, RequestKind::malformed, 0, "", 1);
    expectOpening(mark + "x C:\\a\n"s, RequestKind::malformed, 0, "", 1);
}

TEST(RequestText, isTooLongBeyond65536Bytes)
{
    const std::string name(65536, 'a');
    EXPECT_EQ(readCommandText("CHECKIN " + name.substr(8)).remarks.size(), 0u);
    EXPECT_EQ(readCommandText("CHECKIN " + name.substr(7)).remarks.size(), 1u);
}

TEST(MachineText, hasTwoNumbersAndAPath)
{
    const auto text = readMachineText("17|3|-2|C:\\Machines\\Mill 3-axis.mcam-mmd\r\n");
    ASSERT_TRUE(text);
    EXPECT_EQ(text->id, "17");
    EXPECT_EQ(text->ncPath, 3);
    EXPECT_EQ(text->secondNumber, -2);
    EXPECT_EQ(text->machine, "C:\\Machines\\Mill 3-axis.mcam-mmd");
    EXPECT_FALSE(text->hasMore);
}

TEST(MachineText, countsAFieldOnlyWithABarBehindIt)
{
    EXPECT_FALSE(readMachineText(""));
    const auto two = readMachineText("1|2");
    EXPECT_EQ(two->machine, "2");
    EXPECT_FALSE(two->ncPath);
    const auto bare = readMachineText("C:\\m.mcam-mmd\nmore");
    EXPECT_EQ(bare->machine, "C:\\m.mcam-mmd");
    EXPECT_TRUE(bare->hasMore);
    const auto many = readMachineText("1|x|9999999999|a|b|c\n");
    EXPECT_EQ(many->ncPath, 0);
    EXPECT_EQ(many->secondNumber, 2147483647);
    EXPECT_EQ(many->machine, "c");
}

TEST(SettingsText, hasTheLastLineCountThatHoldsTheKey)
{
    const auto value = [](std::string_view bytes) {
        return settingValue(settingLines(bytes), "UseFtpServer");
    };
    EXPECT_EQ(value("UseFtpServer=y\r\nXUseFtpServer=n\r\n"), "n");
    EXPECT_EQ(value("UseFtpServer=y"), "");
    EXPECT_EQ(value("UseFtpServer=y\nUseFtpServer\n"), "y");
    EXPECT_EQ(value("UseFtpServer=y\n\x1AUseFtpServer=n\n"), "y");
    EXPECT_EQ(value("useftpserver=y\n"), "");
}

TEST(SettingsText, isReadInPiecesOf1023Bytes)
{
    const std::string longLine = std::string(1023, ' ') + "UseFtpServer=y\n";
    EXPECT_EQ(settingLines(longLine).size(), 2u);
    EXPECT_EQ(settingLines("a\r\n\r\nb"), (std::vector<std::string>{"a\n", "\n", "b"}));
}

TEST(SettingsText, switchesEachSettingByItsOwnRule)
{
    const auto inForce = [](std::string_view bytes) { return settingsInForce(bytes).dump(); };
    const std::string off =
        R"({"UseFtpServer":false,"AlwaysSaveTools":false,"MCXCATIA":false,"MCXIMPORTNC":true})";
    EXPECT_EQ(inForce(""), off);
    EXPECT_EQ(inForce("AlwaysSaveTools=Y\nMCXIMPORTNC=n\nMCXIMPORTNC=Y\nUseFtpServer=yes\n"), off);
    EXPECT_EQ(
        inForce("AlwaysSaveTools=yes\nMCXIMPORTNC=Y MCXIMPORTNC=n\nUseFtpServer=Y\nMCXCATIA=y\n"),
        R"({"UseFtpServer":true,"AlwaysSaveTools":true,"MCXCATIA":true,"MCXIMPORTNC":false})");
}

TEST(Folder, isTheValueOfThe32BitViewWhenThatIsAText)
{
    const RegistryValue text{1, std::wstring(L"D:\\ZEM\0", 7)};
    const RegistryValue expandable{2, std::wstring(L"%X%\\ZEM\0", 8)};
    EXPECT_EQ(folderText(text), L"D:\\ZEM");
    EXPECT_EQ(folderText(expandable), L"%X%\\ZEM");
    EXPECT_EQ(folderText(RegistryValue{4, std::wstring(L"D:\\\0", 4)}), L"C:\\TORVA\\ZEM");
    EXPECT_EQ(folderText(RegistryValue{1, std::wstring(1, L'\0')}), L"C:\\TORVA\\ZEM");
    EXPECT_EQ(folderText(RegistryValue{1, L""}), L"C:\\TORVA\\ZEM");
    EXPECT_EQ(folderText(RegistryValue{1, L"D:\\ZEM"}), L"D:\\ZE"); // stored without its zero
    EXPECT_EQ(folderText({}), L"C:\\TORVA\\ZEM");
}

TEST(Folder, tellsWhereItComesFrom)
{
    const RegistryValue one{1, std::wstring(L"D:\\1\0", 5)};
    const RegistryValue two{1, std::wstring(L"D:\\2\0", 5)};
    EXPECT_EQ(folderOf(one, one).source, FolderSource::registry);
    EXPECT_EQ(folderOf(one, one).elsewhere, L"");
    EXPECT_EQ(folderOf(one, {}).source, FolderSource::view32Only);
    EXPECT_EQ(folderOf(one, two).elsewhere, L"D:\\2");
    EXPECT_EQ(folderOf({}, two).source, FolderSource::standard);
    EXPECT_EQ(folderOf({}, two).elsewhere, L"D:\\2");
}
