// The trace of a host that takes scripts: one line for each call, in the order in which they ended.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zemlink {

class HostTrace {
public:
    static constexpr size_t none = static_cast<size_t>(-1);

    HostTrace() = default;
    // The complete lines of the file, UTF-8.
    explicit HostTrace(std::string_view bytes);

    const std::vector<std::string>& lines() const { return lines_; }
    std::string lastLine() const { return lines_.empty() ? std::string() : lines_.back(); }

    // The first line, from this one on, that contains the text.
    size_t find(std::string_view text, size_t from = 0) const;
    bool has(std::string_view text) const { return find(text) != none; }
    // Of the lines from `from` up to, but without, `to`.
    size_t count(std::string_view text, size_t from = 0, size_t to = none) const;

    // The text in `NAME = "TEXT"`, which the script command `show` writes, from this line on.
    std::optional<std::string> findValue(std::string_view name, size_t from = 0) const;

private:
    std::vector<std::string> lines_{};
};

// The arguments of a call up to the end of the first one, a text: `NAME("TEXT"`.
std::string callOf(std::string_view name, std::string_view text);

} // namespace zemlink
