// Compares the tables of names in the pages with the names used by the programs.
#include "documents/pages.h"
#include "support/companion_program.h"
#include "support/host_program.h"
#include "support/companion_double.h"
#include "support/windows.h"
#include "tools/zemlink/reports/file_reports.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>

using namespace documents;
using namespace testing_support;

namespace {

constexpr std::string_view omitted = "\xE2\x80\xA6"; // replaces the common prefix of all names

std::vector<TableRow> tableOf(const std::string& heading, const std::string& page = "exchanges.md")
{
    const std::vector<TableRow> rows = tableBelow(pageText(page), heading);
    EXPECT_FALSE(rows.empty()) << heading;
    return rows;
}

// The common prefix of all names, which the table abbreviates.
std::string commonBeginning()
{
    const std::string page = pageText("exchanges.md");
    const size_t sentence = page.find("All names begin with `");
    return sentence == page.npos ? "" : codeIn(std::string_view(page).substr(sentence));
}

std::wstring nameIn(const TableRow& row)
{
    std::string name = codeIn(row.at(0));
    const size_t place = name.find(omitted);
    EXPECT_NE(place, name.npos) << name;
    return fromUtf8(name.replace(place, omitted.size(), commonBeginning()));
}

std::set<std::wstring> namesOfKind(const std::string& kind)
{
    std::set<std::wstring> names;
    for (const TableRow& row : tableOf("## Windows, messages, semaphore"))
        if (row.at(1) == kind)
            names.insert(nameIn(row));
    return names;
}

std::set<std::wstring> allNames()
{
    std::set<std::wstring> names;
    for (const TableRow& row : tableOf("## Windows, messages, semaphore"))
        names.insert(nameIn(row));
    return names;
}

// The names with this prefix that are registered by any program on this desktop. Registered
// messages share their ids with clipboard formats, so their names can be queried; class and
// property names may be included.
std::set<std::wstring> registeredNames(const std::wstring& beginning)
{
    std::set<std::wstring> names;
    wchar_t name[256];
    for (UINT number = 0xC000; number <= 0xFFFF; ++number) {
        const int length = GetClipboardFormatNameW(number, name, std::size(name));
        if (std::wstring(name, static_cast<size_t>(length)).starts_with(beginning))
            names.insert(name);
    }
    return names;
}

HANDLE propertyOf(const Process& process, const std::wstring& name)
{
    HWND window = windowWithProperty(process.id(), name.c_str());
    return window ? GetPropW(window, name.c_str()) : nullptr;
}

bool isSemaphore(const std::wstring& name)
{
    HANDLE semaphore = OpenSemaphoreW(SYNCHRONIZE, FALSE, name.c_str());
    CloseHandle(semaphore);
    return semaphore != nullptr;
}

// Patterns for a recorded start: the show command of the window and the arguments.
std::vector<std::string> recordedStarts()
{
    std::vector<std::string> patterns;
    for (const TableRow& row : tableOf("## Command lines of the Companion")) {
        const std::string arguments = codeIn(row.at(0));
        patterns.push_back(arguments.empty() ? "1" : "0 " + arguments);
    }
    return patterns;
}

std::ptrdiff_t matches(const std::wstring& start, const std::vector<std::string>& patterns)
{
    return std::ranges::count_if(
        patterns, [&](const std::string& pattern) { return isLike(toUtf8(start), pattern); });
}

bool isRecorded(const std::string& pattern, const Lines& starts)
{
    return std::ranges::any_of(
        starts, [&](const std::wstring& start) { return isLike(toUtf8(start), pattern); });
}

// As written in the host's trace.
std::wstring tracedMenu()
{
    std::wstring line = L"ui menu(";
    for (const TableRow& row : tableOf("## The menu", "messages.md"))
        if (row.at(0).starts_with("**"))
            line += L"!\"" + fromUtf8(row[0].substr(2, row[0].size() - 4)) + L"\", -";
        else if (row.at(0) != "recent files")
            line += L", \"" + fromUtf8(row[0]) + L'"';
    return line + L')';
}

std::string inUtf16(const std::string& text)
{
    std::string bytes;
    for (const char c : text)
        bytes += {c, '\0'};
    return bytes;
}

class PageNames : public ::testing::Test {
protected:
    Installation installation{Registry::ofTheUser, installationOfThePages};
};

} // namespace

TEST_F(PageNames, matchWindowsMessagesAndSemaphore)
{
    const std::set<std::wstring> semaphores = namesOfKind("semaphore");
    EXPECT_FALSE(std::ranges::any_of(semaphores, isSemaphore));
    installCompanionWithLibrary(installation);
    const CompanionProgram companion(installation);
    const HostProgram host(installation, "");
    ASSERT_NE(companion.waitForWindow(), nullptr);
    ASSERT_TRUE(waitUntil([&] { return host.window() != nullptr; }));
    EXPECT_EQ(semaphores.size(), 1u);
    EXPECT_TRUE(std::ranges::all_of(semaphores, isSemaphore));
    const HANDLE one = reinterpret_cast<HANDLE>(INT_PTR{1});
    for (const std::wstring& name : namesOfKind("property of a host"))
        EXPECT_EQ(propertyOf(host.process(), name), one) << toUtf8(name);
    for (const std::wstring& name : namesOfKind("property of the Companion"))
        EXPECT_EQ(propertyOf(companion.process(), name), one) << toUtf8(name);
    for (const std::wstring& name : namesOfKind("window class"))
        EXPECT_NE(FindWindowW(name.c_str(), nullptr), nullptr) << toUtf8(name);
    const std::set<std::wstring> registered = registeredNames(fromUtf8(commonBeginning()));
    const std::set<std::wstring> messages = namesOfKind("message");
    EXPECT_TRUE(std::ranges::includes(registered, messages));
    EXPECT_TRUE(std::ranges::includes(allNames(), registered));
}

TEST_F(PageNames, areAllOfAKnownKind)
{
    size_t known = 0;
    for (const char* kind : {"property of a host", "property of the Companion", "window class",
                             "message", "semaphore"})
        known += namesOfKind(kind).size();
    EXPECT_EQ(known, tableOf("## Windows, messages, semaphore").size());
}

TEST_F(PageNames, matchTheSettings)
{
    std::vector<std::string> keys;
    for (const TableRow& row : tableOf("## Settings"))
        keys.push_back(codeIn(row.at(0)));
    std::vector<std::string> known;
    const zemlink::Report settings = zemlink::settingsReport("");
    for (const auto& [key, value] : settings.items())
        known.push_back(key);
    EXPECT_EQ(keys, known);
}

TEST_F(PageNames, matchTheCompanionsCommandLines)
{
    const std::vector<std::string> patterns = recordedStarts();
    recordCompanionStarts(installation);
    const HostProgram host(installation, "call m_about 0\ncall m_load 0\n"
                                         "set geo_filename C:\\Parts\\a.mcam\ncall m_save 0\n"
                                         "wait-for OnFileNew 60000\n"
                                         "notify 3\nset geo_filename C:\\Parts\\a.mcam\n"
                                         "call m_save 0\nquit\n");
    ASSERT_TRUE(host.waitForTrace(L"ui m_save(0)"));
    ASSERT_TRUE(writeRequest(host.commandFile(), openRequest(-1, ""))); // no request id
    EXPECT_EQ(host.process().waitForExit(), 0u);
    for (const std::string& pattern : patterns)
        EXPECT_TRUE(waitUntil([&] {
            return isRecorded(pattern, companionStarts(installation, 1));
        })) << pattern;
    for (const std::wstring& start : companionStarts(installation, 1))
        EXPECT_EQ(matches(start, patterns), 1) << toUtf8(start);
}

TEST_F(PageNames, matchTheMenu)
{
    const HostProgram host(installation, "choose \ncall m_main 0\nquit\n");
    EXPECT_EQ(host.process().waitForExit(), 0u);
    EXPECT_EQ(linesThatStart(host.trace(), L"ui menu("), Lines{tracedMenu()});
}

TEST_F(PageNames, matchTheMessages)
{
    const std::string library = readBytes(programFolder() + L"torvapdm.dll").value_or("");
    for (const TableRow& row : tableOf("# What the add-in shows, and when", "messages.md"))
        EXPECT_NE(library.find(inUtf16(row.at(0))), library.npos) << row[0];
}
