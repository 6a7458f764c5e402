// Facts of a valid installation, which tests modify.
#pragma once

#include "tools/zemlink/reports/facts.h"

namespace testing_support {

// The Companion runs as process 12, one host as process 4711.
inline zemlink::Facts soundFacts()
{
    zemlink::Facts facts;
    facts.folder = {L"C:\\TORVA\\ZEM", peer::FolderSource::registry};
    facts.settings = "UseFtpServer=y\r\n";
    facts.companion = {true, 12, L"TORVA ZEM", L"C:\\TORVA\\ZEM\\TORVA-ZEM.exe"};
    facts.toolVersion = "1.0.0";
    facts.hosts = {{4711, L"bracket.mcam"}};
    facts.companion.version = "1.2.3";
    facts.hosts[0].program = L"C:\\Mastercam\\Mastercam.exe";
    facts.hosts[0].version = "26.0.1";
    facts.hosts[0].addIn = L"C:\\Mastercam\\chooks\\torvapdm.dll";
    facts.hosts[0].addInVersion = "1.0.0";
    facts.commandFiles = {{L"C:\\TORVA\\ZEM\\temp\\mastercam-4711.dat", 4711, 0, true}};
    facts.port.holder = 12;
    facts.port.program = L"C:\\TORVA\\ZEM\\TORVA-ZEM.exe";
    return facts;
}

} // namespace testing_support
