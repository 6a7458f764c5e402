// A failed allocation delays a request and never loses it.
#include "faults/platform_calls.h"
#include "incoming/incoming_state.h"
#include "incoming/listener.h"
#include "incoming/pending_request.h"
#include "support/add_in_state.h"
#include "support/companion_double.h"
#include "support/host_fixture.h"

#include <algorithm>
#include <thread>

using namespace torvapdm;
using namespace testing_support;

namespace {

class LostRequest : public HostFixture {
protected:
    LostRequest() { leadPlatformCalls(); }

    // Runs the listener on this thread, with the n-th allocation failing, until it has emptied the
    // command file. Returns the number of allocations.
    int listenTo(const std::string& request, int nth)
    {
        AddInState::reset();
        AddInState::setRequestId(99);
        AddInState::setCommandFile(createCommandFile(commandPath));
        EXPECT_TRUE(writeRequest(commandPath, request));
        std::thread stop([this] {
            waitUntil([this] { return readBytes(commandPath) == ""; });
            AddInState::stopListener();
        });
        watchPlatformCalls(Callers::thisThread);
        failPlatformCall("operator new", nth);
        listenerProcedure(nullptr);
        failPlatformCall("");
        const int allocations = endWatchingPlatformCalls()["operator new"];
        stop.join();
        CloseHandle(AddInState::commandFile());
        return allocations;
    }

    const std::wstring commandPath = installation.commandFile(GetCurrentProcessId());
};

} // namespace

TEST_F(LostRequest, isNotCausedByAnAllocation)
{
    const std::string part = "C:\\a part with a long name.mcam";
    const std::wstring newFile = LR"(ui post_FT_command("Mastercam", "OnFileNew"))";
    struct RequestCase {
        std::string request;
        int requestId;
        std::string opened; // empty for a new file
    };
    for (const RequestCase& c :
         {RequestCase{openRequest(5, part), 5, part}, RequestCase{openRequest(5, ""), 5, ""},
          RequestCase{"CHECKIN of a part with a long name", 0, ""}})
        for (int nth = 1, last = 1; nth <= last; ++nth) {
            last = listenTo(c.request, nth);
            const auto opened = takePendingRequest();
            EXPECT_EQ(AddInState::requestId(), c.requestId) << nth;
            EXPECT_EQ(opened ? toUtf8(opened->path) : "", c.opened) << nth;
            EXPECT_EQ(std::ranges::count(newTrace(), newFile), opened ? 0 : 1) << nth;
        }
}
