// How far a commit file has been taken, in a small file next to it, `temp\torvapdm-<process
// id>.taken`. It is written after each record, so that the next start neither stores a record twice
// nor loses one. Each line ends with LF.
//
//   taken 84                 the bytes that have been handled
//   storing 17 2 bracket     the next record becomes version 2 of part 17, bracket
//
// or, when the commit file is about to be removed, only
//
//   finished
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace peer {

struct VersionPlan {
    std::int32_t number = 0; // of the part
    std::int32_t version = 0;
    std::wstring name; // of the part, which is also its folder's
};

struct Bookmark {
    std::uint64_t taken = 0; // bytes
    std::optional<VersionPlan> underWay{};
    bool isFinished = false;
};

std::wstring formatBookmark(const Bookmark& bookmark);

// Empty when the text is not exactly a bookmark.
std::optional<Bookmark> parseBookmark(std::wstring_view text);

} // namespace peer
