// The list of recent files: any number of files, each an id of one byte and a path.
#include "incoming/recent_files.h"
#include "fuzz/differences.h"
#include "fuzz/input.h"
#include "fuzz/targets.h"

namespace fuzzing {

namespace {

using torvapdm::CompanionFile;

std::vector<CompanionFile> plainList(const std::vector<CompanionFile>& before, const CompanionFile& file)
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

Target recentFileListTarget()
{
    return {"recent_file_list",
            checkRecentFileList,
            {"1a\x1F"
             "2b\x1F"
             "3a\x1F",
             "1C:\\a\x1F"
             "2C:\\A\x1F",
             manyFiles(20), manyFiles(25), manyFiles(22) + manyFiles(3) + manyFiles(23),
             "\x1F\x1F\x1F\x1F"},
            {"1a\x1F", "2b\x1F", "3C\x1F", "4D\x1F", "5\x1F"}};
}

} // namespace fuzzing
