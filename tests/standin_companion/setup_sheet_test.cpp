#include "standin/companion/app/setup_sheet.h"
#include "standin/companion/app/xml_tags.h"

#include <gtest/gtest.h>

using namespace companion;

namespace {

constexpr wchar_t sheetText[] = LR"(<?xml version="1.0" encoding="UTF-8"?>
<!-- <tool number="99"/> -->
<setupSheet file="C:\a &amp; b\bracket.mcam" title="&lt;Bracket&gt;" machine="C:\M\Mill.mmd">
  <operations count="3" seconds="3683.6">
    <operation id="1" type="2" group="Setup 1" depth="-12.5" ncFile="ONE" seconds="83.6">
      <tool number="4" diameter="10" cornerRadius="0.5" feed="900" comment="End &quot;mill&quot;"/>
    </operation>
    <operation id="2" type="3" group="" depth="0" ncFile="TWO" seconds="3600">
      <tool number="4" diameter="10" cornerRadius="0.5" feed="900" comment="End &quot;mill&quot;"/>
    </operation>
    <operation id="3" type="3" group="" depth="1" ncFile="TWO" seconds="0">
      <tool number="5" diameter="6" cornerRadius="0" feed="300" comment="Drill"/>
    </operation>
  </operations>
</setupSheet>
)";

} // namespace

TEST(CompanionSetupSheet, namesPartMachineAndTime)
{
    const auto sheet = readSetupSheet(sheetText);
    ASSERT_TRUE(sheet.has_value());
    EXPECT_EQ(sheet->file, L"C:\\a & b\\bracket.mcam");
    EXPECT_EQ(sheet->title, L"<Bracket>");
    EXPECT_EQ(sheet->machine, L"C:\\M\\Mill.mmd");
    EXPECT_EQ(sheet->seconds, L"3683.6");
}

TEST(CompanionSetupSheet, listsOperationsAndDistinctTools)
{
    const SetupSheet sheet = readSetupSheet(sheetText).value_or(SetupSheet{});
    EXPECT_EQ(operationRows(sheet),
              (SheetRows{{L"1", L"2", L"Setup 1", L"4", L"-12.5", L"ONE", L"1:24"},
                         {L"2", L"3", L"", L"4", L"0", L"TWO", L"1:00:00"},
                         {L"3", L"3", L"", L"5", L"1", L"TWO", L"0:00"}}));
    EXPECT_EQ(toolRows(sheet), (SheetRows{{L"4", L"10", L"0.5", L"900", L"End \"mill\""},
                                          {L"5", L"6", L"0", L"300", L"Drill"}}));
}

TEST(CompanionSetupSheet, isACompleteDocument)
{
    EXPECT_TRUE(readSetupSheet(L"<setupSheet/>").has_value());
    for (const wchar_t* text :
         {L"", L"plain text", L"<html></html>", L"<setupSheet>", L"</setupSheet>",
          L"<setupSheet><operations></setupShe", L"<setupSheet file=>", L"<setupSheet file=\"a>",
          L"<?xml", L"<!-- <setupSheet/>"})
        EXPECT_FALSE(readSetupSheet(text).has_value()) << text;
}

TEST(XmlTags, haveNamesAndAttributes)
{
    const auto tags = readTags(L" <a  b=\"1\"\tc=\"\" ><d/></a >");
    ASSERT_TRUE(tags.has_value());
    ASSERT_EQ(tags->size(), 3u);
    EXPECT_EQ((*tags)[0].name, L"a");
    EXPECT_EQ((*tags)[0].attributes.at(L"b"), L"1");
    EXPECT_EQ((*tags)[0].attributes.at(L"c"), L"");
    EXPECT_TRUE((*tags)[0].isStart && !(*tags)[0].isEnd);
    EXPECT_TRUE((*tags)[1].isStart && (*tags)[1].isEnd);
    EXPECT_TRUE(!(*tags)[2].isStart && (*tags)[2].isEnd);
}

TEST(XmlTags, resolveNamedReferencesOnce)
{
    const auto tags = readTags(L"<a b=\"&amp;lt; &lt;&gt;&apos;&quot; &nbsp; &#65; &\"/>");
    ASSERT_TRUE(tags.has_value());
    EXPECT_EQ(tags->front().attributes.at(L"b"), L"&lt; <>'\" &nbsp; &#65; &");
}

TEST(DurationText, isHoursMinutesAndSeconds)
{
    const std::pair<const wchar_t*, const wchar_t*> durations[] = {
        {L"0", L"0:00"},       {L"59.4", L"0:59"},      {L"59.6", L"1:00"}, {L"3599", L"59:59"},
        {L"3600", L"1:00:00"}, {L"36061", L"10:01:01"}, {L"", L""},         {L"-1", L"-1"},
        {L"soon", L"soon"},    {L"1 s", L"1 s"},        {L"1e99", L"1e99"}, {L"nan", L"nan"},
    };
    for (const auto& [seconds, text] : durations)
        EXPECT_EQ(durationText(seconds), text);
}
