// Fixture for tests that run the add-in's code in process, with the stand-in host's libraries and a
// separate installation folder.
#pragma once

#include "control.h"
#include "support/bytes.h"
#include "support/installation.h"
#include "support/waiting.h"

#include <gtest/gtest.h>

namespace testing_support {

class HostFixture : public ::testing::Test {
protected:
    HostFixture();
    ~HostFixture() override;

    // The trace lines since the fixture was created or since the last call.
    Lines newTrace();
    // The same, but waits until there are at least this many lines; returns fewer on timeout.
    Lines newTrace(size_t count);

    // Creates an empty part file in the installation folder and returns its path.
    std::wstring makePart(const std::wstring& name = L"part.mcam");

    // The debug log's bytes; empty if there is no log.
    std::string debugLogText() const;

    Installation installation;

private:
    size_t seen_ = 0;
};

} // namespace testing_support
