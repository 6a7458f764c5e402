// A test that holds the add-in's own code in its process, between the stand-in host's libraries and
// its own installation folder.
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

    // The trace since the fixture was made or this was called last.
    Lines newTrace();
    // The same, once it has at least so many lines; fewer when they do not arrive within the time.
    Lines newTrace(size_t count);

    // Writes an empty part file into the installation folder and gives its path.
    std::wstring makePart(const std::wstring& name = L"part.mcam");

    // The debug log's bytes, empty when there is none.
    std::string debugLogText() const;

    Installation installation;

private:
    size_t seen_ = 0;
};

} // namespace testing_support
