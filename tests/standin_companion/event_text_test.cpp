#include "standin/companion/log/event_text.h"

#include <gtest/gtest.h>

using namespace companion;

namespace {

constexpr Moment early{2026, 1, 2, 3, 4, 5, 6};
constexpr Moment late{2026, 11, 21, 10, 11, 12, 345};

} // namespace

TEST(EventLine, isDateTimeEventAndFields)
{
    EXPECT_EQ(eventLine(late, L"sent",
                        numberField(L"id", 17) + numberField(L"host", 4711) +
                            textField(L"file", L"C:\\TORVA\\ZEM\\work\\bracket.mcam")),
              L"2026-11-21 10:11:12.345 sent id=17 host=4711 "
              L"file=\"C:\\TORVA\\ZEM\\work\\bracket.mcam\"\n");
    EXPECT_EQ(eventLine(late, L"taken",
                        numberField(L"id", 17) + numberField(L"host", 4711) +
                            millisecondsField(L"after", 83.1) + wordField(L"request", L"open")),
              L"2026-11-21 10:11:12.345 taken id=17 host=4711 after=83.1ms request=open\n");
}

TEST(EventLine, padsDateAndTimeWithZeros)
{
    EXPECT_EQ(eventLine(early, L"stopped", L""), L"2026-01-02 03:04:05.006 stopped\n");
}

TEST(EventFields, startWithASpace)
{
    EXPECT_EQ(numberField(L"id", -1), L" id=-1");
    EXPECT_EQ(numberField(L"id", 4294967295), L" id=4294967295");
    EXPECT_EQ(textField(L"reason", L""), L" reason=\"\"");
    EXPECT_EQ(wordField(L"request", L"new-file"), L" request=new-file");
}

TEST(EventFields, doNotEscapeTexts)
{
    EXPECT_EQ(textField(L"text", L"--send \"a b\" \\ \u4E2D"),
              L" text=\"--send \"a b\" \\ \u4E2D\"");
}

TEST(EventFields, keepAnEventOnOneLine)
{
    EXPECT_EQ(textField(L"title", L"a\r\nb\tc\x7F"), L" title=\"a  b c \"");
}

TEST(EventFields, showMillisecondsWithOneDecimal)
{
    EXPECT_EQ(millisecondsField(L"after", 0), L" after=0.0ms");
    EXPECT_EQ(millisecondsField(L"after", 1234.56), L" after=1234.6ms");
}

TEST(TimeOfDay, isTheTimeWithoutTheDate)
{
    EXPECT_EQ(timeOfDay(early), L"03:04:05.006");
    EXPECT_EQ(timeOfDay(late), L"10:11:12.345");
}

TEST(EventTitle, existsForEveryEvent)
{
    const std::pair<const wchar_t*, const wchar_t*> titles[] = {
        {L"started", L"Started"},
        {L"stopped", L"Stopped"},
        {L"command", L"Command"},
        {L"not-understood", L"Not understood"},
        {L"library", L"Library read"},
        {L"library-line-bad", L"Library line left out"},
        {L"host-found", L"Host started"},
        {L"host-gone", L"Host closed"},
        {L"check-out", L"Check-out requested"},
        {L"commit", L"Commit"},
        {L"version", L"New version"},
        {L"new-part", L"New part"},
        {L"commit-failed", L"Commit failed"},
        {L"commit-waits", L"Commit waits"},
        {L"commit-known", L"Commit known"},
        {L"commits-left", L"Commits left over"},
        {L"commit-skipped", L"Bytes skipped"},
        {L"picture-kept", L"Picture kept"},
        {L"about", L"About"},
        {L"kept", L"Changed work kept"},
        {L"settings", L"Machine settings"},
        {L"sent", L"Sent to host"},
        {L"new-file", L"New file sent"},
        {L"check-in", L"Check-in sent"},
        {L"taken", L"Taken by host"},
        {L"not-taken", L"Not taken"},
        {L"lost", L"Lost"},
        {L"not-sent", L"Not sent"},
        {L"refused", L"Refused"},
        {L"port-taken", L"Port taken"},
        {L"port-open", L"Port open"},
        {L"line", L"Line received"},
        {L"setup-sheet", L"Setup sheet"},
        {L"setup-sheet-unreadable", L"Setup sheet unreadable"},
        {L"commit-notice", L"Commit notice"},
        {L"tool-data", L"Tool data"},
        {L"tool", L"Tool"},
        {L"tool-record-bad", L"Tool record left out"},
        {L"tool-records-bad", L"Tool records left out"},
        {L"tool-data-unreadable", L"Tool data unreadable"},
        {L"nc-queue", L"NC queue"},
        {L"nc-program", L"NC program"},
        {L"nc-queue-line-bad", L"NC queue line left out"},
        {L"nc-queue-lines-bad", L"NC queue lines left out"},
        {L"nc-queue-unreadable", L"NC queue unreadable"},
    };
    for (const auto& [event, title] : titles)
        EXPECT_EQ(eventTitle(event), title);
}

TEST(EventTitle, isTheEventIfUnknown)
{
    EXPECT_EQ(eventTitle(L"something-new"), L"something-new");
}

TEST(BytesField, isUpperCaseHexadecimal)
{
    EXPECT_EQ(bytesField(L"hex", std::string("TOOL-7\n\0\xAF\xFF", 10)),
              L" hex=544F4F4C2D370A00AFFF");
    EXPECT_EQ(bytesField(L"hex", ""), L" hex=");
}
