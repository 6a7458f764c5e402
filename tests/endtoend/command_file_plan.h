// Random command files and the host trace expected for each.
#pragma once

#include "fuzz/input.h"
#include "fuzz/mutator.h"
#include "fuzz/target.h"
#include "peer/command_file.h"
#include "support/bytes.h"
#include "support/companion_double.h"
#include "support/installation.h"

#include <cstdint>
#include <cstdlib>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <vector>
#include <windows.h>

namespace testing_support {

struct PlannedFile {
    std::string bytes;
    std::string trace; // UTF-8, each line with its line feed; empty if the file has no effect
    // The request whose machine-settings file must exist; a different one for each file.
    std::optional<std::int32_t> machineRequest;
};

// One of several hosts that share the installation folder but no part and no request id.
struct HostNumber {
    unsigned number; // 0 to count - 1
    unsigned count;
};

// The part opened by the last file.
inline constexpr char lastPartName[] = "the last part.mcam";

inline std::string machineOf(std::int32_t id)
{
    return "C:\\Machines\\" + std::to_string(id) + ".mcam-mmd";
}

// The content of a request's machine-settings file.
inline std::string machineSettingsText(std::int32_t id)
{
    return "a|3|0|" + machineOf(id) + "\r\n";
}

// The trace of opening, naming and saving a part.
inline std::string openingLines(const std::string& path, std::int32_t id)
{
    return "ui DoFileOpen(\"" + path + "\", false, false, 1, true, *, null) -> true\n" +
           "ui SetActiveMachine(\"" + machineOf(id) + "\") -> true\n" + "ui set_db_unchanged()\n" +
           "ui CMastercamInterface.position1(\"" + path + "\")\n" +
           "ui CMastercamView.position0()\n" + "ui CMastercamInterface.position3()\n" +
           "ui CFile_DoFileSave(\"" + path + "\", main, false, false) -> true\n" +
           "ui set_db_unchanged()\n";
}

class CommandFilePlan {
public:
    // Creates a few part files for the host; some of the requests open them.
    CommandFilePlan(const Installation& installation, const HostNumber& host, std::uint64_t seed)
        : host_(host),
          random_(seed),
          folder_(installation.path(L"parts of " + std::to_wstring(host.number) + L"\\")),
          seeds_(fuzzing::formatTargets().front().seeds),
          tokens_(fuzzing::formatTargets().front().tokens)
    {
        CreateDirectoryW(folder_.c_str(), nullptr);
        // In a request, the last name contains the byte E4.
        const std::wstring names[] = {L"a.mcam", L"b c.emcam", L"no dot", L"fr\xFFE4ser.mcam"};
        const std::string spelled[] = {"a.mcam", "b c.emcam", "no dot", "fr\xE4ser.mcam"};
        for (size_t i = 0; i < std::size(names); ++i) {
            writeBytes(folder_ + names[i], "");
            parts_.push_back(toUtf8(folder_) + spelled[i]);
            seeds_.push_back(openRequest(1000 + static_cast<int>(i), parts_.back()));
        }
        writeBytes(folder_ + fromUtf8(lastPartName), "");
    }

    // Never empty, and never longer than the maximum length of a request.
    PlannedFile next()
    {
        for (;;) {
            const std::string bytes = anyText();
            if (bytes.empty())
                continue;
            if (const auto file = planned(bytes))
                return *file;
        }
    }

    // Opens a part that no other file opens.
    PlannedFile last()
    {
        std::int32_t id = static_cast<std::int32_t>(host_.number);
        while (machineRequests_.count(id) > 0)
            id += static_cast<std::int32_t>(host_.count);
        return planned(openRequest(id, toUtf8(folder_) + lastPartName)).value();
    }

private:
    static constexpr size_t longestRequest = 65536;
    static constexpr std::int32_t neverCarriedOut = -1;
    static constexpr char newFileLines[] = "other set_db_unchanged()\n"
                                           "other post_FT_command(\"Mastercam\", \"OnFileNew\")\n";
    using Kind = peer::HostCommandKind;

    // An open request for a part, with its id in one of the accepted number formats.
    std::string openText()
    {
        static const char* const before[] = {"", "", "+", "-", "000", "\t\r\v\f", "\t-0"};
        static const char* const after[] = {"", "", "x", ".5", "-", "\xFF"};
        static const char* const marks[] = {"\xEF\xBB\xBF", "\xEF\xBB\xBF", "abc", "123"};
        const std::uint64_t id =
            random_() % (2147483647 / host_.count) * host_.count + host_.number;
        std::string text = marks[random_() % 4];
        text += before[random_() % 7] + std::to_string(id);
        text += after[random_() % 6];
        return text + ' ' + parts_[random_() % parts_.size()] + '\n';
    }

    std::string anyText()
    {
        const std::uint64_t kind = random_() % 9;
        if (kind < 2)
            return openText();
        if (kind == 3) {
            const std::string text = "\xEF\xBB\xBF" + std::to_string(random_() % 100) + ' ';
            return random_() % 2 == 0 ? text + '\n' : text;
        }
        std::string bytes = fuzzing::mutated(seeds_, tokens_, random_);
        if (kind == 2)
            bytes.insert(0, random_() % 2 == 0 ? "CHECKIN " : "CHECKIN");
        if (random_() % 50 == 0)
            bytes.resize(longestRequest, 'x');
        return bytes.substr(0, longestRequest);
    }

    // Nothing if the file's effect depends on external state.
    std::optional<PlannedFile> planned(const std::string& bytes)
    {
        const peer::HostCommand request = peer::parseHostCommand(bytes);
        PlannedFile file = {bytes, "", std::nullopt};
        if (request.kind == Kind::checkIn)
            file.trace = std::string("other m_fclose(null, 0, null)\n") + newFileLines;
        else if (request.kind == Kind::newFile)
            file.trace = newFileLines;
        else if (request.kind == Kind::open && request.id != neverCarriedOut)
            return opening(file, request.id, fuzzing::signedUnits(request.path));
        return file;
    }

    // Nothing for a file outside the parts folder or an id already in use.
    std::optional<PlannedFile> opening(PlannedFile file, std::int32_t id, const std::wstring& path)
    {
        const std::wstring seen = path.c_str(); // the system stops at the first NUL
        const DWORD attributes = GetFileAttributesW(seen.c_str());
        if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
            file.trace = "ui message-box(\"TORVA ZEM\", \"The file does not exist.\")\n";
            return file;
        }
        const bool isOwnNumber =
            static_cast<std::uint64_t>(std::abs(std::int64_t{id})) % host_.count == host_.number;
        if (!seen.starts_with(folder_) || !isOwnNumber || !machineRequests_.insert(id).second)
            return std::nullopt;
        file.trace = openingLines(toUtf8(seen), id);
        file.machineRequest = id;
        return file;
    }

    const HostNumber host_;
    std::mt19937_64 random_;
    std::wstring folder_;
    std::vector<std::string> parts_; // as spelled in a request
    std::vector<std::string> seeds_;
    const std::vector<std::string> tokens_;
    std::set<std::int32_t> machineRequests_;
};

} // namespace testing_support
