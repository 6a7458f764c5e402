#include "program/options.h"

#include "program/script_commands.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <windows.h>

#include <shellapi.h>

namespace standin {

namespace {

struct OptionEntry {
    std::wstring_view word;
    std::wstring_view value;
    std::wstring_view effect;
    std::wstring Options::*option;
};

constexpr OptionEntry optionEntries[] = {
    {L"--addin", L"DLL", L"load this add-in", &Options::addIn},
    {L"--part", L"FILE", L"open this part", &Options::part},
    {L"--script", L"FILE", L"run the commands of this file", &Options::script},
    {L"--trace", L"FILE", L"write every call to this file", &Options::trace},
};

} // namespace

std::wstring optionHelp()
{
    std::wstring lines = L"Mastercam.exe [OPTION VALUE]...\n\n";
    for (const OptionEntry& entry : optionEntries) {
        std::wstring line = std::wstring(entry.word) + L' ' + std::wstring(entry.value);
        line.resize(16, L' ');
        lines.append(L"  ").append(line).append(entry.effect).append(L"\n");
    }
    return lines + L"  --help          show this text\n\nCommands of a script, one a line:\n\n" +
           scriptCommandHelp();
}

Options readOptions(const std::vector<std::wstring>& words, std::wstring& error)
{
    Options options;
    for (size_t place = 0; place < words.size(); place += 2) {
        const auto* const entry =
            std::ranges::find(optionEntries, words[place], &OptionEntry::word);
        if (entry == std::end(optionEntries))
            error =
                L"Unknown option: " + words[place] + L". Mastercam.exe --help lists the options.";
        else if (place + 1 == words.size())
            error = words[place] + L" needs a value: " + words[place] + L' ' +
                    std::wstring(entry->value);
        if (!error.empty())
            break;
        options.*(entry->option) = words[place + 1];
    }
    return options;
}

std::vector<std::wstring> commandLineWords()
{
    int count = 0;
    wchar_t** const words = CommandLineToArgvW(GetCommandLineW(), &count);
    if (!words)
        return {};
    std::vector<std::wstring> list(words + std::min(count, 1), words + count);
    LocalFree(words);
    return list;
}

} // namespace standin
