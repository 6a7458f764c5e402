// What a program without a console window prints for the person or the script that started it.
#pragma once

#include <string_view>

namespace standin {

enum class Output { result, error }; // standard output or standard error

// Writes the text, as UTF-8 and with a line feed at its end, to the output that the program was
// started with, otherwise to the console of the process that started it. False if there is neither.
bool printText(Output output, std::wstring_view text);

// The same, or a message box where there is no output. It returns when the box is closed.
void printOrShow(Output output, std::wstring_view text, const wchar_t* boxTitle);

} // namespace standin
