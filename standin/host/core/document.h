// The open document and the settings of the host around it. Every function may be called from any
// thread; each takes the state's lock for as long as it runs.
#pragma once

#include "core/part.h"
#include "host/import.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace standin {

// The open part; never null. A part that is replaced lives on until a few more have been opened,
// since the add-in holds pointers into it.
MCCORE_API std::shared_ptr<Part> openPart();

// Reads the file and makes it the document: its name is the path as given, its database unchanged.
// False, with everything as it was, when the file cannot be read.
MCCORE_API bool openDocument(const std::wstring& path);

// Writes the document there; true when it was written, and then its database is unchanged. The
// document keeps its name.
MCCORE_API bool saveDocument(const std::wstring& path);

// Leaves an empty part under the same name.
MCCORE_API void closeDocument();

// Starts an empty part without a name, its database unchanged.
MCCORE_API void startNewDocument();

// The content of `geo_filename`. Setting it cuts the name to 260 characters.
MCCORE_API std::wstring documentName();
MCCORE_API void setDocumentName(const std::wstring& name);

// The host's settings, as they are at its start and as scripts change them.
struct HostSettings {
    bool databaseChanged = false;
    bool backplotActive = false;
    std::wstring activeMachine; // path of the machine definition
    std::wstring ncPrefix = L"C:\\NC\\";
    std::wstring ncSuffix = L".NC";
    // The files a setup sheet run reports; nothing: it writes one and reports that.
    std::optional<std::vector<std::wstring>> setupSheetFiles;
};

MCCORE_API HostSettings hostSettings();

// Changes one setting, as in `setHostSetting(&HostSettings::backplotActive, true)`.
MCCORE_API void setHostSetting(bool HostSettings::*setting, bool value);
MCCORE_API void setHostSetting(std::wstring HostSettings::*setting, const std::wstring& value);
MCCORE_API void setSetupSheetFiles(const std::vector<std::wstring>& files);

// Puts settings and document back to what they are at the program's start.
MCCORE_API void resetDocument();

} // namespace standin
