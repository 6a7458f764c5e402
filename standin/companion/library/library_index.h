// The index of the part library, `library\library.txt`: readable text, UTF-8, one item a line,
// fields between bars, blanks around a field ignored. A line that starts with '#' is a comment.
//
//   number | name | version | NC path | machine definition | description
//   17 | bracket | 1 | 3 | C:\Machines\Mill 3-axis.mcam-mmd | Mounting bracket, two set-ups
//
// `number` is the item's ZEM id. `name` is also its folder: version N of it is the part file
// `library\<name>\vN.mcam`, and a picture of that version is `library\<name>\vN.bmp`. The current
// version is the one in the index; older ones stay. `machine definition` may be empty.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace companion {

struct LibraryItem {
    std::int32_t number = 0;
    std::wstring name;
    std::int32_t version = 1;
    std::int32_t ncPath = 0;
    std::wstring machine;
    std::wstring description;
    int line = 0; // of the index, from 1
};

struct LibraryIndex {
    std::vector<LibraryItem> items; // in the order of the file
    std::vector<int> badLines;      // numbers, from 1, of lines that could not be read
};

// Reads the whole index. A line that lacks a field, has a number out of range, a name that could
// leave the library folder, or a number or name that an earlier line has, is left out and listed.
LibraryIndex readLibraryIndex(std::wstring_view text);

// The item of that name (letters A to Z in either case) or, written in decimal, number. Null when
// there is none. The pointer is good as long as the index.
const LibraryItem* findItem(const LibraryIndex& index, std::wstring_view nameOrNumber);

// The item of that name alone, or of that number alone; null when there is none. The pointer is
// good as long as the index.
const LibraryItem* findName(const LibraryIndex& index, std::wstring_view name);
const LibraryItem* findNumber(const LibraryIndex& index, std::int32_t number);

// `bracket\v2.mcam`, relative to the library folder.
std::wstring versionFile(const LibraryItem& item);

// The index, as its bytes, with another version in this line, which holds an item.
std::string withVersion(std::string_view index, int line, std::int32_t version);

// The index, as its bytes, with one more line at its end. An empty index gets a heading first.
std::string withLine(std::string_view index, std::string_view line);

// `43 | plate | 1 | 0 |  | From C:\parts\plate.mcam`
std::wstring indexLine(const LibraryItem& item);

} // namespace companion
