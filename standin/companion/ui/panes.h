// The pieces inside the main window: the lists, three buttons, a picture, the texts around them.
#pragma once

#include "standin/companion/app/state.h"
#include "standin/companion/ui/look.h"
#include "standin/companion/ui/version_pane.h"

#include <cstdint>
#include <optional>
#include <windows.h>

namespace companion {

enum ControlId { libraryId = 100, hostsId, eventsId, sendId, newFileId, checkInId, versionsId };

struct Panes {
    HWND library = nullptr, hosts = nullptr, events = nullptr;
    HWND send = nullptr, newFile = nullptr, checkIn = nullptr;
    HWND libraryTitle = nullptr, hostsTitle = nullptr, eventsTitle = nullptr, hint = nullptr;
    VersionPane versions;
};

// Creates the pieces as children of the window. The look outlives them.
Panes createPanes(HWND parent, const Look& look);

// Moves the pieces to their places in a client area of that size.
void placePanes(const Panes& panes, int clientWidth, int clientHeight);

// Fill the lists from what the instance holds; the selections stay where they can.
void showLibrary(const Panes& panes, const State& state);
void showHosts(const Panes& panes, const State& state);

// Adds the events since the last call to the list.
void showNewEvents(const Panes& panes, EventLog& log);

// Says what the buttons would do, enables those that can do something, and shows the versions of
// the chosen part and the picture of one.
void showChoice(Panes& panes, const State& state);

// What is selected: a library number and a host's process id.
std::optional<std::int32_t> chosenNumber(const Panes& panes);
std::optional<std::uint32_t> chosenHost(const Panes& panes);

} // namespace companion
