// Recordings without the names of people and parts.
#pragma once

#include "tools/zemlink/session/pseudonyms.h"
#include "tools/zemlink/session/recording.h"

namespace zemlink {

void addNamesOf(Pseudonyms& names, const Recording& recording);

// The recording with pseudonyms for users, folders, parts and all other texts that people wrote.
// Pictures become plain grey. Bytes that are not what such an exchange should be become question
// marks, as many as there were, since nothing is known about what is in them. `names`: at least the
// recording's own.
Recording redacted(Recording recording, const Pseudonyms& names);
Recording redacted(Recording recording);

} // namespace zemlink
