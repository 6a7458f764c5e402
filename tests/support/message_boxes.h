// Trace lines of the add-in's message boxes.
#pragma once

#include <string>

namespace testing_support {

inline const std::wstring loadFailed = LR"(ui message-box("TORVA ZEM", "Failed to load file."))";
inline const std::wstring notSaved = LR"(ui message-box("TORVA ZEM", "Failed to save file."))";
inline const std::wstring notCommitted =
    LR"(ui message-box("TORVA ZEM", "Failed to commit file to ZEM."))";
inline const std::wstring notStarted =
    LR"(ui message-box("TORVA ZEM", "Failed to start TORVA ZEM. Please make sure TORVA ZEM is properly installed."))";

} // namespace testing_support
