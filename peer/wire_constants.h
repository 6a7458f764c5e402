// Names, words and limits of the exchanges with the hosts' add-in. The integrator's kit has them as
// a C header, made from this file: one constant a statement, and nothing but literals.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace peer {

inline constexpr wchar_t productName[] = L"TORVA ZEM";
inline constexpr wchar_t companionProgram[] = L"TORVA-ZEM.exe";
inline constexpr wchar_t hostProgram[] = L"Mastercam.exe";

// Registry, below HKEY_CURRENT_USER.
inline constexpr wchar_t registryKey[] = L"SOFTWARE\\TORVA AS\\ZEM";
inline constexpr wchar_t registryValue[] = L"installation folder";
inline constexpr wchar_t standardFolder[] = L"C:\\TORVA\\ZEM"; // without a registry value

// Window property of the Companion's main window, with the value 1.
inline constexpr wchar_t instanceProperty[] = L"https://torva.example/namespace/torvapdm/instance";
// Window property, with the value 1, of the main window of a host whose add-in is open.
inline constexpr wchar_t hostProperty[] =
    L"https://torva.example/namespace/torvapdm/mastercam-instance";
// Semaphore that exists while the Companion runs.
inline constexpr wchar_t singletonName[] =
    L"Local\\https://torva.example/namespace/torvapdm/singleton-token";

// Window class of the add-in's message window.
inline constexpr wchar_t messageWindowClass[] =
    L"https://torva.example/namespace/torvapdm/mastercam-instance";
// Registered messages. The message window handles the first; nothing sends the others.
inline constexpr wchar_t openMessage[] = L"https://torva.example/namespace/torvapdm/message/open";
inline constexpr wchar_t commitMessage[] =
    L"https://torva.example/namespace/torvapdm/message/commit";
inline constexpr wchar_t getCheckedOutMessage[] =
    L"https://torva.example/namespace/torvapdm/message/get-checked-out";

// The Companion's command line.
inline constexpr wchar_t checkOutWord[] = L"--checkout";
inline constexpr wchar_t commitWord[] = L"--commit";
inline constexpr wchar_t idOption[] = L"--id";
inline constexpr wchar_t aboutWord[] = L"--about";
inline constexpr wchar_t parentWindowOption[] = L"--parentwindow";

inline constexpr std::uint16_t noticePort = 4559; // TCP

// Paths below the installation folder.
inline constexpr wchar_t tempFolder[] = L"\\temp";
inline constexpr wchar_t commitFolder[] = L"\\commit";
inline constexpr wchar_t logFolder[] = L"\\sys";
inline constexpr wchar_t settingsFile[] = L"\\cfg\\settings.ini";
inline constexpr wchar_t debugLog[] = L"\\sys\\mcxlog.txt";

// File names: the start, then an id, then the end.
inline constexpr wchar_t commandFileStart[] = L"mastercam-";
inline constexpr wchar_t machineSettingsStart[] = L"mcsettings-";
inline constexpr wchar_t commitFileStart[] = L"torvapdm-";
inline constexpr wchar_t toolDataStart[] = L"tool-";
inline constexpr wchar_t toolPictureStart[] = L"toolimage-";
inline constexpr wchar_t ncQueueStart[] = L"ncqueue-";
inline constexpr wchar_t checkoutAnswerStart[] = L"TORVA ZEM-";
inline constexpr wchar_t screenPictureName[] = L"screendump";
inline constexpr wchar_t debugLogName[] = L"mcxlog";
inline constexpr wchar_t settingsName[] = L"settings";
inline constexpr wchar_t dataEnd[] = L".dat";
inline constexpr wchar_t textEnd[] = L".txt";
inline constexpr wchar_t pictureEnd[] = L".bmp";

// Bytes and words with which the contents of exchange files and notices start.
inline constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
inline constexpr std::string_view checkInWord = "CHECKIN";
inline constexpr std::string_view toolRecordStart = "TOOLDATA";
inline constexpr std::string_view ncQueueWord = "NCPATH";
inline constexpr std::string_view debugLogLineStart = "Loading File #";
inline constexpr std::string_view bitmapStart = "BM";
inline constexpr std::string_view setupSheetNotice = "MCAMXMLIMPORTDATAID=";
inline constexpr std::string_view commitNotice = "ZEMID=";
inline constexpr std::string_view toolDataNotice = "TOOL-";
inline constexpr std::string_view ncQueueNotice = "IMPORTNCQUEUE|";

// Limits.
inline constexpr size_t longestRequestBytes = 0x10000;    // a longer command file ends its reader
inline constexpr size_t longestNoticeBytes = 1023;        // with its line feed
inline constexpr std::uint32_t longestCommitName = 32767; // UTF-16 units, as the longest path

// The id in a commit record or a commit notice when the host has none.
inline constexpr std::uint32_t noZemId = 0xFFFFFFFF;

} // namespace peer
