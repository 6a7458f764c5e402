// Our names for the members of the host's interface that are known only by their position.
// Adapting the add-in to another release of the host's development kit means editing this file and
// `record_adapter.h`, which names the records' fields.
//
// The framework's exceptions that the host raises propagate from every function.
#pragma once

#include "host/host.h"

namespace host {

// The host's folders by selector. The text ends in a separator.
constexpr int programFolder = 1;

inline CString folder(CMastercamInterface& application, int selector)
{
    return application.position0(&selector);
}

inline void setDocumentPath(CMastercamInterface& application, const wchar_t* path)
{
    application.position1(path);
}

inline void refreshDocumentView(CMastercamInterface& application)
{
    if (CMastercamView* const view = application.position2())
        view->position0();
}

inline void refreshApplication(CMastercamInterface& application)
{
    application.position3();
}

// The window that the host's dialogs are shown over; may be null.
inline CWnd* parentWindow(CMastercamInterface& application)
{
    return application.position4();
}

// Makes the host process one of its messages; false when the host is quitting.
inline bool processOneMessage(CMastercamInterface& application)
{
    return application.position5();
}

} // namespace host
