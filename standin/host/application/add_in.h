// The add-in's exports and the host's calls to them. UI thread.
#pragma once

#include <cstddef>
#include <string_view>

namespace standin {

// The known exports, in the order of the menu.
struct AddInExport {
    const char* name;
    bool takesNumber;
};
extern const AddInExport addInExports[];
extern const size_t addInExportCount;

// Calls the export with the menu's default argument.
void callExportWithExample(const AddInExport& called);

// Sends a host event to the add-in, if one is loaded.
void sendEvent(int code);

} // namespace standin
