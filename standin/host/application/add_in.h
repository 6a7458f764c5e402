// The add-in: its exports and how the host calls them. All on the user-interface thread.
#pragma once

#include <cstddef>
#include <string_view>

namespace standin {

// The exports the host knows, in the order of its menu.
struct AddInExport {
    const char* name;
    bool takesNumber;
};
extern const AddInExport addInExports[];
extern const size_t addInExportCount;

// Calls the export with the argument that the host's menu gives it.
void callExportWithExample(const AddInExport& called);

// Sends the add-in an event of the host; without an add-in nothing happens.
void sendEvent(int code);

} // namespace standin
