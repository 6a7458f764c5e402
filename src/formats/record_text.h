// The text of one tool record while it is being formatted, in a buffer of fixed size. No platform
// header.
#pragma once

#include "formats/wire_constants.h"

#include <array>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

namespace torvapdm {

constexpr size_t longestRecordNumber = 16; // characters of a text handle

struct RecordText {
    // A number is written before its length is known, so there is room for one more.
    std::array<char, longestToolRecord + longestRecordNumber> characters;
    // Of the whole text, even if `characters` holds only the beginning of one that is too long.
    size_t size = 0;
};

inline void put(RecordText& record, std::string_view text)
{
    if (record.size + text.size() <= longestToolRecord)
        std::memcpy(record.characters.data() + record.size, text.data(), text.size());
    record.size += text.size();
}

// Each writes the value at `at`, where `longestRecordNumber` characters have room, and returns the
// end of its text.
char* writeValue(char* at, std::int32_t value);

// printf's general format with 6 significant digits, independent of the locale; "inf" and "nan"
// after their sign.
char* writeValue(char* at, double value);

// The text's address as 16 upper-case hexadecimal digits.
char* writeValue(char* at, const wchar_t* handle);

// The key, then the value as writeValue writes it. The key is a literal, so that the compiler
// copies it in a few moves; a record has more than fifty.
template <size_t keySize, class Value>
void put(RecordText& record, const char (&key)[keySize], Value value)
{
    put(record, std::string_view(key, keySize - 1));
    if (record.size > longestToolRecord)
        return;
    char* const at = record.characters.data() + record.size;
    record.size += static_cast<size_t>(writeValue(at, value) - at);
}

// The low byte of each UTF-16 unit, up to the first low byte that is 0, which would terminate the
// record for a C string function.
void putLowBytes(RecordText& record, std::wstring_view text);

// The whole text; nothing when it exceeds `longestToolRecord` characters.
std::optional<std::string> contentOf(const RecordText& record);

} // namespace torvapdm
