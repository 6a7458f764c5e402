// The add-in's exports and the host's calls to them. UI thread.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace standin {

// The known exports, in the order of the menu.
struct AddInExport {
    const char* name;
    bool takesNumber;
    const wchar_t* effect; // what the user gets from it
};
extern const AddInExport addInExports[];
extern const size_t addInExportCount;

// Calls the export with the menu's default argument. Returns the outcome for the status bar:
// "m_save returned 0".
std::wstring callExportWithExample(const AddInExport& called);

// Sends a host event to the add-in, if one is loaded. Returns the outcome for the status bar.
std::wstring sendEvent(int code);

} // namespace standin
