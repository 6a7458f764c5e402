// The shipped library's file, as seen by the loader and the host.
#include "support/bytes.h"
#include "support/installation.h"

#include <algorithm>
#include <cstddef>
#include <gtest/gtest.h>
#include <set>
#include <span>
#include <string>
#include <vector>
#include <windows.h>

namespace {

class AddInLibrary : public ::testing::Test {
protected:
    AddInLibrary()
        : module_(LoadLibraryExW((testing_support::programFolder() + L"torvapdm.dll").c_str(),
                                 nullptr, DONT_RESOLVE_DLL_REFERENCES))
    {
    }
    ~AddInLibrary() override { FreeLibrary(module_); }

    void SetUp() override { ASSERT_NE(module_, nullptr); }

    const IMAGE_NT_HEADERS64& headers() const
    {
        const auto* const dos = at<IMAGE_DOS_HEADER>(0);
        return *at<IMAGE_NT_HEADERS64>(static_cast<DWORD>(dos->e_lfanew));
    }
    template <class T>
    const T* at(DWORD offset) const
    {
        return reinterpret_cast<const T*>(reinterpret_cast<const BYTE*>(module_) + offset);
    }
    template <class T>
    const T* directory(int number) const
    {
        return at<T>(headers().OptionalHeader.DataDirectory[number].VirtualAddress);
    }
    std::set<std::string> exportedNames() const
    {
        const auto* const table = directory<IMAGE_EXPORT_DIRECTORY>(IMAGE_DIRECTORY_ENTRY_EXPORT);
        EXPECT_EQ(table->NumberOfFunctions, table->NumberOfNames);
        const DWORD* const names = at<DWORD>(table->AddressOfNames);
        std::set<std::string> found;
        for (DWORD i = 0; i < table->NumberOfNames; ++i)
            found.insert(at<char>(names[i]));
        return found;
    }
    std::set<std::string> importedLibraries() const
    {
        std::set<std::string> found;
        for (const auto* row = directory<IMAGE_IMPORT_DESCRIPTOR>(IMAGE_DIRECTORY_ENTRY_IMPORT);
             row->Name; ++row)
            found.insert(at<char>(row->Name));
        return found;
    }
    std::span<const IMAGE_SECTION_HEADER> sections() const
    {
        const auto* const optional = reinterpret_cast<const BYTE*>(&headers().OptionalHeader);
        const auto* const first = reinterpret_cast<const IMAGE_SECTION_HEADER*>(
            optional + headers().FileHeader.SizeOfOptionalHeader);
        return {first, headers().FileHeader.NumberOfSections};
    }
    // True if the address is in a code section.
    bool isExecuted(DWORD place) const
    {
        const auto all = sections();
        return std::any_of(all.begin(), all.end(), [place](const IMAGE_SECTION_HEADER& section) {
            return (section.Characteristics & IMAGE_SCN_MEM_EXECUTE) &&
                   place >= section.VirtualAddress &&
                   place < section.VirtualAddress + section.Misc.VirtualSize;
        });
    }
    // The functions imported by name from this library.
    std::set<std::string> importedNames(const std::string& library) const
    {
        std::set<std::string> found;
        for (const auto* row = directory<IMAGE_IMPORT_DESCRIPTOR>(IMAGE_DIRECTORY_ENTRY_IMPORT);
             row->Name; ++row) {
            if (at<char>(row->Name) != library)
                continue;
            for (const auto* thunk = at<IMAGE_THUNK_DATA64>(row->OriginalFirstThunk);
                 thunk->u1.AddressOfData; ++thunk)
                found.insert(at<char>(static_cast<DWORD>(thunk->u1.AddressOfData +
                                                         offsetof(IMAGE_IMPORT_BY_NAME, Name))));
        }
        return found;
    }
    static std::string file()
    {
        return testing_support::readBytes(testing_support::programFolder() + L"torvapdm.dll")
            .value_or("");
    }
    std::wstring string(UINT id) const
    {
        wchar_t text[256];
        const int length = LoadStringW(module_, id, text, 256);
        return {text, static_cast<size_t>(length)};
    }
    // The UTF-16 strings in a dialog resource.
    bool dialogSays(int id, const std::wstring& text) const
    {
        const HRSRC place = FindResourceW(module_, MAKEINTRESOURCEW(id), RT_DIALOG);
        if (!place)
            return false;
        const auto* const bytes =
            static_cast<const char*>(LockResource(LoadResource(module_, place)));
        const std::string all(bytes, SizeofResource(module_, place));
        return all.find(std::string(reinterpret_cast<const char*>(text.c_str()),
                                    text.size() * sizeof(wchar_t))) != all.npos;
    }

    const HMODULE module_;
};

} // namespace

TEST_F(AddInLibrary, exportsItsFourteenEntryPoints)
{
    EXPECT_EQ(exportedNames(),
              (std::set<std::string>{"m_version", "m_open", "m_close", "m_notify", "m_main",
                                     "m_about", "m_tools", "m_load", "m_save", "importNCqueue",
                                     "importNC", "renameNC", "DrawTool", "TestFunction"}));
}

TEST_F(AddInLibrary, importsOnlyHostAndSystemLibraries)
{
    std::set<std::string> others = importedLibraries();
    for (const char* host : {"Mastercam.dll", "MCCore.dll", "MCMill.dll", "MCMachineDef.dll"})
        EXPECT_EQ(others.erase(host), 1u) << host;
    const std::set<std::string> windows = {"ADVAPI32.dll", "GDI32.dll",  "KERNEL32.dll",
                                           "SHELL32.dll",  "USER32.dll", "WS2_32.dll",
                                           "msvcrt.dll"};
    EXPECT_TRUE(std::includes(windows.begin(), windows.end(), others.begin(), others.end()))
        << testing::PrintToString(others);
}

TEST_F(AddInLibrary, loadsNoOtherLibrary)
{
    for (const int table : {IMAGE_DIRECTORY_ENTRY_DELAY_IMPORT, IMAGE_DIRECTORY_ENTRY_BOUND_IMPORT})
        EXPECT_EQ(headers().OptionalHeader.DataDirectory[table].Size, 0u) << table;
}

TEST_F(AddInLibrary, importsNoCallThatBindsAPort)
{
    const std::set<std::string> sockets = importedNames("WS2_32.dll");
    EXPECT_EQ(sockets.count("connect"), 1u);
    EXPECT_EQ(sockets.count("bind"), 0u);
}

TEST_F(AddInLibrary, exportsOnlyItsOwnCode)
{
    const auto& range = headers().OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT];
    const auto* const table = directory<IMAGE_EXPORT_DIRECTORY>(IMAGE_DIRECTORY_ENTRY_EXPORT);
    const DWORD* const places = at<DWORD>(table->AddressOfFunctions);
    for (DWORD i = 0; i < table->NumberOfFunctions; ++i) {
        EXPECT_TRUE(isExecuted(places[i])) << i;
        EXPECT_FALSE(places[i] >= range.VirtualAddress &&
                     places[i] < range.VirtualAddress + range.Size)
            << i << " is another library's";
    }
}

TEST_F(AddInLibrary, hasHardenedHeaders)
{
    EXPECT_EQ(headers().FileHeader.Machine, IMAGE_FILE_MACHINE_AMD64);
    const WORD traits = headers().OptionalHeader.DllCharacteristics;
    EXPECT_TRUE(traits & IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE);
    EXPECT_TRUE(traits & IMAGE_DLLCHARACTERISTICS_HIGH_ENTROPY_VA);
    EXPECT_TRUE(traits & IMAGE_DLLCHARACTERISTICS_NX_COMPAT);
    EXPECT_GT(headers().OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_BASERELOC].Size, 0u);
    EXPECT_FALSE(headers().FileHeader.Characteristics & IMAGE_FILE_RELOCS_STRIPPED);
}

TEST_F(AddInLibrary, hasNoWritableCode)
{
    ASSERT_FALSE(sections().empty());
    for (const IMAGE_SECTION_HEADER& section : sections()) {
        const DWORD traits = section.Characteristics;
        EXPECT_FALSE((traits & IMAGE_SCN_MEM_WRITE) && (traits & IMAGE_SCN_MEM_EXECUTE));
        EXPECT_FALSE(traits & IMAGE_SCN_MEM_SHARED);
    }
}

TEST_F(AddInLibrary, guardsItsStackFrames)
{
    const std::string endsTheProcess("\xB9\x02\0\0\0\xCD\x29", 7); // mov ecx, 2; int 0x29
    EXPECT_NE(file().find(endsTheProcess), std::string::npos);
}

// One call can link a large part of a runtime library.
TEST_F(AddInLibrary, isSmallerThan400KB)
{
    EXPECT_LT(file().size(), 400u * 1024);
}

TEST_F(AddInLibrary, describesCommandsInItsStringTable)
{
    const std::vector<std::wstring> texts = {
        L"Main TORVA ZEM menu.", L"Load new file from TORVA ZEM.", L"Save file to TORVA ZEM.",
        L"About TORVA ZEM.",     L"Exchange Tools with TORVA ZEM", L"Rename NC files in Mastercam",
        L"Import NC files",      L"Import NC-files to queue",      L"Import Tools from TORVA ZEM"};
    for (UINT i = 0; i < texts.size(); ++i)
        EXPECT_EQ(string(10 + i), texts[i]);
    EXPECT_NE(FindResourceExW(module_, RT_STRING, MAKEINTRESOURCEW(1),
                              MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US)),
              nullptr);
    EXPECT_EQ(string(9), L"");
    EXPECT_EQ(string(19), L"");
}

TEST_F(AddInLibrary, keepsItsTwoDialogs)
{
    EXPECT_TRUE(dialogSays(101, L"Tool change from ZEM detected, load new tools?"));
    EXPECT_TRUE(
        dialogSays(102, L"File changes detected, save file and save file to ZEM before exit?"));
    for (const int dialog : {101, 102}) {
        EXPECT_TRUE(dialogSays(dialog, std::wstring(L"\6\0\xFFFF\x80Yes", 7))); // IDYES, a button
        EXPECT_TRUE(dialogSays(dialog, std::wstring(L"\7\0\xFFFF\x80No", 6)));
        EXPECT_FALSE(dialogSays(dialog, std::wstring(L"\1\0\xFFFF\x80", 4))); // no OK
    }
}

TEST_F(AddInLibrary, carriesItsVersion)
{
    EXPECT_NE(FindResourceW(module_, MAKEINTRESOURCEW(VS_VERSION_INFO), RT_VERSION), nullptr);
}

TEST(LoadedAddIn, startsNothingBeforeItIsOpened)
{
    const testing_support::Installation installation;
    const HMODULE module =
        LoadLibraryW((testing_support::programFolder() + L"torvapdm.dll").c_str());
    ASSERT_NE(module, nullptr);
    EXPECT_EQ(GetFileAttributesW(installation.commandFile(GetCurrentProcessId()).c_str()),
              INVALID_FILE_ATTRIBUTES);
    for (const char* name : {"m_open", "m_notify", "m_save", "DrawTool"})
        EXPECT_NE(GetProcAddress(module, name), nullptr);
    EXPECT_TRUE(FreeLibrary(module));
}
