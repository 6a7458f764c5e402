// Mastercam.dll: the application, its main window, its files and its picture.
//
// Any of these may raise the framework's exception. All run on the host's user-interface thread
// unless they say otherwise.
#pragma once

#include "framework/framework.h"
#include "host/import.h"
#include "host/records.h"

// The application interface. Its members have no published names and are known only by their
// position, so the names here are our own, and only the adapter uses them.
class CMastercamView {
public:
    virtual void position0() = 0; // refreshes the view of the document

protected:
    ~CMastercamView() = default;
};

class CMastercamInterface {
public:
    virtual CString position0(const int* selector) = 0; // a folder of the host; 1: its programs
    virtual void position1(const CString& path) = 0;    // takes the document's path
    virtual CMastercamView* position2() = 0;            // the document's view
    virtual void position3() = 0;                       // refreshes the application
    virtual CWnd* position4() = 0;                      // the main window, for use as a parent
    virtual bool position5() = 0;                       // processes one message; false: quitting

protected:
    ~CMastercamInterface() = default;
};

// The application interface, owned by the host; null when the host has none. Both answer the same.
MASTERCAM_API CMastercamInterface* GetMastercamApp();
MASTERCAM_API CMastercamInterface* GetApp();

// The main window, owned by the host; null while the host has none.
MASTERCAM_API CFrameWnd* get_MainFrame();

// Opens a file as the host's document; true on success. `escaped` is set when the user
// cancelled; `mergeOptions` may be null.
MASTERCAM_API bool DoFileOpen(const wchar_t* path, bool merge, bool browse, short mode, bool prompt,
                              bool* escaped, FileMergeOptions* mergeOptions);

// Saves the document under `path`; true when it was written. `parent` may be null.
MASTERCAM_API bool CFile_DoFileSave(const wchar_t* path, CWnd* parent, bool browse, bool prompt);

// Queues a command of the host's function table, to be run on the user-interface thread. May be
// called from any thread.
MASTERCAM_API void post_FT_command(const CString& module, const CString& command);

// Writes a picture of the graphics view; true when the file was written.
MASTERCAM_API bool screen_to_bitmap_file(const wchar_t* path, bool wholeScreen);
