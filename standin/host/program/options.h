// The program's command line.
#pragma once

#include <optional>
#include <string>

namespace standin {

// Each empty when it is not given.
struct Options {
    std::wstring addIn;
    std::wstring part;
    std::wstring script;
    std::wstring trace;
};

// Mastercam.exe [--addin DLL] [--part FILE] [--script FILE] [--trace FILE]. Nothing when the
// command line is none of that form.
std::optional<Options> readOptions(const wchar_t* commandLine);

} // namespace standin
