// Every host operation, each with one call of it and what that call gives.
#pragma once

#include "host/host.h"
#include "support/installation.h"

#include <functional>
#include <string>
#include <vector>

namespace testing_support {

struct HostOperation {
    enum class Kind {
        question, // leaves no line in the trace
        result,   // its line tells the answer
        action    // its line tells no answer
    };

    std::string name;
    Kind kind;
    std::wstring line; // the call as the trace writes it; empty for a question
    // Makes the call and gives what the caller sees of it afterwards, as the trace would write it.
    std::function<std::wstring()> call;
    std::wstring works; // what the caller sees of a call that works,
    std::wstring fails; // and of one that fails
};

// What the calls work on: a host in which `part` stands open.
struct OperationSetting {
    std::wstring part;                          // path of a file with `tablePart`
    std::wstring output;                        // path of a file to write
    CMastercamInterface* application = nullptr; // null: the table leaves out its operations
    PlaneBase* plane = nullptr;                 // plane 1 of the part; null likewise
};

// Two operations in a list of three, a group with its parent, a tool, a plane.
extern const char tablePart[];

std::vector<HostOperation> hostOperations(const OperationSetting& setting);

} // namespace testing_support
