#include "tooldata/record_text.h"

#include <charconv>
#include <cstring>
#include <iterator>

namespace torvapdm {

void put(RecordText& record, std::string_view text)
{
    if (record.isTooLong || text.size() > record.characters.size() - record.size) {
        record.isTooLong = true;
        return;
    }
    std::memcpy(record.characters.data() + record.size, text.data(), text.size());
    record.size += text.size();
}

void put(RecordText& record, std::string_view key, std::int32_t value)
{
    char digits[11]; // "-2147483648"
    const auto end = std::to_chars(digits, std::end(digits), value).ptr;
    put(record, key);
    put(record, {digits, end});
}

void put(RecordText& record, std::string_view key, double value)
{
    char digits[16]; // "-1.79769e+308"
    const auto end =
        std::to_chars(digits, std::end(digits), value, std::chars_format::general, 6).ptr;
    put(record, key);
    put(record, {digits, end});
}

// Deliberate: the text's address, not its characters. One would expect the name; the Companion
// takes these values for marks that differ from run to run.
void put(RecordText& record, std::string_view key, const wchar_t* handle)
{
    char digits[16];
    auto address = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(handle));
    for (size_t place = std::size(digits); place-- > 0; address >>= 4)
        digits[place] = "0123456789ABCDEF"[address & 0xF];
    put(record, key);
    put(record, {digits, std::end(digits)});
}

void putLowBytes(RecordText& record, std::wstring_view text)
{
    for (const wchar_t unit : text) {
        const char byte = static_cast<char>(unit & 0xFF);
        if (byte == '\0')
            return;
        put(record, {&byte, 1});
    }
}

std::optional<std::string> contentOf(const RecordText& record)
{
    if (record.isTooLong)
        return std::nullopt;
    return std::string(record.characters.data(), record.size);
}

} // namespace torvapdm
