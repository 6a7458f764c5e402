// The host's application interface.
#include "core/host_call.h"
#include "application/message_loop.h"
#include "application/program_folder.h"
#include "host/mastercam.h"

#include <string>

using namespace standin;

namespace {

class View final : public CMastercamView {
public:
    void position0() override
    {
        act("CMastercamView.position0", callLine("CMastercamView.position0"), repaintView);
    }
};

class ApplicationInterface final : public CMastercamInterface {
public:
    CString position0(const int* selector) override;
    void position1(const CString& path) override;
    CMastercamView* position2() override;
    void position3() override;
    CWnd* position4() override;
    bool position5() override;

private:
    View view_;
};

CString ApplicationInterface::position0(const int* selector)
{
    constexpr int programs = 1;
    return question("CMastercamInterface.position0", CString(), [&] {
        const bool isKnown = selector && *selector == programs;
        return isKnown ? CString(programFolder().c_str()) : CString();
    });
}

// The document keeps the name it has; what the host does with the path it is given here shows in
// the trace alone.
void ApplicationInterface::position1(const CString& path)
{
    act("CMastercamInterface.position1", callLine("CMastercamInterface.position1", path),
        repaintView);
}

CMastercamView* ApplicationInterface::position2()
{
    return question(
        "CMastercamInterface.position2", static_cast<CMastercamView*>(nullptr),
        [this] { return &view_; });
}

void ApplicationInterface::position3()
{
    act("CMastercamInterface.position3", callLine("CMastercamInterface.position3"), repaintView);
}

CWnd* ApplicationInterface::position4()
{
    return question(
        "CMastercamInterface.position4", static_cast<CWnd*>(nullptr), [] { return mainFrame(); });
}

bool ApplicationInterface::position5()
{
    return question("CMastercamInterface.position5", false, processOneMessage);
}

CMastercamInterface* theInterface()
{
    static ApplicationInterface application;
    return &application;
}

} // namespace

CMastercamInterface* GetMastercamApp()
{
    return question("GetMastercamApp", static_cast<CMastercamInterface*>(nullptr), theInterface);
}

CMastercamInterface* GetApp()
{
    return question("GetApp", static_cast<CMastercamInterface*>(nullptr), theInterface);
}

CFrameWnd* get_MainFrame()
{
    return question("get_MainFrame", static_cast<CFrameWnd*>(nullptr), mainFrame);
}
