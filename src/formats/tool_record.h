// The tool data record: one line of the tool data file, which describes an operation, the tool that
// it carries, and the same tool as the host's tool manager returns it. No platform header: this is
// a decision.
//
// A record is "TOOLDATA" and, without a blank between, pairs of a key and its value:
//
//   TOOLDATA|DATAID=17|TPNAME=000002A1F3C05E40|CPNAME=…|DIA=10|TNUM=3|TTYPE=10|GEOFILE=…
//
// Integers are decimal; floating-point numbers are in printf's general format with 6 significant
// digits, whatever the locale (12, 0.5, 1e+06); a text handle is the text's address as 16
// upper-case hexadecimal digits.
#pragma once

#include "formats/operation_values.h"

#include <cstdint>
#include <optional>
#include <string>

namespace torvapdm {

struct ToolRecordValues {
    std::int32_t requestId;
    const wchar_t* toolPlaneName; // written as a handle, like geometry files and NC names
    const wchar_t* constructionPlaneName;
    host::OwnToolValues ownTool; // of its comment, each unit's low byte
    host::FullToolValues fullTool;
    host::OperationValues operation;
    std::int32_t operationNumber; // the operation's place in the walk, from 1
    double cycleTime;             // seconds
};

// The record with its line feed; nothing when it has more than 2047 characters.
std::optional<std::string> toolRecord(const ToolRecordValues& values);

} // namespace torvapdm
