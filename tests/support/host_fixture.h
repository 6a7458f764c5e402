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
    HostFixture()
    {
        standin::HostOptions options;
        options.answersMessageBoxes = true;
        EXPECT_TRUE(standin::startHost(options));
        standin::observeModule(GetModuleHandleW(nullptr));
        seen_ = standin::traceLines().size();
    }
    ~HostFixture() override { standin::stopHost(); }

    // The trace lines since the fixture was created or since the last call. Waits until there are
    // at least this many; returns fewer on timeout.
    Lines newTrace(size_t count = 0)
    {
        if (count > 0)
            waitUntil([&] { return standin::traceLines().size() >= seen_ + count; });
        Lines lines = standin::traceLines();
        lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(seen_));
        seen_ += lines.size();
        return lines;
    }

    // Creates an empty part file in the installation folder and returns its path.
    std::wstring makePart(const std::wstring& name = L"part.mcam")
    {
        writeBytes(installation.path(name), "");
        return installation.path(name);
    }

    // The debug log's bytes; empty if there is no log.
    std::string debugLogText() const
    {
        return readBytes(installation.path(L"sys\\mcxlog.txt")).value_or("");
    }

    Installation installation;

private:
    size_t seen_ = 0;
};

} // namespace testing_support
