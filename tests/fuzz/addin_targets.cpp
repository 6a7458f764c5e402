// The version, the document's name and the list of recent files.
#include "addin/exports.h"
#include "fuzz/differences.h"
#include "fuzz/input.h"
#include "fuzz/target.h"
#include "incoming/document_name.h"
#include "incoming/recent_files.h"

#include <algorithm>

namespace fuzzing {

namespace {

using torvapdm::CompanionFile;

std::string checkDeclaredVersion(std::string_view bytes)
{
    const auto host = Input(bytes).number<std::int32_t>();
    const bool isEchoed = (host >= 1100 && host <= 1199) || (host >= 2100 && host <= 2199);
    return Differences()
        .compare("version", torvapdm::declaredVersion(host), isEchoed ? host : 2100)
        .text();
}

// Input: title, path.
std::string checkDocumentName(std::string_view bytes)
{
    Input input(bytes);
    const std::wstring title = input.wideField();
    const std::wstring path = input.wideRest();
    std::wstring expected = title.substr(0, title.rfind(L"  ")) + L"  ";
    for (const wchar_t unit : path)
        expected += unit >= L'a' && unit <= L'z' ? static_cast<wchar_t>(unit - L'a' + L'A') : unit;
    return Differences()
        .compare("name", torvapdm::mcamNameOf(path), path.substr(0, path.rfind(L'.')) + L".mcam")
        .compare("title", torvapdm::titleForDocument(title, path), expected)
        .text();
}

// A file that is already in the list moves to the front; the list keeps 20 entries after it.
std::vector<CompanionFile> plainList(std::vector<CompanionFile> list, const CompanionFile& file)
{
    const auto old = std::ranges::find(list, file.path, &CompanionFile::path);
    if (old != list.end())
        list.erase(old);
    list.insert(list.begin(), file);
    list.resize(std::min(list.size(), size_t{21}));
    return list;
}

std::wstring textOf(const std::vector<CompanionFile>& files, size_t i)
{
    return i < files.size() ? std::to_wstring(files[i].id) + L' ' + files[i].path : L"(none)";
}

// Input: any number of files, each a one-byte id and a path.
std::string checkRecentFileList(std::string_view bytes)
{
    Input input(bytes);
    std::vector<CompanionFile> answer;
    std::vector<CompanionFile> expected;
    Differences differences;
    while (!input.isAtEnd() && differences.text().empty()) {
        const std::int32_t id = input.number<signed char>();
        const std::wstring path = input.wideField();
        torvapdm::addRecentFile(answer, {id, path});
        expected = plainList(expected, {id, path});
        for (size_t i = 0; i < std::max(answer.size(), expected.size()); ++i)
            differences.compare("entry", textOf(answer, i), textOf(expected, i));
    }
    return differences.text();
}

// This many files, each with a different path.
std::string manyFiles(char count)
{
    std::string bytes;
    for (char i = 0; i < count; ++i)
        bytes += std::string{i, static_cast<char>('A' + i), fieldEnd};
    return bytes;
}

} // namespace

std::vector<Target> addInTargets()
{
    return {{"declared_version",
             checkDeclaredVersion,
             {raw(2100), raw(2150), raw(1105), raw(2200), raw(-1100), raw(1199), raw(1099)},
             {raw(1100), raw(2199), raw(2147483647), raw(-2147483647 - 1)}},
            {"document_name",
             checkDocumentName,
             {"Host - part  C:\\OLD.MCAM\37C:\\Parts\\new.mcam", "Host\37C:\\a.b\\part",
              "a   b\37part.emcam", "\37", "  \37...", "t\37C:\\\1\1a\1\1z.m"},
             {".", "  ", "\\", ".mcam", "C:\\", "/", "\37"}},
            {"recent_file_list",
             checkRecentFileList,
             {"1a\0372b\0373a\37", "1C:\\a\0372C:\\A\37", manyFiles(20), manyFiles(25),
              manyFiles(22) + manyFiles(3) + manyFiles(23), "\37\37\37\37"},
             {"1a\37", "2b\37", "3C\37", "4D\37", "5\37"}}};
}

std::vector<Target> allTargets()
{
    std::vector<Target> all;
    for (const auto& targets : {formatTargets(), recordTargets(), addInTargets(), pictureTargets()})
        all.insert(all.end(), targets.begin(), targets.end());
    return all;
}

} // namespace fuzzing
