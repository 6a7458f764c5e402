// Measures the add-in's own code in this process, between the stand-in host's libraries.
//
//   bench.exe JSON      prints the table and writes the figures; ends with 1 when one misses its
//                       limit
#include "bench/rows.h"
#include "bench/surroundings.h"
#include "mastercam/control.h"

#include <algorithm>
#include <clocale>
#include <cstdio>

namespace {

void add(bench::Rows& all, const bench::Rows& more)
{
    all.insert(all.end(), more.begin(), more.end());
}

} // namespace

int wmain(int count, wchar_t** arguments)
{
    using namespace bench;
    WSADATA sockets;
    WSAStartup(MAKEWORD(2, 2), &sockets);
    installation().endStandardInput();
    standin::HostOptions options;
    options.answersMessageBoxes = true;
    require(standin::startHost(options), "the stand-in host starts");
    standin::observeModule(GetModuleHandleW(nullptr));
    Rows rows;
    add(rows, commitRows());
    add(rows, settingsRows());
    add(rows, toolExportRows());
    add(rows, ncQueueRows());
    standin::stopHost();
    printTable(rows);
    if (count > 1 && !writeJson(arguments[1], rows))
        std::fprintf(stderr, "cannot write the JSON file\n");
    return std::any_of(rows.begin(), rows.end(), isMissed) ? 1 : 0;
}
