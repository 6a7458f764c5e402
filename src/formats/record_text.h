// The text of one tool data record while it is put together, within its bound. No platform header.
#pragma once

#include <array>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

namespace torvapdm {

// The longest record in characters, its line feed included: 2048 with a terminating zero.
constexpr size_t longestToolRecord = 2047;

struct RecordText {
    std::array<char, longestToolRecord> characters;
    size_t size = 0;
    bool isTooLong = false;
};

// Here, so that a key of known length is copied in a few moves: a record has more than fifty.
inline void put(RecordText& record, std::string_view text)
{
    if (record.isTooLong || text.size() > record.characters.size() - record.size) {
        record.isTooLong = true;
        return;
    }
    std::memcpy(record.characters.data() + record.size, text.data(), text.size());
    record.size += text.size();
}

void putValue(RecordText& record, std::int32_t value);
// In printf's general format with 6 significant digits, whatever the process's locale is; "inf" and
// "nan" for what is no number, with a sign before them.
void putValue(RecordText& record, double value);
// The address of a text as 16 upper-case hexadecimal digits.
void putValue(RecordText& record, const wchar_t* handle);

// The key, then the value as putValue writes it.
template <class Value>
void put(RecordText& record, std::string_view key, Value value)
{
    put(record, key);
    putValue(record, value);
}

// Each UTF-16 unit cut to its low byte, up to the first whose low byte is 0: that would end the
// record's line for whoever writes or reads it as a text.
void putLowBytes(RecordText& record, std::wstring_view text);

// All that was put; nothing when it came to more than `longestToolRecord` characters.
std::optional<std::string> contentOf(const RecordText& record);

} // namespace torvapdm
