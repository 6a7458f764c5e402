// write_seeds FOLDER: writes each target's seeds into FOLDER/TARGET/ and its tokens into
// FOLDER/TARGET.dict, for the coverage-guided fuzzer.
#include "fuzz/target.h"

#include <cstdio>
#include <filesystem>
#include <fstream>

using namespace fuzzing;

namespace {

void writeFile(const std::filesystem::path& path, const std::string& bytes)
{
    std::ofstream(path, std::ios::binary)
        .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

// One line per token, in double quotes, with every byte as \xHH.
std::string dictionaryOf(const std::vector<std::string>& tokens)
{
    std::string text;
    for (const std::string& token : tokens) {
        text += '"';
        for (const char byte : token) {
            char shown[8];
            std::snprintf(shown, sizeof shown, "\\x%02X", static_cast<unsigned char>(byte));
            text += shown;
        }
        text += "\"\n";
    }
    return text;
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 2)
        return 2;
    const std::filesystem::path folder = arguments[1];
    for (const Target& target : allTargets()) {
        std::filesystem::create_directories(folder / target.name);
        for (size_t i = 0; i < target.seeds.size(); ++i)
            writeFile(folder / target.name / std::to_string(i), target.seeds[i]);
        writeFile(folder / (std::string(target.name) + ".dict"), dictionaryOf(target.tokens));
    }
}
