// The application object: the add-in's one class and one instance.
#pragma once

#include "framework/framework.h"

class CtorvapdmApp : public CWinApp {
public:
    CtorvapdmApp() = default;
    BOOL InitInstance() override;

    DECLARE_MESSAGE_MAP()
};
