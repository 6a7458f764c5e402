#include "formats/exchange_file_name.h"

namespace torvapdm {

namespace {

std::uint16_t numberOf(std::int64_t seconds)
{
    // The low bits of the signed product are those of the unsigned one, which may wrap.
    return static_cast<std::uint16_t>(static_cast<std::uint64_t>(seconds) * 275604541u);
}

} // namespace

// Deliberate: the folder's own backslash and another one. One would expect one; the Companion takes
// the name as it comes.
std::wstring exchangeFileName(const std::wstring& folder, std::int64_t seconds)
{
    return folder + L"\\TORVA ZEM-" + std::to_wstring(numberOf(seconds)) + L".tmp";
}

} // namespace torvapdm
