// Runs of the programs that write or read the bytes shown in the pages' dumps.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace documents {

// The Companion's installation folder in the dumps.
inline constexpr wchar_t installationOfThePages[] = L"C:\\ZEM";

// Bytes written by a program, by the names of the dumps that show them.
using Made = std::map<std::string, std::string>;

// One run in its own process.
struct ExchangeRun {
    const char* name;
    std::vector<std::string> dumps; // the dumps it produces
    Made (*make)();
};

extern const std::vector<ExchangeRun> exchangeRuns;

// For bytes that no program here writes: a program receives the dump's bytes and must do what the
// page describes.
struct GivenBytes {
    const char* dump;
    void (*give)(const std::string& bytes);
};

extern const std::vector<GivenBytes> givenBytes;

} // namespace documents
