#include "tools/zemlink/verify/addin_trace.h"

#include <algorithm>

namespace zemlink {

HostTrace::HostTrace(std::string_view bytes)
{
    for (size_t end = bytes.find('\n'); end != bytes.npos; end = bytes.find('\n')) {
        lines_.emplace_back(bytes.substr(0, end));
        bytes.remove_prefix(end + 1);
    }
}

size_t HostTrace::find(std::string_view text, size_t from) const
{
    for (size_t i = from; i < lines_.size(); ++i)
        if (lines_[i].find(text) != std::string::npos)
            return i;
    return none;
}

size_t HostTrace::count(std::string_view text, size_t from, size_t to) const
{
    size_t found = 0;
    for (size_t i = from; i < std::min(to, lines_.size()); ++i)
        if (lines_[i].find(text) != std::string::npos)
            ++found;
    return found;
}

std::optional<std::string> HostTrace::findValue(std::string_view name, size_t from) const
{
    const std::string start = "ui " + std::string(name) + " = \"";
    for (size_t i = from; i < lines_.size(); ++i)
        if (lines_[i].starts_with(start) && lines_[i].ends_with('"'))
            return lines_[i].substr(start.size(), lines_[i].size() - start.size() - 1);
    return std::nullopt;
}

std::string callOf(std::string_view name, std::string_view text)
{
    return std::string(name) + "(\"" + std::string(text) + '"';
}

} // namespace zemlink
