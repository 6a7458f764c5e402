// Every host operation, with one call and its result.
#pragma once

#include "host/host.h"
#include "support/installation.h"

#include <functional>
#include <string>
#include <vector>

namespace testing_support {

struct HostOperation {
    enum class Kind {
        question, // not traced
        result,   // traced with its result
        action    // traced without a result
    };

    std::string name;
    Kind kind;
    std::wstring line; // the traced call; empty for a question
    // Makes the call and returns its result as the caller sees it, in the trace's format.
    std::function<std::wstring()> call;
    std::wstring works; // the result of a successful call
    std::wstring fails; // the result of a failing call
};

// The setting of the calls: a host in which `part` is open.
struct OperationSetting {
    std::wstring part;                          // path of a file with `tablePart`
    std::wstring output;                        // path of a file to write
    CMastercamInterface* application = nullptr; // null: omit its operations
    PlaneBase* plane = nullptr;                 // plane 1 of the part; null: omit its operation
};

// Two operations in a list of three entries, a group, a tool, a plane.
extern const char tablePart[];

std::vector<HostOperation> hostOperations(const OperationSetting& setting);

} // namespace testing_support
