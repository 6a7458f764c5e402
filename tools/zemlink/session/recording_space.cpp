#include "tools/zemlink/session/recording_space.h"

namespace zemlink {

std::string RecordingSpace::findLimit(const ExchangeEvent& event)
{
    if (events_ == mostRecordedEvents)
        return "There were more than 20,000 events; what came before is recorded.";
    if (bytes_ + event.bytes.size() > mostRecordedBytes)
        return "The exchanges had more than 512 MB; what came before is recorded.";
    ++events_;
    bytes_ += event.bytes.size();
    return findLimit(event.at);
}

std::string RecordingSpace::findLimit(std::int64_t now) const
{
    return now - startedAt_ > longestRecordingMs
               ? "30 days have passed; what happened in them is recorded."
               : "";
}

} // namespace zemlink
