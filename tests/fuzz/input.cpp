#include "fuzz/input.h"

namespace fuzzing {

namespace {

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

std::wstring signedUnits(std::string_view bytes)
{
    std::wstring text;
    for (const char byte : bytes)
        text += static_cast<wchar_t>(valueOf(byte) < 0x80 ? valueOf(byte) : 0xFF00 + valueOf(byte));
    return text;
}

std::wstring unsignedUnits(std::string_view bytes)
{
    std::wstring text;
    for (const char byte : bytes)
        text += static_cast<wchar_t>(valueOf(byte));
    return text;
}

std::wstring wideText(std::string_view bytes)
{
    std::wstring text;
    for (size_t i = 0; i < bytes.size(); ++i) {
        unsigned unit = valueOf(bytes[i]);
        if (unit == 1 && i + 2 < bytes.size()) {
            unit = valueOf(bytes[i + 1]) << 8 | valueOf(bytes[i + 2]);
            i += 2;
        }
        text += static_cast<wchar_t>(unit);
    }
    return text;
}

} // namespace fuzzing
