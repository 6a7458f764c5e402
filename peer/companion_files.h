// Names of the Companion's own files, which no host knows.
#pragma once

namespace peer {

// Paths below the installation folder.
inline constexpr wchar_t librarySubfolder[] = L"\\library";
inline constexpr wchar_t companionLog[] = L"\\sys\\companion.log";
inline constexpr wchar_t workingCopies[] = L"\\sys\\working-copies.txt";

inline constexpr wchar_t companionLogName[] = L"companion";
inline constexpr wchar_t workingCopiesName[] = L"working-copies";

// What replaces the end of a commit file's name.
inline constexpr wchar_t closedCommitsEnd[] = L".closed"; // hosts no longer find it
inline constexpr wchar_t bookmarkEnd[] = L".taken";       // how far it has been taken

} // namespace peer
