#include "host/host_application.h"

#include "host/host.h"
#include "host/host_exceptions.h"

namespace torvapdm {

CMastercamInterface* hostApplication()
{
    CMastercamInterface* application = nullptr;
    callHost([&] { application = GetMastercamApp(); });
    return application;
}

} // namespace torvapdm
