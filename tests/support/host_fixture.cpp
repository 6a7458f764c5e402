#include "support/host_fixture.h"

namespace testing_support {

HostFixture::HostFixture()
{
    standin::HostOptions options;
    options.answersMessageBoxes = true;
    if (!standin::startHost(options))
        ADD_FAILURE() << "the stand-in host does not start";
    standin::observeModule(GetModuleHandleW(nullptr));
    seen_ = standin::traceLines().size();
}

HostFixture::~HostFixture()
{
    standin::stopHost();
}

Lines HostFixture::newTrace()
{
    Lines lines = standin::traceLines();
    lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(seen_));
    seen_ += lines.size();
    return lines;
}

Lines HostFixture::newTrace(size_t count)
{
    waitUntil([&] { return standin::traceLines().size() >= seen_ + count; });
    return newTrace();
}

std::wstring HostFixture::makePart(const std::wstring& name)
{
    const std::wstring path = installation.path(name);
    writeBytes(path, "");
    return path;
}

std::string HostFixture::debugLogText() const
{
    return readBytes(installation.path(L"sys\\mcxlog.txt")).value_or("");
}

} // namespace testing_support
