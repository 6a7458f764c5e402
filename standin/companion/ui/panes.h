// The parts of the main window: the lists, three buttons, a picture, the texts around them.
#pragma once

#include "standin/companion/app/state.h"
#include "standin/companion/ui/look.h"
#include "standin/companion/ui/version_pane.h"

#include <cstdint>
#include <optional>
#include <windows.h>

namespace companion {

enum ControlId {
    libraryId = 100,
    hostsId,
    eventsId,
    sendId,
    newFileId,
    checkInId,
    versionsId,
    statusId,
    helpId,
    aboutId
};

struct Panes {
    HWND library = nullptr, hosts = nullptr, events = nullptr;
    HWND send = nullptr, newFile = nullptr, checkIn = nullptr;
    HWND libraryTitle = nullptr, hostsTitle = nullptr, eventsTitle = nullptr, hint = nullptr;
    HWND status = nullptr;
    VersionPane versions;
};

// Creates the parts as children of the window. The look must outlive them.
Panes createPanes(HWND parent, const Look& look);

// Moves the parts to their positions in a client area of that size.
void placePanes(const Panes& panes, int clientWidth, int clientHeight);

// Fill the lists from the state; the selections are kept if possible.
void showLibrary(const Panes& panes, const State& state);
void showHosts(const Panes& panes, const State& state);

// Adds the events since the last call to the list and shows the outcome of the last one that has
// one in the status line.
void showNewEvents(const Panes& panes, EventLog& log);

// Updates the hint, enables the buttons that can do something, and shows the versions of the
// selected part and the picture of one.
void showChoice(Panes& panes, const State& state);

// The selected library number and host process id.
std::optional<std::int32_t> chosenNumber(const Panes& panes);
std::optional<std::uint32_t> chosenHost(const Panes& panes);

} // namespace companion
