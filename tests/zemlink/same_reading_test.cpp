// The Companion's parsers against the add-in's: two implementations that share no code, on the same
// thousands of texts, valid and invalid.
#include "formats/checkout_answer.h"
#include "formats/machine_settings_file.h"
#include "fuzz/random.h"
#include "formats/command_file.h"
#include "formats/settings_file.h"
#include "peer/checkout_answer.h"
#include "peer/command_file.h"
#include "peer/machine_settings.h"
#include "peer/settings_file.h"

#include <gtest/gtest.h>

using namespace peer;

namespace {

using Pieces = std::vector<std::string>;

constexpr int texts = 20000;

// A text of up to `most` random pieces.
std::string textOf(const Pieces& pieces, fuzzing::Random& random, unsigned most)
{
    std::string text;
    for (auto left = random.below(most + 1); left > 0; --left)
        text += pieces[static_cast<size_t>(random.below(pieces.size()))];
    return text;
}

std::wstring widened(const std::string& bytes)
{
    std::wstring text;
    for (const char c : bytes)
        text += static_cast<wchar_t>(static_cast<signed char>(c));
    return text;
}

RequestKind kindOf(torvapdm::Command::Kind kind)
{
    using Kind = torvapdm::Command::Kind;
    return kind == Kind::checkIn   ? RequestKind::checkIn
           : kind == Kind::newFile ? RequestKind::newFile
           : kind == Kind::open    ? RequestKind::open
                                   : RequestKind::malformed;
}

// The value as the add-in looks it up, line by line.
std::string addInsValue(const std::vector<std::string>& lines, std::string_view key)
{
    std::string value;
    for (const std::string& line : lines)
        torvapdm::applySettingLine(line, key, value);
    return value;
}

} // namespace

TEST(SameReading, ofRequests)
{
    const Pieces pieces = {"\xEF\xBB\xBF", "CHECKIN", " ", "\n", "\r",  "-", "+", "7",
                           "12",           "C:\\",    "a", "b",  "\xC4"};
    fuzzing::Random random(17);
    for (int i = 0; i < texts; ++i) {
        const std::string start = i % 2 == 0 ? "\xEF\xBB\xBF"
                                               "5 "
                                             : "";
        const std::string text = start + textOf(pieces, random, 8);
        if (text.empty())
            continue; // the add-in ignores an empty file
        const Request ours = parseRequest(text);
        const torvapdm::Command theirs = torvapdm::parseCommand(text);
        ASSERT_EQ(requestName(ours.kind), requestName(kindOf(theirs.kind))) << text;
        if (ours.kind == RequestKind::open || ours.kind == RequestKind::newFile) {
            ASSERT_EQ(ours.id, theirs.file.id) << text;
            ASSERT_EQ(widened(ours.path), theirs.file.path) << text;
        }
    }
}

TEST(SameReading, ofMachineSettings)
{
    const Pieces pieces = {"|", "|", "|", "17", "-3", "0", " ", "C:\\m", "x"};
    fuzzing::Random random(18);
    for (int i = 0; i < texts; ++i) {
        const std::string line = "1" + textOf(pieces, random, 10) + "\n";
        const auto ours = parseMachineSettings(line);
        const torvapdm::MachineSettings theirs = torvapdm::parseMachineSettings(widened(line));
        ASSERT_TRUE(ours) << line;
        ASSERT_EQ(ours->ncPath, theirs.ncPathNumber) << line;
        ASSERT_EQ(ours->secondNumber, theirs.secondNumber) << line;
        ASSERT_EQ(widened(ours->machine), theirs.machinePath) << line;
    }
}

TEST(SameReading, ofCheckoutAnswers)
{
    using Kind = torvapdm::CheckoutAnswer::Kind;
    const Pieces pieces = {"CAD", "CHECKIN", " ",           " ",     "\n", "-",
                           "+",   "7",       "99999999999", "C:\\a", "\t"};
    fuzzing::Random random(20);
    for (int i = 0; i < texts; ++i) {
        const std::wstring text = widened(textOf(pieces, random, 6));
        const CheckoutAnswer ours = parseCheckoutAnswer(
            {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(wchar_t)});
        std::wstring fileType;
        torvapdm::CheckoutAnswer theirs;
        try {
            theirs = torvapdm::parseCheckoutAnswer(text, fileType);
        } catch (const std::out_of_range&) {
            fileType.clear(); // an exception ends the add-in's command
        }
        ASSERT_EQ(ours.kind == AnswerKind::checkIn, theirs.kind == Kind::checkIn) << i;
        ASSERT_EQ(ours.kind == AnswerKind::file, theirs.kind == Kind::file) << i;
        if (theirs.kind == Kind::file) {
            ASSERT_EQ(ours.fileType, fileType) << i;
            ASSERT_EQ(ours.id, theirs.file.id) << i;
            ASSERT_EQ(ours.path, theirs.file.path) << i;
        }
    }
}

TEST(SameReading, ofSettings)
{
    const Pieces pieces = {"UseFtpServer=",
                           "MCXCATIA=",
                           "MCXIMPORTNC=",
                           "AlwaysSaveTools=",
                           "y",
                           "Y",
                           "n",
                           "N",
                           "\n",
                           "\n",
                           "X",
                           "="};
    fuzzing::Random random(19);
    for (int i = 0; i < texts; ++i) {
        const std::string text = textOf(pieces, random, 16);
        const std::vector<std::string> lines = splitSettingLines(text);
        const Settings ours = parseSettings(text);
        std::string import = "y";
        bool areToolsSaved = false;
        for (const std::string& line : lines) {
            torvapdm::applyNcImportLine(line, import);
            areToolsSaved = areToolsSaved || torvapdm::hasAlwaysSaveTools(line);
        }
        for (const char* key : {"UseFtpServer", "MCXCATIA"}) {
            const std::string value = addInsValue(lines, key);
            ASSERT_EQ(findSetting(lines, key), value) << text;
            const bool isOn = std::string_view(key) == "MCXCATIA" ? ours.catia : ours.useFtpServer;
            ASSERT_EQ(isOn, value == "y" || value == "Y") << text;
        }
        ASSERT_EQ(ours.importNc, import == "y") << text;
        ASSERT_EQ(ours.alwaysSaveTools, areToolsSaved) << text;
    }
}
