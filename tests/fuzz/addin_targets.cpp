// The version, the document's name and the list of recent files.
#include "addin/exports.h"
#include "fuzz/differences.h"
#include "fuzz/input.h"
#include "fuzz/target.h"
#include "incoming/document_name.h"
#include "incoming/recent_files.h"

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

// Title, path.
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

std::vector<CompanionFile> plainList(const std::vector<CompanionFile>& before,
                                     const CompanionFile& file)
{
    std::vector<CompanionFile> list = {file};
    bool hasLostItsOldEntry = false;
    for (const CompanionFile& entry : before)
        if (!hasLostItsOldEntry && entry.path == file.path)
            hasLostItsOldEntry = true;
        else
            list.push_back(entry);
    if (list.size() - 1 > 20)
        list.pop_back();
    return list;
}

std::vector<std::wstring> described(const std::vector<CompanionFile>& files)
{
    std::vector<std::wstring> texts;
    for (const CompanionFile& file : files)
        texts.push_back(std::to_wstring(file.id) + L' ' + file.path);
    return texts;
}

bool areSame(const std::vector<CompanionFile>& a, const std::vector<CompanionFile>& b)
{
    if (a.size() != b.size())
        return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (a[i].id != b[i].id || a[i].path != b[i].path)
            return false;
    return true;
}

// Any number of files, each an id of one byte and a path.
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
        if (!areSame(answer, expected))
            differences.compare("list", described(answer), described(expected));
    }
    return differences.text();
}

// So many files, each of another path.
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
             {"Host - part  C:\\OLD.MCAM\x1F"
              "C:\\Parts\\new.mcam",
              "Host\x1F"
              "C:\\a.b\\part",
              "a   b\x1F"
              "part.emcam",
              "\x1F", "  \x1F...",
              "t\x1F"
              "C:\\\x01\x01\x61\x01\x01\x7A.m"},
             {".", "  ", "\\", ".mcam", "C:\\", "/", "\x1F"}},
            {"recent_file_list",
             checkRecentFileList,
             {"1a\x1F"
              "2b\x1F"
              "3a\x1F",
              "1C:\\a\x1F"
              "2C:\\A\x1F",
              manyFiles(20), manyFiles(25), manyFiles(22) + manyFiles(3) + manyFiles(23),
              "\x1F\x1F\x1F\x1F"},
             {"1a\x1F", "2b\x1F", "3C\x1F", "4D\x1F", "5\x1F"}}};
}

std::vector<Target> allTargets()
{
    std::vector<Target> all;
    for (const auto& targets : {formatTargets(), recordTargets(), addInTargets(), pictureTargets()})
        all.insert(all.end(), targets.begin(), targets.end());
    return all;
}

} // namespace fuzzing
