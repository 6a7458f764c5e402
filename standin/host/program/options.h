// The program's options.
#pragma once

#include <string>
#include <vector>

namespace standin {

// An option that is not given is empty.
struct Options {
    std::wstring addIn;
    std::wstring part;
    std::wstring script;
    std::wstring trace;
};

// The words of this process's command line, without the program's name.
std::vector<std::wstring> commandLineWords();

// Reads the options. Sets `error`, a sentence for the user, if a word is wrong.
Options readOptions(const std::vector<std::wstring>& words, std::wstring& error);

// What `--help` prints: the options and the script commands.
std::wstring optionHelp();

} // namespace standin
