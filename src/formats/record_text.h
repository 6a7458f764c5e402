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

struct RecordText {
    std::array<char, longestToolRecord> characters;
    size_t size = 0;
    bool isTooLong = false;
};

// In the header so that the compiler copies a key of known length in a few moves; a record has more
// than fifty keys.
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

// printf's general format with 6 significant digits, independent of the locale; "inf" and "nan"
// after their sign.
void putValue(RecordText& record, double value);

// The text's address as 16 upper-case hexadecimal digits.
void putValue(RecordText& record, const wchar_t* handle);

// The key, then the value as putValue writes it.
template <class Value>
void put(RecordText& record, std::string_view key, Value value)
{
    put(record, key);
    putValue(record, value);
}

// The low byte of each UTF-16 unit, up to the first low byte that is 0, which would terminate the
// record for a C string function.
void putLowBytes(RecordText& record, std::wstring_view text);

// The whole text; nothing when it exceeded `longestToolRecord` characters.
std::optional<std::string> contentOf(const RecordText& record);

} // namespace torvapdm
