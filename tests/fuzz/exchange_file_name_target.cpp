// The exchange file's name: seconds, folder.
#include "formats/checkout_answer.h"
#include "fuzz/differences.h"
#include "fuzz/input.h"
#include "fuzz/plain_text.h"
#include "fuzz/targets.h"

namespace fuzzing {

namespace {

// The low 16 bits of a product are made by those of its factors alone.
std::wstring plainName(const std::wstring& folder, std::int64_t seconds)
{
    const std::int64_t low = (seconds % 65536 + 65536) % 65536;
    const std::int64_t number = low * (275604541 % 65536) % 65536;
    return folder + L"\\TORVA ZEM-" + widened(std::to_string(number)) + L".tmp";
}

std::string checkExchangeFileName(std::string_view bytes)
{
    Input input(bytes);
    const auto seconds = input.number<std::int64_t>();
    const std::wstring folder = input.wideRest();
    Differences differences;
    differences.compare("name", torvapdm::formatAnswerPath(folder, seconds),
                        plainName(folder, seconds));
    return differences.text();
}

} // namespace

Target exchangeFileNameTarget()
{
    return {"exchange_file_name",
            checkExchangeFileName,
            {raw(std::int64_t{1}) + "C:\\Temp\\", raw(std::int64_t{1790000000}) + "C:\\T\\",
             raw(std::int64_t{-1}), raw(std::int64_t{0}), std::string(8, '\xFF') + "x"},
            {"C:\\", "\\"}};
}

} // namespace fuzzing
