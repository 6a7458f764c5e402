#include "tools/zemlink/listen.h"

#include "peer/notice_port.h"
#include "tools/zemlink/companion_facts.h"
#include "tools/zemlink/answers.h"
#include "tools/zemlink/notice_report.h"
#include "tools/zemlink/port_facts.h"
#include "tools/zemlink/system_error.h"

namespace zemlink {
namespace {

using Clock = std::chrono::steady_clock;

} // namespace

Outcome listenForNotices(std::optional<std::int64_t> count, std::optional<std::int64_t> timeoutMs,
                         const std::function<void()>& showReady,
                         const std::function<void(const Report&)>& show)
{
    companion::LinePort port;
    if (const int error = companion::openLinePort(port)) {
        return failure(portTakenText(systemErrorText(static_cast<std::uint32_t>(error)),
                                     portHolder(), lookAtCompanion().isRunning));
    }
    showReady();
    const Clock::time_point start = Clock::now();
    std::int64_t shown = 0;
    while (!(count && shown >= *count)) {
        if (timeoutMs && Clock::now() - start >= std::chrono::milliseconds(*timeoutMs))
            return {Report(), count ? trouble : done};
        for (const std::string& line : companion::receiveLines(port)) {
            if (!line.empty() && !(count && shown >= *count)) {
                show(noticeReport(line));
                ++shown;
            }
        }
    }
    return {};
}

} // namespace zemlink
