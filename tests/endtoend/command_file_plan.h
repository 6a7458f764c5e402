// Random command files and the host trace expected for each.
#pragma once

#include "support/installation.h"

#include <cstdint>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <vector>

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

class CommandFilePlan {
public:
    // Creates a few part files for the host; some of the requests open them.
    CommandFilePlan(const Installation& installation, const HostNumber& host, std::uint64_t seed);

    // Never empty, and never longer than the maximum length of a request.
    PlannedFile next();
    // Opens a part that no other file opens.
    PlannedFile last();

private:
    std::string anyText();
    std::string openText();
    std::optional<PlannedFile> planned(const std::string& bytes);
    std::optional<PlannedFile> opening(PlannedFile file, std::int32_t id, const std::wstring& path);

    const HostNumber host_;
    std::mt19937_64 random_;
    std::wstring folder_;
    std::vector<std::string> parts_; // as spelled in a request
    std::vector<std::string> seeds_;
    const std::vector<std::string> tokens_;
    std::set<std::int32_t> machineRequests_;
};

// The part opened by the last file.
extern const char lastPartName[];
// The content of a request's machine-settings file.
std::string machineSettingsText(std::int32_t id);

} // namespace testing_support
