// The texts of a commit: the ZEM id, the file.
#include "formats/commit_record.h"
#include "fuzz/differences.h"
#include "fuzz/input.h"
#include "fuzz/plain_text.h"
#include "fuzz/targets.h"
#include "formats/notices.h"
#include "formats/command_lines.h"

namespace fuzzing {

namespace {

void appendLow(std::string& bytes, std::uint64_t value, int count)
{
    for (; count > 0; --count, value /= 256)
        bytes += static_cast<char>(static_cast<unsigned char>(value % 256));
}

std::string plainRecord(std::uint32_t zemId, const std::wstring& file)
{
    std::string bytes;
    appendLow(bytes, zemId, 4);
    appendLow(bytes, file.size(), 4);
    for (const wchar_t unit : file)
        appendLow(bytes, static_cast<std::uint64_t>(unit), 2);
    return bytes;
}

std::wstring plainArguments(std::uint32_t zemId, const std::wstring& file)
{
    std::wstring arguments = L"--commit ";
    arguments += L'"';
    arguments += file;
    arguments += L'"';
    if (zemId == 4294967295u)
        arguments += L" --id 4294967295";
    return arguments;
}

std::string checkCommitTexts(std::string_view bytes)
{
    Input input(bytes);
    const auto zemId = input.number<std::uint32_t>();
    const std::string narrow(input.rest());
    const std::wstring file = wideText(narrow);
    Differences differences;
    differences.compare("record", torvapdm::formatCommitRecord(zemId, file), plainRecord(zemId, file));
    differences.compare("notice", torvapdm::formatCommitNotice(zemId, narrow),
                        "ZEMID=" + std::to_string(std::uint64_t{zemId}) + "|" + narrow);
    differences.compare("arguments", torvapdm::formatCommitArguments(zemId, file),
                        plainArguments(zemId, file));
    return differences.text();
}

} // namespace

Target commitTextsTarget()
{
    return {"commit_texts",
            checkCommitTexts,
            {raw(42) + "C:\\parts\\a.mcam", raw(-1) + "C:\\a b.mcam", raw(0), raw(-2) + "\"",
             raw(1) + "\x01\xD8\x3D\x01\xDE\x00"},
            {"\xFF\xFF\xFF\xFF", "\"", "C:\\", std::string(300, 'p'), "\x01\xFF\xFF"}};
}

} // namespace fuzzing
