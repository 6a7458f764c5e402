// The line for a setup sheet: the request's id, the sheet's file.
#include "fuzz/differences.h"
#include "fuzz/input.h"
#include "fuzz/plain_text.h"
#include "fuzz/targets.h"
#include "formats/notices.h"

namespace fuzzing {

namespace {

std::string checkSetupSheetLine(std::string_view bytes)
{
    Input input(bytes);
    const auto id = input.number<std::int32_t>();
    const std::wstring file = input.wideRest();
    const std::string number = std::to_string(std::int64_t{id});
    Differences differences;
    differences.compare("line", torvapdm::formatSetupSheetNotice(id, file),
                        widened("MCAMXMLIMPORTDATAID=" + number + ";") + file);
    return differences.text();
}

} // namespace

Target setupSheetLineTarget()
{
    return {"setup_sheet_line",
            checkSetupSheetLine,
            {raw(42) + "C:\\s.xml", raw(0), raw(-2147483647 - 1) + ";", raw(-1) + "\x01\x03\xA9"},
            {";", "=", "C:\\", "\n"}};
}

} // namespace fuzzing
