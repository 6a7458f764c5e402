#include "fuzz/plain_record.h"

#include <cmath>
#include <locale>
#include <sstream>

namespace fuzzing {

namespace {

template <class Number>
std::string throughStream(Number number)
{
    static std::ostringstream stream = [] {
        std::ostringstream made;
        made.imbue(std::locale::classic());
        return made;
    }();
    stream.str({});
    stream << number;
    return stream.str();
}

} // namespace

std::string streamed(std::int64_t number)
{
    return throughStream(number);
}

std::string streamed(double number)
{
    if (!std::isfinite(number))
        return std::string(std::signbit(number) ? "-" : "") + (std::isnan(number) ? "nan" : "inf");
    return throughStream(number);
}

std::string streamedHandle(std::uint64_t address)
{
    std::string digits;
    for (int i = 0; i < 16; ++i, address /= 16)
        digits = std::string("0123456789ABCDEF").substr(address % 16, 1) + digits;
    return digits;
}

std::string lowBytes(const std::wstring& text)
{
    std::string bytes;
    for (const wchar_t unit : text) {
        const unsigned low = static_cast<unsigned>(unit) % 256;
        if (low == 0)
            break;
        bytes += static_cast<char>(static_cast<unsigned char>(low));
    }
    return bytes;
}

std::optional<std::string> withinBound(const std::string& record)
{
    return record.size() < 2048 ? std::optional(record) : std::nullopt;
}

} // namespace fuzzing
