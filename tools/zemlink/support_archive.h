// `zemlink report`: one zip file with what a supporter asks for first.
#pragma once

#include "tools/zemlink/arguments.h"
#include "tools/zemlink/reports/report.h"

namespace zemlink {

//   status.json, doctor.json   as the commands show them
//   listing.json               the files of the installation folder: size, time, SHA-256
//   logs/…                     the Companion's log, the progress of loads and the settings
//   recording.zip              the recording under way or given, if any
//
// Never the content of a part. Redacted, the logs are left out line by line where they are not what
// such a file should be, and all names are replaced, the same everywhere.
Outcome writeSupportArchive(const Arguments& arguments);

} // namespace zemlink
