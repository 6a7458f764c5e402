// One step of a soak: what is done to a host, and what has to come of it.
#pragma once

#include "support/bytes.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace testing_support {

struct Act {
    enum class Way {
        command,   // of the host's menu: number
        companion, // a start of the Companion with these words
        makeBusy,  // the host cannot take requests
        makeReady, // it can
        request,   // the part `text` with the id `number` into the command file, and it is taken
        pushOn,    // a file that is no request, and it is taken: what was written is carried out
        awaitLastLine, // all lines of the step are in the host's trace
    };
    Way way;
    std::int32_t number = 0;
    std::wstring text{};
};

struct StoredVersion {
    std::wstring part;
    int version = 0;
};

struct PlannedStep {
    std::string kind;
    std::vector<Act> acts{};
    Lines trace{};                            // the host's new lines, in their order
    Lines events{};                           // the Companion's, in the short form
    std::map<std::string, size_t> leftOpen{}; // how often each row of the table of calls
    std::optional<StoredVersion> version{};   // that the library has then, with its picture
    bool checksOut = false;                   // asks the Companion for a file
};

} // namespace testing_support
