// The open document and the host's settings. All functions are thread-safe.
#pragma once

#include "core/part.h"
#include "host/import.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace standin {

// The open part; never null. A replaced part stays alive until a few more have been opened, because
// the add-in holds pointers into it.
MCCORE_API std::shared_ptr<Part> openPart();

// Opens the file as the document: its name is the path as given, its database unchanged. False,
// without any change, if the file cannot be read.
MCCORE_API bool openDocument(const std::wstring& path);

// Saves the document to the path; on success its database is unchanged. The document keeps its
// name.
MCCORE_API bool saveDocument(const std::wstring& path);

// Replaces the part with an empty one; the name stays.
MCCORE_API void closeDocument();

// Starts an empty part without a name; its database is unchanged.
MCCORE_API void startNewDocument();

// The contents of `geo_filename`. Setting it truncates the name to 260 characters.
MCCORE_API std::wstring documentName();
MCCORE_API void setDocumentName(const std::wstring& name);

// The host's settings, with their initial values.
struct HostSettings {
    bool databaseChanged = false;
    bool backplotActive = false;
    std::wstring activeMachine; // path of the machine definition
    std::wstring ncPrefix = L"C:\\NC\\";
    std::wstring ncSuffix = L".NC";
    // The files that a setup-sheet run reports; if not set, it writes one file and reports that.
    std::optional<std::vector<std::wstring>> setupSheetFiles;
};

MCCORE_API HostSettings hostSettings();

// Changes one setting, as in `setHostSetting(&HostSettings::backplotActive, true)`.
MCCORE_API void setHostSetting(bool HostSettings::*setting, bool value);
MCCORE_API void setHostSetting(std::wstring HostSettings::*setting, const std::wstring& value);
MCCORE_API void setSetupSheetFiles(const std::vector<std::wstring>& files);

// Resets settings and document to their initial state.
MCCORE_API void resetDocument();

} // namespace standin
