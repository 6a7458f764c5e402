#include "standin/companion/log/status_text.h"

#include <gtest/gtest.h>

using companion::statusText;

namespace {

// The sentence for this event, as it would be in the log.
std::wstring sentence(const std::string& event)
{
    const auto events = peer::parseCompanionLog("2026-11-21 10:11:12.345 " + event + "\n");
    return events.size() == 1 && events[0] ? statusText(*events[0]) : L"not an event";
}

} // namespace

TEST(StatusText, followsARequestToItsEnd)
{
    EXPECT_EQ(sentence(R"(sent id=17 host=4711 file="C:\a b\bracket.mcam")"),
              L"Sent C:\\a b\\bracket.mcam to Mastercam 4711; waiting until it is taken.");
    EXPECT_EQ(sentence("taken id=17 host=4711 after=83.1ms request=open"),
              L"Mastercam 4711 took the open request after 83.1 ms.");
    EXPECT_EQ(sentence("not-taken id=17 host=4711 after=10000.4ms request=new-file"),
              L"Not taken: after 10000.4 ms the new-file request is still in the command file of "
              L"Mastercam 4711.");
    EXPECT_EQ(sentence("lost id=0 host=4711 after=2001.0ms request=check-in"),
              L"Lost: the command file of Mastercam 4711 disappeared with the check-in request.");
    EXPECT_EQ(
        sentence(R"(not-sent id=17 host=4711 reason="there is no command file" request=open)"),
        L"Not sent to Mastercam 4711: there is no command file.");
}

TEST(StatusText, followsACommitToItsVersion)
{
    EXPECT_EQ(sentence(R"(commit file="C:\a.mcam" id=17 from=torvapdm-12.dat)"),
              L"Received a commit of C:\\a.mcam.");
    EXPECT_EQ(sentence(R"(version name="bracket" version=2 number=17 picture=yes)"),
              L"Committed: bracket is now version 2.");
    EXPECT_EQ(sentence(R"(commit-failed file="C:\a.mcam" id=17 reason="there is no such file")"),
              L"Not committed: there is no such file: C:\\a.mcam");
    EXPECT_EQ(sentence(R"(commit-waits file="C:\a.mcam" id=17 reason="it is open elsewhere")"),
              L"The commit of C:\\a.mcam waits: it is open elsewhere.");
}

TEST(StatusText, saysWhatBecameOfOtherFiles)
{
    EXPECT_EQ(sentence("tool-data id=17"), L"Received the tool data of request 17.");
    EXPECT_EQ(sentence("tool-record-bad line=3"), L"Line 3 of the tool data is not a tool record.");
    EXPECT_EQ(sentence(R"(new-part number=43 name="plate" file="C:\plate.mcam")"),
              L"New part: plate.");
    EXPECT_EQ(sentence(R"(kept id=17 file="C:\a.mcam.kept-1")"),
              L"The changed file was moved to C:\\a.mcam.kept-1.");
    EXPECT_EQ(sentence(R"(commit-skipped from=torvapdm-12.dat offset=8 bytes=5 file="C:\x.bin")"),
              L"5 bytes of torvapdm-12.dat are not a commit record; they are kept in C:\\x.bin.");
}

TEST(StatusText, keepsATextThatLooksLikeAField)
{
    EXPECT_EQ(sentence(R"(refused reason="no {host} 5ms")"), L"Refused: no {host} 5ms.");
}

TEST(StatusText, ignoresEventsThatAreNoOutcome)
{
    EXPECT_EQ(sentence(R"(line bytes=1 hex=0A text="")"), L"");
    EXPECT_EQ(sentence("library items=4"), L"");
}
