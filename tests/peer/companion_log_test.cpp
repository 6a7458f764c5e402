#include "peer/companion_log.h"

#include <gtest/gtest.h>

using namespace peer;

namespace {

const std::string moment = "2026-11-21 10:11:12.345";

// `sent id=17 file="C:\a b"`: the name, then the fields, each in brackets; a text in quotes.
std::string eventOf(const std::string& line)
{
    const auto events = parseCompanionLog(line);
    if (events.size() != 1 || !events[0])
        return "none";
    std::string text = events[0]->name;
    for (const EventField& field : events[0]->fields)
        text +=
            " [" + field.name + ' ' + (field.isText ? '"' + field.value + '"' : field.value) + ']';
    return text;
}

} // namespace

TEST(CompanionLog, hasAnEventInEachLine)
{
    const auto events =
        parseCompanionLog(moment + " stopped\n\nhello\n" + moment + " started pid=4\n");
    ASSERT_EQ(events.size(), 4u);
    ASSERT_TRUE(events[0] && events[3]);
    EXPECT_EQ(events[0]->time, moment);
    EXPECT_EQ(events[0]->name, "stopped");
    EXPECT_EQ(events[3]->name, "started");
    EXPECT_FALSE(events[1] || events[2]);
}

TEST(CompanionLog, hasFieldsOfTextsNumbersAndWords)
{
    EXPECT_EQ(eventOf(moment + R"( taken id=-7 after=83.1ms request=open file="C:\a b.mcam")"),
              R"(taken [id -7] [after 83.1ms] [request open] [file "C:\a b.mcam"])");
    EXPECT_EQ(eventOf(moment + R"( line bytes=0 hex= text="")"),
              R"(line [bytes 0] [hex ] [text ""])");
    EXPECT_EQ(eventOf(moment + R"( command text="--send "a b" --host 4")"),
              R"(command [text "--send "a b" --host 4"])");
    EXPECT_EQ(eventOf(moment + R"( commit file="C:\a" id=1 from=torvapdm-4.dat)"),
              R"(commit [file "C:\a"] [id 1] [from torvapdm-4.dat])");
}

TEST(CompanionLog, excludesOtherLines)
{
    for (const std::string& line :
         {std::string("2026-11-21 10:11:12 stopped"), std::string("a=b"), moment, moment + ' ',
          moment + "stopped", moment + " Stopped", moment + " sent id", moment + " sent  id=1",
          moment + R"( sent file="C:\a)", moment + R"( sent file="C:\a"b)"})
        EXPECT_EQ(eventOf(line), "none") << line;
}
