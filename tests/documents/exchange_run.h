// Runs of the programs that make what the pages' dumps show, and those that take it.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace documents {

// Where the dumps' Companion is installed.
inline constexpr wchar_t installationOfThePages[] = L"C:\\ZEM";

// Bytes that a program has written, by the names of the dumps that show them.
using Made = std::map<std::string, std::string>;

// One run, in its own process.
struct ExchangeRun {
    const char* name;
    std::vector<std::string> dumps; // that it makes
    Made (*make)();
};

Made requestsOfTheCompanion();
Made roundTripOfAPart();
Made toolDataOfAPart();
Made pictureOfATool();

// What no program writes on the test bed: one is given the dump's bytes and has to do what the
// page says.
struct GivenBytes {
    const char* dump;
    void (*give)(const std::string& bytes);
};

void giveSettings(const std::string& bytes);
void giveCheckoutAnswer(const std::string& bytes);
void giveCheckinAnswer(const std::string& bytes);

} // namespace documents
