// Random command files and what the plain rule says that a host's trace shows of each.
#pragma once

#include "fuzz/random.h"
#include "support/installation.h"

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace testing_support {

struct PlannedFile {
    std::string bytes;
    std::string trace; // UTF-8, each line with its line feed; nothing for a file without an effect
    // The request whose machine-settings file has to be ready; no other file has the same.
    std::optional<std::int32_t> machineRequest;
};

// One host of several, which share the installation folder but no part and no request's number.
struct HostNumber {
    unsigned number; // 0 to count - 1
    unsigned count;
};

class CommandFilePlan {
public:
    // Makes a few part files for the host, which some of the requests open.
    CommandFilePlan(const Installation& installation, const HostNumber& host, std::uint64_t seed);

    // Never empty, and never longer than a request can be.
    PlannedFile next();
    // Opens a part that no other file does.
    PlannedFile last();

private:
    std::string anyText();
    std::string openText();
    std::optional<PlannedFile> planned(const std::string& bytes);
    std::optional<PlannedFile> opening(PlannedFile file, std::int32_t id, const std::wstring& path);

    const HostNumber host_;
    fuzzing::Random random_;
    std::wstring folder_;
    std::vector<std::string> parts_; // as a request spells them
    std::vector<std::string> seeds_;
    const std::vector<std::string> tokens_;
    std::set<std::int32_t> machineRequests_;
};

// The part that the last file opens.
extern const char lastPartName[];
// The machine-settings file's content for a request.
std::string machineSettingsText(std::int32_t id);

} // namespace testing_support
