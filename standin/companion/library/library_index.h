// The index of the part library, `library\library.txt`: readable text, UTF-8, one item a line,
// fields separated by `|`, spaces around a field ignored. A line that starts with `#` is a comment.
//
//   number | name | version | NC path | machine definition | description
//   17 | bracket | 1 | 3 | C:\Machines\Mill 3-axis.mcam-mmd | Mounting bracket, two set-ups
//
// `number` is the ZEM id of the item. `name` is also its folder: version N is the part file
// `library\<name>\vN.mcam`, and its picture is `library\<name>\vN.bmp`. The index contains the
// current version; older versions are kept. `machine definition` may be empty.
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

// The whole index. A line is left out and listed if it lacks a field, has a number out of range, a
// name that could lead out of the library folder, or a number or name of an earlier line.
LibraryIndex readLibraryIndex(std::wstring_view text);

// The item with that name (case-insensitive for A to Z) or, in decimal, number. Null when there is
// none. The pointer is valid as long as the index.
const LibraryItem* findItem(const LibraryIndex& index, std::wstring_view nameOrNumber);

// The item with that name, or with that number; null when there is none. The pointer is valid as
// long as the index.
const LibraryItem* findName(const LibraryIndex& index, std::wstring_view name);
const LibraryItem* findNumber(const LibraryIndex& index, std::int32_t number);

// `bracket\v2.mcam`, relative to the library folder.
std::wstring versionFile(const LibraryItem& item);

// The index bytes with a different version in this line, which must contain an item. Everything
// else stays byte for byte.
std::string withVersion(std::string_view index, int line, std::int32_t version);

// The index bytes with one more line at the end. An empty index gets a heading first.
std::string withLine(std::string_view index, std::string_view line);

// `43 | plate | 1 | 0 |  | From C:\parts\plate.mcam`
std::wstring indexLine(const LibraryItem& item);

} // namespace companion
