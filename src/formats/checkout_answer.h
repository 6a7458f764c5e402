// The check-out answer: the file in which the Companion answers a check-out command. No platform
// header.
//
//   CAD1234 C:\Parts\bracket.mcam    file type "CAD", id 1234, the path
//   CHECKIN anything                 the open file has been checked in
#pragma once

#include "formats/companion_file.h"

namespace torvapdm {

struct CheckoutAnswer {
    enum class Kind { unusable, checkIn, file };

    Kind kind = Kind::unusable;
    CompanionFile file; // id 0: no file; the path is all after the first space, later lines too
};

// Parses the answer; without a space in its first line it is unusable. For a file, the first three
// characters of the first word (fewer when it is shorter) go into `fileType`, which otherwise
// stays as it is.
//
// Throws std::out_of_range, after it has set `fileType`, for a first word of fewer than three
// characters.
CheckoutAnswer parseCheckoutAnswer(const std::wstring& text, std::wstring& fileType);

// The answer file's path in the temporary folder, which ends in a backslash, at a time in seconds
// since the beginning of 1970, UTC: formatAnswerPath(L"C:\\Temp\\", 1) is
// C:\Temp\\TORVA ZEM-25661.tmp. The number is 0 to 65535, without leading zeros.
std::wstring formatAnswerPath(const std::wstring& folder, std::int64_t seconds);

} // namespace torvapdm
