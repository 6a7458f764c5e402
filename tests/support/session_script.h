// What a session's script says besides the host's commands, in comment lines:
//
//   # Companion: --send bracket     the Companion carries these arguments out
//   # File: C:\NC\MB17-1.NC          this file exists, as after the NC program was posted
#pragma once

#include "support/bytes.h"

#include <filesystem>
#include <string>

namespace testing_support {

inline Lines sessionLines(const std::string& script, const std::wstring& word)
{
    const std::wstring start = L"# " + word + L": ";
    Lines found = linesThatStart(linesOf(fromUtf8(script)), start);
    for (std::wstring& line : found)
        line.erase(0, start.size());
    return found;
}

// The session's files, removed by the destructor.
class SessionFiles {
public:
    explicit SessionFiles(const std::string& script) : paths_(sessionLines(script, L"File"))
    {
        for (const std::filesystem::path path : paths_) {
            std::filesystem::create_directories(path.parent_path());
            writeBytes(path.native(), "%\nO1\nM30\n%\n");
        }
    }
    ~SessionFiles()
    {
        std::error_code ignored;
        for (const std::wstring& path : paths_)
            std::filesystem::remove(path, ignored);
    }
    SessionFiles(const SessionFiles&) = delete;
    SessionFiles& operator=(const SessionFiles&) = delete;

private:
    Lines paths_;
};

} // namespace testing_support
