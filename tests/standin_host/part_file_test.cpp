// Reading and writing part files through the host.
#include "host/host.h"
#include "standin_host/part_texts.h"
#include "support/host_fixture.h"

#include <filesystem>

using namespace testing_support;
using namespace std::string_literals;

namespace {

class PartFile : public HostFixture {
protected:
    bool open(const std::wstring& path)
    {
        bool escaped = false;
        return DoFileOpen(path.c_str(), false, false, 1, true, &escaped, nullptr);
    }
    bool openText(const std::string& text)
    {
        writeBytes(read_, text);
        return open(read_);
    }
    std::string saved()
    {
        EXPECT_TRUE(CFile_DoFileSave(written_.c_str(), nullptr, false, false));
        return readBytes(written_).value_or("no file");
    }
    // What the host writes after reading this text, or "refused".
    std::string rewritten(const std::string& text) { return openText(text) ? saved() : "refused"; }
    void expectRoundTrip(const std::string& text) { EXPECT_EQ(rewritten(text), text); }

private:
    const std::wstring read_ = installation.path(L"read.mcam");
    const std::wstring written_ = installation.path(L"written.mcam");
};

// Every key of every section with a different value, in canonical form.
const std::string everyKey = std::string(R"(mastercam part 1

[part]
title = Plate 40
material = Aluminium 6082
remark = Two set-ups: "first", second

[geometry]
stock = -2 -2 42 42
line = 0 0 40 0.5
arc = 108 12 12 270 360
circle = 20 20 4.25
point = 20 20
line = 40 0 40 40

[plane]
id = 1
name = Top

[plane]
id = -2147483648

[group]
id = 2
parent = 1
name = First side

)") + toolWithEveryKey + "\n" +
                             operationWithEveryKey + R"(path = -10 20 20 20
path = 0 0 1 1 2.5 -3

[no operation]

[operation]
id = 12
)";

std::string group(const std::string& lines)
{
    return "mastercam part 1\n\n[group]\n" + lines + "\n";
}

std::string manyOperations(int count)
{
    std::string text = "mastercam part 1\n";
    for (int i = 1; i <= count; ++i)
        text += "\n[operation]\nid = " + std::to_string(i) +
                "\ngroup = " + std::to_string(i % 7 + 1) +
                "\ntool.number = " + std::to_string(i % 40 + 1) + "\n";
    return text;
}

} // namespace

TEST_F(PartFile, roundTripsShippedParts)
{
    std::vector<std::wstring> names;
    for (const auto& entry :
         std::filesystem::recursive_directory_iterator(programFolder() + L"shipped")) {
        if (entry.path().extension() != L".mcam")
            continue;
        names.push_back(entry.path().wstring());
        ASSERT_TRUE(open(names.back())) << names.back();
        EXPECT_EQ(saved(), readBytes(names.back())) << names.back();
    }
    EXPECT_GE(names.size(), 5u);
}

TEST_F(PartFile, roundTripsEveryKey)
{
    expectRoundTrip(everyKey);
}

TEST_F(PartFile, isEmptyForEmptyPart)
{
    for (const char* nothing :
         {"", "\xEF\xBB\xBF", "mastercam part 1", "mastercam part 1\n# note\n",
          "mastercam part 1\n[part]\n[geometry]\n"}) {
        openText(everyKey);
        EXPECT_EQ(rewritten(nothing), "") << nothing;
        EXPECT_EQ(TpMainOpMgr.GetMainOpList().GetSize(), 0);
    }
}

TEST_F(PartFile, isWrittenInCanonicalForm)
{
    EXPECT_EQ(rewritten("\xEF\xBB\xBFmastercam part 1\r\n"
                        "# a note\r\n"
                        "[operation]\r\ntool-plane = -1\r\ndepth = 1.50\r\nid = 2\r\n"
                        "[group]\n\nname =\nparent = 0\nid = 007\n"
                        "[no operation]\n"
                        "[part]\nremark = r\ntitle = t"),
              "mastercam part 1\n\n[part]\ntitle = t\nremark = r\n\n[group]\nid = 7\n\n"
              "[operation]\nid = 2\ndepth = 1.5\n\n[no operation]\n");
}

TEST_F(PartFile, roundTripsTenThousandOperations)
{
    const std::string text = manyOperations(10000);
    expectRoundTrip(text);
    TpMemLookupList& list = TpMainOpMgr.GetMainOpList();
    ASSERT_EQ(list.GetSize(), 10000);
    EXPECT_EQ(list[0]->operationId, 1);
    EXPECT_EQ(list[9999]->operationId, 10000);
    operation_node* node = nullptr;
    list_manager(1, L"", 0, &node);
    int count = 0;
    for (; node; node = node->next)
        EXPECT_EQ(node->op.operationId, ++count);
    EXPECT_EQ(count, 10000);
}

TEST_F(PartFile, roundTripsNumbersExactly)
{
    for (const char* number :
         {"62.5", "-0.5", "-0", "1e-05", "0.1", "100000", "1e+06", "1234567.5",
          "0.30000000000000004", "1.7976931348623157e+308", "-1.7976931348623157e+308",
          "2.2250738585072014e-308", "4.94066e-324"})
        expectRoundTrip("mastercam part 1\n\n[operation]\ndepth = "s + number +
                        "\ntool-plane-origin = 0 " + number + " 1\n");
}

TEST_F(PartFile, roundTripsEveryCharacter)
{
    for (const char* name :
         {"a \"b\" \\ c", "100%0025", "a%000Ab%000D%0009", "%0020", "%0020a  b%0020", "a%007Fb",
          "%D800", "%DC00%D83D", "M\xC3\xBCller \xE4\xB8\xAD \xF0\x9F\x98\x80", "= [x] #"})
        expectRoundTrip(group("name = "s + name));
}

TEST_F(PartFile, writesSurrogatePairAsOneCharacter)
{
    EXPECT_EQ(rewritten(group("name = %D83D%DE00 %0041")), group("name = \xF0\x9F\x98\x80 A"));
}

TEST_F(PartFile, limitsTextLength)
{
    const std::string text259(259, 'x');
    const std::string comment199(199, 'x');
    expectRoundTrip(group("name = " + text259));
    EXPECT_FALSE(openText(group("name = " + text259 + "x")));
    expectRoundTrip("mastercam part 1\n\n[operation]\ntool.comment = " + comment199 + "\n");
    EXPECT_FALSE(openText("mastercam part 1\n\n[operation]\ntool.comment = x" + comment199 + "\n"));
    expectRoundTrip("mastercam part 1\n\n[plane]\nname = " + std::string(70000, 'x') + "\n");
}

TEST_F(PartFile, acceptsCycleOfGroups)
{
    const std::string ring = group("id = 1\nparent = 3") + "\n[group]\nid = 2\nparent = 1\n" +
                             "\n[group]\nid = 3\nparent = 2\n\n[group]\nid = 4\nparent = 4\n" +
                             "\n[operation]\ngroup = 1\n\n[operation]\ngroup = 4\n";
    expectRoundTrip(ring);
    TpGrpList& groups = TpMainGrpMgr.GetMainGrpList();
    const TpGroup* const first = groups.GroupByID(1);
    const TpGroup* walked = first;
    for (const int parent : {3, 2, 1}) {
        walked = groups.GroupByID(walked->parentId);
        ASSERT_TRUE(walked && walked->groupId == parent);
    }
    EXPECT_EQ(walked, first);
}

TEST_F(PartFile, drawsPartWithCycleOfGroups)
{
    ASSERT_TRUE(openText(group("id = 1\nparent = 2\nname = a") +
                         "\n[group]\nid = 2\nparent = 1\nname = b\n\n[operation]\ngroup = 1\n"));
    EXPECT_TRUE(screen_to_bitmap_file(installation.path(L"ring.bmp").c_str(), false));
}

TEST_F(PartFile, rejectsInvalidFiles)
{
    const char* const broken[] = {
        "x",
        "\n",
        "mastercam part 2\n",
        " mastercam part 1\n",
        "[part]\ntitle = a\n",
        "mastercam part 1\ntitle = a\n",
        "mastercam part 1\n[parts]\n",
        "mastercam part 1\n[part] \n",
        "mastercam part 1\n[part]\n[part]\n",
        "mastercam part 1\n[geometry]\n[geometry]\n",
        "mastercam part 1\n[part]\nname = a\n",
        "mastercam part 1\n[part]\ntitle = a\ntitle = a\n",
        "mastercam part 1\n[part]\ntitle\n",
        "mastercam part 1\n[part]\ntitle= a\n",
        "mastercam part 1\n[part]\n title = a\n",
        "mastercam part 1\n[part]\ntitle = \xFF\n",
        "mastercam part 1\n[part]\ntitle = %\n",
        "mastercam part 1\n[part]\ntitle = %00\n",
        "mastercam part 1\n[part]\ntitle = %00G0\n",
        "mastercam part 1\n[no operation]\nid = 1\n",
        "mastercam part 1\n[plane]\nid = 2147483648\n",
        "mastercam part 1\n[plane]\nid = \n",
        "mastercam part 1\n[plane]\nid = 1 \n",
        "mastercam part 1\n[plane]\nid = +1\n",
        "mastercam part 1\n[plane]\nid = 0x1\n",
        "mastercam part 1\n[tool]\ntype = 32768\n",
        "mastercam part 1\n[tool]\ntype = 1\n[tool]\ntype = -32769\n",
        "mastercam part 1\n[tool]\ndiameter = inf\n",
        "mastercam part 1\n[tool]\ndiameter = nan\n",
        "mastercam part 1\n[tool]\ndiameter = 1e309\n",
        "mastercam part 1\n[tool]\ndiameter = 1,5\n",
        "mastercam part 1\n[operation]\nid = 1\n[operation]\ntool.diameter = 1 2\n",
        "mastercam part 1\n[operation]\noverall-length = 1\n",
        "mastercam part 1\n[operation]\ntool.overall-length = 1\n",
        "mastercam part 1\n[operation]\ntool.cycle-time = 1\n",
        "mastercam part 1\n[operation]\ntool-plane-origin = 1 2\n",
        "mastercam part 1\n[operation]\ntool-plane-origin = 1 2 3 4\n",
        "mastercam part 1\n[operation]\ntool-plane-origin = 1  2 3\n",
        "mastercam part 1\n[operation]\npath = 1 2\n",
        "mastercam part 1\n[operation]\npath = 1 2 3 4 5\n",
        "mastercam part 1\n[geometry]\nline = 1 2 3\n",
        "mastercam part 1\n[geometry]\narc = 1 2 3 4\n",
        "mastercam part 1\n[geometry]\npoint = \n",
        "mastercam part 1\n[geometry]\nspline = 1 2\n",
    };
    const std::wstring first = makePart(L"first.mcam");
    writeBytes(first, everyKey);
    ASSERT_TRUE(open(first));
    standin::setState("db_changed", L"true");
    for (const char* text : broken) {
        EXPECT_FALSE(openText(text)) << text;
        EXPECT_EQ(standin::state("geo_filename"), first) << text;
        EXPECT_EQ(standin::state("db_changed"), L"true") << text;
    }
    EXPECT_EQ(saved(), everyKey);
}

TEST_F(PartFile, rejectsMissingFilesAndFolders)
{
    ASSERT_TRUE(openText(everyKey));
    EXPECT_FALSE(open(installation.path(L"nowhere.mcam")));
    EXPECT_FALSE(open(installation.path(L"temp")));
    EXPECT_FALSE(open(L""));
    EXPECT_FALSE(DoFileOpen(nullptr, false, false, 1, true, nullptr, nullptr));
    EXPECT_FALSE(standin::putPart(installation.path(L"nowhere.mcam")));
    EXPECT_EQ(saved(), everyKey);
}

TEST_F(PartFile, leavesNoTemporaryFileOnFailure)
{
    ASSERT_TRUE(openText(everyKey));
    standin::setState("db_changed", L"true");
    EXPECT_FALSE(CFile_DoFileSave(installation.path(L"no\\a.mcam").c_str(), nullptr, false, false));
    EXPECT_FALSE(CFile_DoFileSave(installation.path(L"temp").c_str(), nullptr, false, false));
    EXPECT_FALSE(CFile_DoFileSave(nullptr, nullptr, false, false));
    EXPECT_EQ(SaveFile(installation.path(L"no\\a.mcam").c_str(), nullptr, false), 0);
    EXPECT_EQ(standin::state("db_changed"), L"true");
    for (const auto& entry : std::filesystem::directory_iterator(installation.root()))
        EXPECT_NE(entry.path().extension(), L".new") << entry.path();
}
