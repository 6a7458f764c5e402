#include "program/options.h"

#include <string_view>
#include <windows.h>

#include <shellapi.h>

namespace standin {

namespace {

std::wstring* optionOf(Options& options, std::wstring_view word)
{
    if (word == L"--addin")
        return &options.addIn;
    if (word == L"--part")
        return &options.part;
    if (word == L"--script")
        return &options.script;
    return word == L"--trace" ? &options.trace : nullptr;
}

std::optional<Options> readWords(wchar_t** words, int count)
{
    Options options;
    for (int place = 1; place < count; place += 2) {
        std::wstring* const option = optionOf(options, words[place]);
        if (!option || place + 1 == count)
            return std::nullopt;
        *option = words[place + 1];
    }
    return options;
}

} // namespace

std::optional<Options> readOptions(const wchar_t* commandLine)
{
    int count = 0;
    wchar_t** const words = CommandLineToArgvW(commandLine, &count);
    if (!words)
        return std::nullopt;
    std::optional<Options> options = readWords(words, count);
    LocalFree(words);
    return options;
}

} // namespace standin
