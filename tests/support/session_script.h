// What a session's script says besides the host's commands, in comment lines.
//
// What is there before the session:
//   # File: C:\NC\MB17-1.NC           this file, as after the NC program was posted
//   # Part: C:\cad\housing.CATPart    this part, which holds nothing
//   # Settings: AlwaysSaveTools=y     this line in cfg\settings.ini
//   # Add-in: tool_commands.dll       the host loads this add-in in place of the shipped one
//   # Second host: call m_save 0      a line of the script of a second host
//
// What the Companion's side does, one step after the other:
//   # Companion: --send bracket       the Companion carries these arguments out
//   # zemlink: open 5 C:\a.mcam       so does zemlink
//   # Answer: CAD23 C:\a.mcam         the Companion writes this check-out answer
//
// In these, `--host first` and `--host second` name the two hosts.
#pragma once

#include "support/bytes.h"
#include "support/host_program.h"
#include "support/installation.h"

#include <filesystem>
#include <memory>
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

inline std::string joinedLines(const Lines& lines, const std::string& lineEnd)
{
    std::string text;
    for (const std::wstring& line : lines)
        text += toUtf8(line) + lineEnd;
    return text;
}

// The session's files and settings. The destructor removes the files; the settings are removed with
// the installation.
class SessionFiles {
public:
    SessionFiles(const Installation& installation, const std::string& script)
    {
        write(sessionLines(script, L"File"), "%\nO1\nM30\n%\n");
        write(sessionLines(script, L"Part"), "");
        const std::string settings = joinedLines(sessionLines(script, L"Settings"), "\r\n");
        if (!settings.empty())
            writeBytes(installation.path(L"cfg\\settings.ini"), settings);
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
    void write(const Lines& paths, std::string_view bytes)
    {
        for (const std::filesystem::path path : paths) {
            std::filesystem::create_directories(path.parent_path());
            writeBytes(path.native(), bytes);
            paths_.push_back(path.native());
        }
    }

    Lines paths_;
};

// ---- The session's hosts ------------------------------------------------------------------------

// Starts a host that runs these commands, with the session's add-in.
inline std::unique_ptr<HostProgram> startSessionHost(const Installation& installation,
                                                     const std::string& script,
                                                     const std::string& commands,
                                                     const std::wstring& name)
{
    const Lines addIn = sessionLines(script, L"Add-in");
    return std::make_unique<HostProgram>(
        installation, commands, name, programFolder() + L"Mastercam.exe",
        programFolder() + (addIn.empty() ? L"torvapdm.dll" : addIn.front()));
}

inline std::unique_ptr<HostProgram> startFirstHost(const Installation& installation,
                                                   const std::string& script)
{
    return startSessionHost(installation, script, script, L"host");
}

inline bool hasSecondHost(const std::string& script)
{
    return !sessionLines(script, L"Second host").empty();
}

// Null when the session has only one host.
inline std::unique_ptr<HostProgram> startSecondHost(const Installation& installation,
                                                    const std::string& script)
{
    if (!hasSecondHost(script))
        return nullptr;
    const std::string commands = joinedLines(sessionLines(script, L"Second host"), "\n");
    return startSessionHost(installation, script, commands, L"second host");
}

} // namespace testing_support
