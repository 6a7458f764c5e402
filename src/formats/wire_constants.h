// Names, limits and numbers that the add-in and the Companion agree on. No platform header.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace torvapdm {

// ---- Exchange files, below the installation folder ---------------------------------------------

inline constexpr std::wstring_view settingsFile = L"\\cfg\\settings.ini";
inline constexpr std::wstring_view debugLogFile = L"\\sys\\mcxlog.txt";
inline constexpr std::wstring_view screenPictureFile = L"\\commit\\screendump.bmp";
inline constexpr std::wstring_view companionProgram = L"\\TORVA-ZEM.exe";

// A number and an extension follow.
inline constexpr std::wstring_view commandFilePrefix = L"\\temp\\mastercam-"; // host's pid
inline constexpr std::wstring_view commitFilePrefix = L"\\temp\\torvapdm-";   // Companion's pid
inline constexpr std::wstring_view machineSettingsPrefix = L"\\temp\\mcsettings-"; // request id
inline constexpr std::wstring_view toolDataPrefix = L"\\temp\\tool-";              // request id
inline constexpr std::wstring_view ncQueuePrefix = L"\\temp\\ncqueue-";            // request id
inline constexpr std::wstring_view toolPicturePrefix = L"\\temp\\toolimage-";      // image id
inline constexpr std::wstring_view toolAndHolderPrefix = L"\\tmp\\ToolAndHolder";  // tool number

// A file name follows.
inline constexpr std::wstring_view ftpFolder = L"\\tmp\\";

// ---- Limits ------------------------------------------------------------------------------------

constexpr std::int64_t longestCommand = 0x10000; // bytes of a command file
constexpr std::int64_t longestAnswer = 0x10000;  // bytes of a check-out answer
constexpr size_t longestNotice = 1023;           // bytes, with the line feed
constexpr size_t longestToolRecord = 2047;       // bytes, with the line feed

// ---- Numbers -----------------------------------------------------------------------------------

constexpr std::uint16_t noticePort = 4559;

// The ZEM id of a document that is not one of the Companion's.
constexpr std::uint32_t noZemId = 0xFFFFFFFF;

// The request id of no request.
constexpr std::int32_t noRequestId = -1;

} // namespace torvapdm
