// How far a commit request file has been taken, in a small file of its own beside it. It says so
// after each record, so that a record that was stored is not stored again by the next start, and
// one that was not is.
//
//   taken 84                 the bytes that are dealt with, LF at the end of each line
//   storing 17 2 bracket     the record behind them becomes version 2 of part 17, bracket
//
// or, when the request file is about to be removed, only
//
//   finished
#pragma once

#include "standin/companion/library/version_plan.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace companion {

struct Bookmark {
    std::uint64_t taken = 0; // bytes
    std::optional<VersionPlan> underWay{};
    bool isFinished = false;
};

std::wstring bookmarkText(const Bookmark& bookmark);

// Empty when the text is not exactly such a one.
std::optional<Bookmark> readBookmark(std::wstring_view text);

} // namespace companion
