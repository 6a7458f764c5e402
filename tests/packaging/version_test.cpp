// The version is defined in one place and shown in several places of the package.
#include "packaging/site.h"
#include "support/bytes.h"

#include <gtest/gtest.h>
#include <regex>
#include <vector>

using namespace testing_support;

namespace {

std::vector<BYTE> versionOf(const std::wstring& program)
{
    DWORD unused = 0;
    std::vector<BYTE> version(GetFileVersionInfoSizeW(program.c_str(), &unused));
    if (!GetFileVersionInfoW(program.c_str(), 0, static_cast<DWORD>(version.size()),
                             version.data()))
        version.clear();
    return version;
}

std::wstring versionText(const std::wstring& program, const std::wstring& name)
{
    const std::vector<BYTE> version = versionOf(program);
    void* text = nullptr;
    UINT length = 0;
    if (version.empty() ||
        !VerQueryValueW(version.data(), (L"\\StringFileInfo\\040904B0\\" + name).c_str(), &text,
                        &length))
        return L"";
    return static_cast<const wchar_t*>(text);
}

// The numeric file and product versions, which are the ones the system compares.
std::wstring versionNumbers(const std::wstring& program)
{
    const std::vector<BYTE> version = versionOf(program);
    void* found = nullptr;
    UINT length = 0;
    if (version.empty() || !VerQueryValueW(version.data(), L"\\", &found, &length))
        return L"";
    const auto* const numbers = static_cast<const VS_FIXEDFILEINFO*>(found);
    const auto dotted = [](DWORD high, DWORD low) {
        return std::to_wstring(HIWORD(high)) + L'.' + std::to_wstring(LOWORD(high)) + L'.' +
               std::to_wstring(HIWORD(low)) + L'.' + std::to_wstring(LOWORD(low));
    };
    return dotted(numbers->dwFileVersionMS, numbers->dwFileVersionLS) + L' ' +
           dotted(numbers->dwProductVersionMS, numbers->dwProductVersionLS);
}

// The linker's timestamp, in seconds since 1970.
std::optional<DWORD> timeOfMaking(const std::wstring& program)
{
    const std::string bytes = readBytes(program).value_or("");
    IMAGE_DOS_HEADER start{};
    IMAGE_NT_HEADERS64 headers{};
    bytes.copy(reinterpret_cast<char*>(&start), sizeof start);
    const size_t place = static_cast<size_t>(start.e_lfanew);
    if (place == 0 || place + sizeof headers > bytes.size())
        return std::nullopt;
    bytes.copy(reinterpret_cast<char*>(&headers), sizeof headers, place);
    return headers.FileHeader.TimeDateStamp;
}

} // namespace

TEST(Version, isTheSameInEveryProgram)
{
    for (const std::wstring& program :
         {packedFolder() + L"\\torvapdm.dll", packedFolder() + L"\\zemlink.exe", setupProgram()}) {
        EXPECT_EQ(versionNumbers(program), L"" VERSION_TEXT ".0 " VERSION_TEXT ".0")
            << toUtf8(program);
        EXPECT_EQ(versionText(program, L"FileVersion"), L"" VERSION_TEXT) << toUtf8(program);
        EXPECT_EQ(versionText(program, L"ProductVersion"), L"" VERSION_TEXT) << toUtf8(program);
        EXPECT_EQ(versionText(program, L"ProductName"), L"TORVA ZEM") << toUtf8(program);
        EXPECT_EQ(versionText(program, L"CompanyName"), L"TORVA AS") << toUtf8(program);
    }
}

// After the changes that are not in a version yet.
TEST(Version, headsTheChanges)
{
    const std::wstring changes = packedPath(L"kit\\torvapdm-kit-" VERSION_TEXT "\\CHANGELOG.md");
    const auto lines = linesOf(fromUtf8(readBytes(changes).value_or("")));
    const auto heading = std::find_if(lines.begin(), lines.end(), [](const std::wstring& line) {
        return line.starts_with(L"## ") && line != L"## Unreleased";
    });
    ASSERT_NE(heading, lines.end());
    EXPECT_EQ(*heading, L"## " VERSION_TEXT);
}

// Every version in the page for administrators, except the one that setup replaces in the sample of
// a log.
TEST(Version, isThatOfTheInstructions)
{
    const std::string page =
        readBytes(programFolder() + L"shipped\\docs\\installing.md").value_or("");
    const std::regex pattern(R"((Earlier version: )?(\d+\.\d+\.\d+))");
    size_t compared = 0;
    for (std::sregex_iterator found(page.begin(), page.end(), pattern), end; found != end; ++found)
        if (!(*found)[1].matched) {
            EXPECT_EQ((*found)[2].str(), VERSION_TEXT) << found->suffix().str().substr(0, 60);
            ++compared;
        }
    EXPECT_NE(compared, 0u);
    EXPECT_NE(page.find("[version]'" VERSION_TEXT "'"), std::string::npos);
}

TEST(Version, isAllAProgramRevealsOfItsBuild)
{
    for (const wchar_t* program : {L"\\torvapdm.dll", L"\\zemlink.exe"})
        EXPECT_EQ(timeOfMaking(packedFolder() + program), 0u) << toUtf8(program);
}
