// The host's application interface. Its members have no published names: they are known by their
// position, so the names here are our own and only the adapter uses them.
#pragma once

#include "framework/framework.h"

// The document's view, a member object of the application interface.
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
