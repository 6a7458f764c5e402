#include "bench/processor_time.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

namespace bench {

namespace {

constexpr double msPerTick = 10;

// Its size is not known before it has been read.
std::string contentOf(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

// The fields after the program's name, which is in parentheses and may contain spaces.
double processorMsIn(const std::string& status)
{
    constexpr int fieldsBefore = 11; // the state, and ten numbers
    std::istringstream fields(status.substr(status.rfind(')') + 1));
    std::string other;
    for (int i = 0; i < fieldsBefore; ++i)
        fields >> other;
    double user = 0, kernel = 0;
    fields >> user >> kernel;
    return msPerTick * (user + kernel);
}

} // namespace

double processorMsOf(const std::string& program, const std::string& text)
{
    double sum = 0;
    std::error_code error;
    for (const auto& process : std::filesystem::directory_iterator("Z:\\proc", error)) {
        const std::string status = contentOf(process.path() / "stat");
        if (status.find('(' + program.substr(0, 15) + ')') != std::string::npos &&
            contentOf(process.path() / "cmdline").find(text) != std::string::npos)
            sum += processorMsIn(status);
    }
    return sum;
}

} // namespace bench
