#include "outgoing/nc_queue.h"

#include "addin/exports.h"
#include "host/message_box.h"
#include "support/add_in_state.h"
#include "support/counts.h"
#include "support/host_fixture.h"
#include "support/sockets.h"
#include "support/system_calls.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>
#include "host/host.h"

#include <io.h>
#include <winsock2.h>

using namespace torvapdm;
using namespace testing_support;

namespace {

const std::string twoGroups = "[group]\nid = 1\nname = Mill\n\n"
                              "[group]\nid = 2\nparent = 1\nname = First side\n\n";

std::string operationIn(int group, const std::string& nciName)
{
    return "[operation]\nid = 1\ngroup = " + std::to_string(group) + "\nnci-name = " + nciName +
           "\n\n";
}

class NcQueue : public HostFixture {
protected:
    NcQueue()
    {
        standin::setState("nc_prefix", folder);
        standin::setState("nc_suffix", L".NC");
        AddInState::setRequestId(17);
    }
    // Opens a part with these sections in the host.
    void putPart(const std::string& sections)
    {
        const std::wstring path = installation.path(L"queue.mcam");
        writeBytes(path, "mastercam part 1\n\n" + sections);
        ASSERT_TRUE(standin::putPart(path));
        newTrace();
    }
    void post(const std::wstring& file) { writeBytes(folder + file, "%\nO1\nM30\n%\n"); }
    std::string entry(const std::string& file, const std::string& group) const
    {
        return toUtf8(folder) + file + '|' + group;
    }
    std::string queue() const { return readBytes(queueFile).value_or("none"); }

    const std::wstring folder = installation.path(L"tmp\\");
    const std::wstring queueFile = installation.path(L"temp\\ncqueue-17.txt");
    LineReceiver listener;
};

// The installation folder's name has non-ASCII characters.
class ForeignNcQueue : public NcQueue {
protected:
    ForeignNcQueue()
    {
        CreateDirectoryW(foreignFolder.c_str(), nullptr);
        CreateDirectoryW((foreignFolder + L"\\temp").c_str(), nullptr);
        registerInstallation(foreignFolder);
    }
    const std::wstring foreignFolder = installation.path(L"\u00C4\u20AC");
};

// The first blocks of 2048 bytes that are allocated; null again when freed. Any thread allocates,
// up to the end of the process, when an object with a destructor no longer exists.
std::array<std::atomic<void*>, 8> buffers{};
std::atomic<size_t> buffersMade{0};

void* countingMalloc(size_t size)
{
    void* const block = systems(&countingMalloc, "malloc", cLibrary)(size);
    if (size == 2048)
        buffers[buffersMade++ % buffers.size()] = block;
    return block;
}

void countingFree(void* block)
{
    for (std::atomic<void*>& buffer : buffers)
        if (void* expected = block; block)
            buffer.compare_exchange_strong(expected, nullptr);
    systems(&countingFree, "free", cLibrary)(block);
}

size_t searchesEnded = 0;

int countingFindClose(intptr_t handle)
{
    ++searchesEnded;
    return systems(&countingFindClose, "_findclose", cLibrary)(handle);
}

std::vector<std::string> queueSteps;
decltype(&list_manager) hostsOperations = nullptr;
std::wstring watchedQueue;

void notedOperations(long code, const wchar_t* name, short mode, operation_node** list)
{
    queueSteps.push_back("list after " + std::to_string(standin::callsOf("GetMainGrpList")));
    hostsOperations(code, name, mode, list);
}

CString meanwhileRequest18(TpGroup*)
{
    queueSteps.push_back(standin::callsOf("GroupByID") > 0 ? "suffix after the group" : "suffix");
    AddInState::setRequestId(18);
    return L".NC";
}

// A member function receives its object as the first argument.
using GroupLookUp = TpGroup*(TpGrpList*, int);
GroupLookUp* hostsGroupLookUp = nullptr;

// Simulates a host that changes the operation's record while it looks up a group.
TpGroup* renamingGroupLookUp(TpGrpList* groups, int id)
{
    operation_node* first = nullptr;
    list_manager(1, L"", 0, &first);
    constexpr wchar_t other[] = L"OTHER.nci";
    std::copy(std::begin(other), std::end(other), first->op.nciName);
    return hostsGroupLookUp(groups, id);
}

int WINAPI notedQueueConnect(SOCKET, const sockaddr*, int)
{
    queueSteps.push_back(DeleteFileW(watchedQueue.c_str()) ? "connect, file closed" : "connect");
    return SOCKET_ERROR;
}

void countBuffers()
{
    redirectCalls(&countingMalloc, "malloc", &countingMalloc, cLibrary);
    redirectCalls(&countingFree, "free", &countingFree, cLibrary);
}

} // namespace

TEST_F(NcQueue, isMadeInOrder)
{
    putPart(twoGroups + operationIn(1, "PART.nci"));
    watchedQueue = installation.path(L"temp\\ncqueue-18.txt");
    hostsOperations = &list_manager;
    standin::redirectImports(GetModuleHandleW(nullptr), hostsOperations, &notedOperations);
    standin::redirectImports(GetModuleHandleW(nullptr), &NCSuffix, &meanwhileRequest18);
    redirectCalls(&connect, "connect", &notedQueueConnect, L"ws2_32.dll");
    importNcQueue();
    EXPECT_EQ(queueSteps, (std::vector<std::string>{"list after 1", "suffix after the group",
                                                    "connect, file closed"}));
}

TEST_F(NcQueue, keepsACopyOfEachOperation)
{
    putPart(twoGroups + operationIn(1, "PART.nci"));
    post(L"PART.NC");
    post(L"OTHER.NC");
    TpGroup* (TpGrpList::*const lookUp)(int) = &TpGrpList::GroupByID;
    std::memcpy(&hostsGroupLookUp, &lookUp, sizeof hostsGroupLookUp);
    standin::redirectImports(GetModuleHandleW(nullptr), hostsGroupLookUp, &renamingGroupLookUp);
    importNcQueue();
    EXPECT_EQ(queue(), "NCPATH|-1|" + entry("PART.NC", "Mill") + "\r\n");
}

TEST_F(NcQueue, listsAndAnnouncesPostedPrograms)
{
    putPart(twoGroups + operationIn(2, "C:\\NC\\PART.nci") + operationIn(1, "OTHER.nci"));
    post(L"PART.NC");
    post(L"OTHER.NC");
    post(L"THIRD.NC"); // without an operation
    EXPECT_EQ(importNCqueue(), 0);
    EXPECT_EQ(queue(), "NCPATH|-1|" + entry("OTHER.NC", "Mill") + "\r\nNCPATH|-1|" +
                           entry("PART.NC", "Mill") + "\r\n");
    EXPECT_EQ(listener.nextConnection(), "IMPORTNCQUEUE|" + toUtf8(queueFile) + "\n");
    EXPECT_TRUE(listener.isIdle());
    const std::wstring prefix = L"ui NCPrefix(null) -> \"" + folder + L'"';
    const std::wstring suffix = LR"(ui NCSuffix(null) -> ".NC")";
    EXPECT_EQ(newTrace(), (Lines{prefix, LR"(ui list_manager(1, "", 0, *))", suffix, suffix}));
}

TEST_F(NcQueue, holdsTheNcPathNumberAndRequest)
{
    putPart(twoGroups + operationIn(1, "PART"));
    post(L"PART.NC");
    AddInState::setNcPathNumber(3);
    AddInState::setRequestId(0);
    EXPECT_EQ(importNcQueue(), 0);
    const std::wstring zero = installation.path(L"temp\\ncqueue-0.txt");
    EXPECT_EQ(readBytes(zero), "NCPATH|3|" + entry("PART.NC", "Mill") + "\r\n");
    EXPECT_EQ(listener.nextConnection(), "IMPORTNCQUEUE|" + toUtf8(zero) + "\n");
    AddInState::setRequestId(-5);
    importNcQueue();
    EXPECT_TRUE(readBytes(installation.path(L"temp\\ncqueue--5.txt")).has_value());
}

TEST_F(NcQueue, listsAProgramOfSeveralOperationsOnce)
{
    putPart(twoGroups + operationIn(2, "C:\\A\\PART.nci") + operationIn(1, "PART.nci"));
    post(L"PART.NC");
    importNcQueue();
    EXPECT_EQ(queue(), "NCPATH|-1|" + entry("PART.NC", "Mill") + "\r\n");
}

TEST_F(NcQueue, listsAProgramOfTwoTopGroupsForEach)
{
    putPart("[group]\nid = 1\nname = Mill\n\n[group]\nid = 2\nname = Lathe\n\n" +
            operationIn(1, "PART.nci") + operationIn(2, "PART.nci"));
    post(L"PART.NC");
    importNcQueue();
    EXPECT_EQ(queue(), "NCPATH|-1|" + entry("PART.NC", "Lathe") + "\r\nNCPATH|-1|" +
                           entry("PART.NC", "Mill") + "\r\n");
}

TEST_F(NcQueue, listsEveryFileThatANameMatches)
{
    putPart(twoGroups + operationIn(1, "PA*.nci"));
    post(L"PA1.NC");
    post(L"PA2.NC");
    post(L"PB.NC");
    importNcQueue();
    EXPECT_EQ(queue(), "NCPATH|-1|" + entry("PA1.NC", "Mill") + "\r\nNCPATH|-1|" +
                           entry("PA2.NC", "Mill") + "\r\n");
}

TEST_F(NcQueue, ignoresNamesOutsideTheFolder)
{
    writeBytes(installation.path(L"A.NC"), "outside");
    post(L"A.NC");
    for (const char* name : {R"(..\A.nci)", R"(C:..\A.nci)", R"(\\server.invalid\share\A.nci)",
                             "../A.nci", R"(\\.\pipe\A.nci)"}) {
        putPart(twoGroups + operationIn(2, name));
        importNcQueue();
        EXPECT_EQ(queue(), "NCPATH|-1|" + entry("A.NC", "Mill") + "\r\n") << name;
    }
    for (const char* name : {"...nci", "C:A.nci", "A:stream.nci", "A/.nci", "A|B.nci"}) {
        putPart(twoGroups + operationIn(2, name));
        importNcQueue();
        EXPECT_EQ(queue(), "") << name;
    }
}

TEST_F(NcQueue, listsADeviceName)
{
    putPart(twoGroups + operationIn(2, "COM1.nci"));
    importNcQueue();
    EXPECT_EQ(queue(), "NCPATH|-1|" + entry("COM1", "Mill") + "\r\n");
}

TEST_F(NcQueue, takesTheSuffixAsTheHostGivesIt)
{
    standin::setState("nc_suffix", L"-x");
    putPart(twoGroups + operationIn(1, "PART.nci"));
    post(L"PART-x");
    post(L"PART.NC");
    importNcQueue();
    EXPECT_EQ(queue(), "NCPATH|-1|" + entry("PART-x", "Mill") + "\r\n");
}

TEST_F(NcQueue, isAnnouncedWhenEmpty)
{
    putPart(twoGroups + operationIn(1, "PART.nci"));
    writeBytes(queueFile, "earlier");
    importNcQueue();
    EXPECT_EQ(queue(), "");
    EXPECT_EQ(listener.nextConnection(), "IMPORTNCQUEUE|" + toUtf8(queueFile) + "\n");
}

TEST_F(NcQueue, isSkippedWithoutOperations)
{
    putPart(twoGroups);
    writeBytes(queueFile, "earlier");
    EXPECT_EQ(importNCqueue(), 0);
    EXPECT_EQ(queue(), "earlier");
    EXPECT_TRUE(listener.isIdle());
}

TEST_F(NcQueue, isSkippedForAnUnknownGroup)
{
    putPart(twoGroups + operationIn(1, "PART.nci") + operationIn(9, "PART.nci"));
    post(L"PART.NC");
    writeBytes(queueFile, "earlier");
    EXPECT_EQ(importNCqueue(), 0);
    EXPECT_EQ(queue(), "earlier");
    EXPECT_TRUE(listener.isIdle());
}

TEST_F(NcQueue, namesTheGroupBeforeAnUnknownParent)
{
    putPart("[group]\nid = 1\nparent = 9\nname = Orphan\n\n" + operationIn(1, "PART.nci"));
    post(L"PART.NC");
    importNcQueue();
    EXPECT_EQ(queue(), "NCPATH|-1|" + entry("PART.NC", "Orphan") + "\r\n");
}

TEST_F(NcQueue, endsAtACycleOfParents)
{
    putPart("[group]\nid = 1\nparent = 1\nname = Own\n\n"
            "[group]\nid = 2\nparent = 3\nname = Two\n\n"
            "[group]\nid = 3\nparent = 4\nname = Three\n\n"
            "[group]\nid = 4\nparent = 2\nname = Four\n\n" +
            operationIn(1, "A.nci") + operationIn(2, "B.nci"));
    post(L"A.NC");
    post(L"B.NC");
    importNcQueue();
    EXPECT_EQ(queue(), "NCPATH|-1|" + entry("A.NC", "Own") + "\r\nNCPATH|-1|" +
                           entry("B.NC", "Four") + "\r\n");
}

TEST_F(NcQueue, namesTheTopOfADeepChainOfGroups)
{
    constexpr int depth = 10000;
    std::string groups = "[group]\nid = 1\nname = Top\n\n";
    for (int id = 2; id <= depth; ++id)
        groups += "[group]\nid = " + std::to_string(id) + "\nparent = " + std::to_string(id - 1) +
                  "\nname = Inner\n\n";
    putPart(groups + operationIn(depth, "PART.nci"));
    post(L"PART.NC");
    importNcQueue();
    EXPECT_EQ(queue(), "NCPATH|-1|" + entry("PART.NC", "Top") + "\r\n");
}

TEST_F(NcQueue, writesNamesInTheSystemsCodePage)
{
    putPart("[group]\nid = 1\nname = Fr\xC3\xA4se \xE2\x82\xAC\n\n" + operationIn(1, "PART.nci"));
    post(L"PART.NC");
    importNcQueue();
    // The system code page is 1252.
    EXPECT_EQ(queue(), "NCPATH|-1|" + entry("PART.NC", "Fr\xE4se \x80") + "\r\n");
}

TEST_F(NcQueue, writesQuestionMarksInAGroup)
{
    putPart("[group]\nid = 1\nname = A\xE4\xB8\xAD"
            "B\n\n" +
            operationIn(1, "PART.nci"));
    post(L"PART.NC");
    importNcQueue();
    EXPECT_EQ(queue(), "NCPATH|-1|" + entry("PART.NC", "A?B") + "\r\n");
}

TEST_F(NcQueue, writesQuestionMarksInAFileName)
{
    putPart(twoGroups + operationIn(1, "PA*.nci"));
    post(L"PA\u4E2D.NC");
    importNcQueue();
    EXPECT_EQ(queue(), "NCPATH|-1|" + entry("PA?.NC", "Mill") + "\r\n");
}

TEST_F(NcQueue, searchesWithQuestionMarks)
{
    putPart(twoGroups + operationIn(1, "P\xE4\xB8\xAD.nci"));
    post(L"P\u4E2D.NC");
    post(L"PX.NC");
    post(L"PXY.NC");
    importNcQueue();
    EXPECT_EQ(queue(), "NCPATH|-1|" + entry("P?.NC", "Mill") + "\r\nNCPATH|-1|" +
                           entry("PX.NC", "Mill") + "\r\n");
}

TEST_F(NcQueue, endsEachSearchItBegins)
{
    putPart(twoGroups + operationIn(1, "PA*.nci") + operationIn(1, "GONE.nci"));
    post(L"PA1.NC");
    post(L"PA2.NC");
    importNcQueue();
    listener.nextConnection();
    redirectCalls(&_findclose, "_findclose", &countingFindClose, cLibrary);
    const size_t handles = countHandles();
    constexpr size_t times = 100;
    for (size_t i = 0; i < times; ++i) {
        importNcQueue();
        listener.nextConnection();
    }
    EXPECT_EQ(searchesEnded, times); // a search without a match has no handle to close
    EXPECT_LT(countHandles(), handles + times);
}

TEST_F(NcQueue, writesPathsInTheSystemsCodePage)
{
    const std::wstring ncFolder = folder + L"\u00C4\u20AC\\";
    CreateDirectoryW(ncFolder.c_str(), nullptr);
    standin::setState("nc_prefix", ncFolder);
    standin::setState("nc_suffix", L".\u00C4\u20AC");
    putPart(twoGroups + operationIn(1, "C:\\P\xC3\x84\xE2\x82\xAC.nci"));
    writeBytes(ncFolder + L"P\u00C4\u20AC.\u00C4\u20AC", "%\n");
    importNcQueue();
    EXPECT_EQ(queue(), "NCPATH|-1|" + toUtf8(folder) + "\xC4\x80\\P\xC4\x80.\xC4\x80|Mill\r\n");
}

TEST_F(ForeignNcQueue, isAnnouncedInTheCodePage)
{
    putPart(twoGroups + operationIn(1, "PART.nci"));
    importNcQueue();
    EXPECT_EQ(readBytes(foreignFolder + L"\\temp\\ncqueue-17.txt"), "");
    EXPECT_EQ(listener.nextConnection(), "IMPORTNCQUEUE|" + toUtf8(installation.root()) +
                                             "\\\xC4\x80\\temp\\ncqueue-17.txt\n");
}

TEST_F(NcQueue, isAnnouncedWithoutItsFile)
{
    putPart(twoGroups + operationIn(1, "PART.nci"));
    post(L"PART.NC");
    CreateDirectoryW(queueFile.c_str(), nullptr);
    EXPECT_EQ(importNCqueue(), 0);
    EXPECT_EQ(listener.nextConnection(), "IMPORTNCQUEUE|" + toUtf8(queueFile) + "\n");
    RemoveDirectoryW(queueFile.c_str());
}

TEST_F(NcQueue, leaksABufferPerAnnouncement)
{
    putPart(twoGroups + operationIn(1, "PART.nci"));
    importNcQueue();
    countBuffers();
    importNcQueue();
    importNcQueue();
    EXPECT_EQ(buffersMade, 2u);
    EXPECT_TRUE(buffers[0] && buffers[1]); // not freed
}

TEST_F(NcQueue, endsSilentlyOnAnyException)
{
    putPart(twoGroups + operationIn(2, "PART.nci") + operationIn(2, "OTHER.nci"));
    post(L"PART.NC");
    post(L"OTHER.NC");
    writeBytes(queueFile, "earlier");
    struct Calls {
        const char* operation;
        int count;
    };
    // For each of two operations: the group, its parent, and the parent's missing parent.
    for (const auto& [operation, count] : {Calls{"GroupByID", 6}, Calls{"NCSuffix", 2}})
        for (int nth = 1; nth <= count; ++nth) {
            ASSERT_TRUE(standin::raiseAt(operation, nth));
            EXPECT_EQ(importNCqueue(), 0) << operation << nth;
            EXPECT_EQ(queue(), "earlier") << operation << nth;
            EXPECT_TRUE(listener.isIdle()) << operation << nth;
            EXPECT_EQ(standin::undeletedExceptions(), 0) << operation << nth;
        }
    importNCqueue();
    EXPECT_NE(queue(), "earlier");
}

TEST_F(NcQueue, endsSilentlyWhenTheHostRaises)
{
    putPart(twoGroups + operationIn(2, "PART.nci") + operationIn(1, "OTHER.nci"));
    post(L"PART.NC");
    writeBytes(queueFile, "earlier");
    for (const char* operation :
         {"NCPrefix", "GetMainGrpList", "list_manager", "GroupByID", "NCSuffix"}) {
        ASSERT_TRUE(standin::raiseNext(operation)) << operation;
        EXPECT_EQ(importNCqueue(), 0) << operation;
        EXPECT_EQ(queue(), "earlier") << operation;
        EXPECT_TRUE(listener.isIdle()) << operation;
        EXPECT_EQ(standin::undeletedExceptions(), 0) << operation;
    }
    importNCqueue();
    EXPECT_NE(queue(), "earlier");
}
