// The NC-import switch: the answer so far ("n" when the first byte is one), the file.
#include "formats/settings_file.h"
#include "fuzz/differences.h"
#include "fuzz/plain_text.h"
#include "fuzz/targets.h"

namespace fuzzing {

namespace {

// "No" is looked for after "yes", so that it wins within a line.
std::string plainAnswer(const std::string& line, const std::string& before)
{
    if (hasAnywhere(line, "MCXIMPORTNC=n") || hasAnywhere(line, "MCXIMPORTNC=N"))
        return "n";
    if (hasAnywhere(line, "MCXIMPORTNC=y") || hasAnywhere(line, "MCXIMPORTNC=Y"))
        return "y";
    return before;
}

std::string checkNcImportLine(std::string_view bytes)
{
    std::string answer = bytes.substr(0, 1) == "n" ? "n" : "y";
    std::string expected = answer;
    Differences differences;
    for (const std::string& line : linesAsRead(bytes)) {
        torvapdm::applyNcImportLine(line, answer);
        expected = plainAnswer(line, expected);
        differences.compare("answer", answer, expected);
    }
    return differences.text();
}

} // namespace

Target ncImportLineTarget()
{
    return {"nc_import_line",
            checkNcImportLine,
            {"MCXIMPORTNC=n\nMCXIMPORTNC=Y\n", "MCXIMPORTNC=Y MCXIMPORTNC=n\n", "n\nxMCXIMPORTNC=N",
             "n MCXIMPORTNC=y\r\n", "MCXIMPORTNC = n\nMCXIMPORTNC=\n"},
            {"MCXIMPORTNC", "=", "y", "Y", "n", "N", "\n", "MCXIMPORTNC=N", "MCXIMPORTNC=y"}};
}

} // namespace fuzzing
