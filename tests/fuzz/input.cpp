#include "fuzz/input.h"

#include <algorithm>
#include <cstring>

namespace fuzzing {

namespace {

constexpr char pairFollows = '\x01';

unsigned valueOf(char byte)
{
    return static_cast<unsigned char>(byte);
}

} // namespace

std::string_view Input::field()
{
    const size_t length = std::min(rest_.find(fieldEnd), rest_.size());
    const std::string_view taken = rest_.substr(0, length);
    rest_.remove_prefix(std::min(length + 1, rest_.size()));
    return taken;
}

std::string_view Input::rest()
{
    const std::string_view taken = rest_;
    rest_ = {};
    return taken;
}

std::wstring Input::wideField()
{
    return wideText(field());
}

std::wstring Input::wideRest()
{
    return wideText(rest());
}

void Input::takeBytes(void* target, size_t size)
{
    const size_t taken = std::min(size, rest_.size());
    if (taken > 0)
        std::memcpy(target, rest_.data(), taken);
    rest_.remove_prefix(taken);
}

std::wstring signedUnits(std::string_view bytes)
{
    std::wstring text;
    for (const char byte : bytes)
        text += static_cast<wchar_t>(valueOf(byte) < 0x80 ? valueOf(byte) : 0xFF00 + valueOf(byte));
    return text;
}

std::wstring wideText(std::string_view bytes)
{
    std::wstring text;
    text.reserve(bytes.size());
    for (size_t i = 0; i < bytes.size(); ++i) {
        unsigned unit = valueOf(bytes[i]);
        if (bytes[i] == pairFollows && i + 2 < bytes.size()) {
            unit = valueOf(bytes[i + 1]) << 8 | valueOf(bytes[i + 2]);
            i += 2;
        }
        text += static_cast<wchar_t>(unit);
    }
    return text;
}

} // namespace fuzzing
